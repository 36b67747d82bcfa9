#pragma once
// The firmware and base-settings windows. Their contents arrive with their features; until
// then each opens as an empty window with its title.
#include <QWidget>

namespace nerit::ui {

QWidget* make_empty_form(const QString& title, QSize size);

}  // namespace nerit::ui
