#include "ui/form_windows.h"

#include <QLabel>
#include <QVBoxLayout>

namespace nerit::ui {

QWidget* make_empty_form(const QString& title, QSize size) {
  auto* w = new QWidget(nullptr, Qt::Window);
  w->setWindowTitle(title);
  w->resize(size);
  auto* layout = new QVBoxLayout(w);
  auto* note = new QLabel(w);
  note->setAlignment(Qt::AlignCenter);
  layout->addWidget(note);
  return w;
}

}  // namespace nerit::ui
