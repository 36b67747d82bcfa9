#pragma once
// The firmware window. Its contents arrive with its feature; until then it opens as an empty
// window with its title.
#include <QWidget>

namespace nerit::ui {

QWidget* make_empty_form(const QString& title, QSize size);

}  // namespace nerit::ui
