#include "ui/form_windows.h"

namespace nerit::ui {

QWidget* make_empty_form(const QString& title, QSize size) {
  auto* w = new QWidget(nullptr, Qt::Window);
  w->setWindowTitle(title);
  w->resize(size);
  return w;
}

}  // namespace nerit::ui
