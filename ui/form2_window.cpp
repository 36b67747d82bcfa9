#include "ui/form2_window.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/accessible.h"

namespace nerit::ui {

Form2Window::Form2Window(Form2& form, HandlerRunner run)
    : QWidget(nullptr, Qt::Window), f_(form), bind_(run) {
  setWindowTitle("Firmwareupdate");
  name_widget(this, "Firmwareupdate", "Form2");

  w_.Command1 = add_button(f_.c.Command1, "Command1", [this] { f_.Command1_Click(); });
  w_.Command4 = add_button(f_.c.Command4, "Command4", [this] { f_.Command4_Click(); });
  w_.Command2 = add_button(f_.c.Command2, "Command2", [this] { f_.Command2_Click(); });
  w_.Command5 = add_button(f_.c.Command5, "Command5", [this] { f_.Command5_Click(); });
  w_.Command3 = add_button(f_.c.Command3, "Command3", [this] { f_.Command3_Click(); });
  w_.file_label = add_label(f_.c.file_label, "Firmware file", "file_label");
  w_.Label1 = add_label(f_.c.Label1, "Status", "Label1");
  w_.Label1->setAutoFillBackground(true);
  w_.Label1->setMinimumHeight(28);
  w_.Label1->setAlignment(Qt::AlignCenter);
  w_.Label2 = add_label(f_.c.Label2, "Percent", "Label2");
  w_.Label2->setMinimumWidth(48);
  w_.Label2->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  w_.Label3 = add_label(f_.c.Label3, "Time", "Label3");

  w_.ProgressBar1 = new QProgressBar(this);
  name_widget(w_.ProgressBar1, "Progress", "ProgressBar1");
  w_.ProgressBar1->setTextVisible(false);
  bind_.custom([this, shown = -1, shown_max = -1]() mutable {
    const ProgressBar& m = f_.c.ProgressBar1;
    if (m.max != shown_max) w_.ProgressBar1->setRange(m.min, shown_max = m.max);
    if (m.value != shown) w_.ProgressBar1->setValue(shown = m.value);
  });
  bind_.custom([this, shown = std::string()]() mutable {
    if (f_.c.caption == shown) return;
    shown = f_.c.caption;
    setWindowTitle(QString::fromStdString(shown));
  });

  auto* file_row = new QHBoxLayout;
  file_row->addWidget(w_.Command1);
  file_row->addWidget(w_.file_label, 1);
  file_row->addWidget(w_.Command4);
  auto* start_row = new QHBoxLayout;
  start_row->addWidget(w_.Command2);
  start_row->addWidget(w_.Command5);
  auto* progress_row = new QHBoxLayout;
  progress_row->addWidget(w_.ProgressBar1, 1);
  progress_row->addWidget(w_.Label2);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(w_.Label3, 1);
  bottom->addWidget(w_.Command3);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(file_row);
  layout->addLayout(start_row);
  layout->addLayout(progress_row);
  layout->addWidget(w_.Label1);
  layout->addLayout(bottom);
  resize(480, 220);

  run([this] { f_.Form_Load(); });
  refresh();  // not yet among the windows the program refreshes
}

QPushButton* Form2Window::add_button(const CommandButton& m, const QString& control,
                                     Handler click) {
  auto* b = new QPushButton(QString::fromStdString(m.caption), this);
  name_widget(b, QString::fromStdString(m.caption), control);
  bind_.button(b, m, std::move(click));
  return b;
}

QLabel* Form2Window::add_label(const Label& m, const QString& name, const QString& control) {
  auto* l = new QLabel(this);
  name_widget(l, name, control);
  bind_.label(l, m);
  return l;
}

void Form2Window::refresh() {
  bind_.refresh();
}

}  // namespace nerit::ui
