// The base-settings window's right column: throttle end points, cylinders, injector channels
// and injectors.
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/accessible.h"
#include "ui/form3_window.h"

namespace nerit::ui {

namespace {

QString qs(const std::string& s) {
  return QString::fromStdString(s);
}

}  // namespace

QGroupBox* Form3Window::build_throttle() {
  Form3Controls& c = f_.c;
  ThrottleCapture& t = f_.throttle;
  QGroupBox* frame = w_.throttle_frame = add_frame(c.throttle_frame, "throttle_frame");
  auto* grid = new QGridLayout(frame);
  grid->addWidget(add_label(frame, c.value_heading, "Wert", "value_heading"), 0, 1);
  grid->addWidget(add_label(frame, c.volt_heading, "Volt", "volt_heading"), 0, 2);
  const char* ends[] = {"Open", "Closed"};
  for (int i = 0; i < 2; ++i) {
    const auto k = static_cast<std::size_t>(i);
    const QString end = ends[i];
    w_.Command6[k] = add_button(frame, c.Command6[k], QString("Command6(%1)").arg(i),
                                [&t, i] { t.Command6_Click(i); });
    w_.end_value[k] =
        add_label(frame, c.end_value[k], end + " throttle value", QString("end_value(%1)").arg(i));
    w_.end_volt[k] =
        add_label(frame, c.end_volt[k], end + " throttle volt", QString("end_volt(%1)").arg(i));
    grid->addWidget(w_.Command6[k], i + 1, 0);
    grid->addWidget(w_.end_value[k], i + 1, 1);
    grid->addWidget(w_.end_volt[k], i + 1, 2);
  }
  grid->addWidget(add_label(frame, c.live_heading, "Live", "live_heading"), 3, 0, Qt::AlignRight);
  w_.live_value = add_label(frame, c.live_value, "Live throttle value", "live_value");
  w_.live_volt = add_label(frame, c.live_volt, "Live throttle volt", "live_volt");
  w_.live_percent = add_label(frame, c.live_percent, "Live throttle percent", "live_percent");
  grid->addWidget(w_.live_value, 3, 1);
  grid->addWidget(w_.live_volt, 3, 2);
  grid->addWidget(w_.live_percent, 3, 3);
  for (int col = 1; col <= 3; ++col) grid->setColumnMinimumWidth(col, 56);
  grid->setColumnStretch(4, 1);
  return frame;
}

QGroupBox* Form3Window::build_cylinders() {
  Form3Controls& c = f_.c;
  QGroupBox* frame = w_.cylinder_frame = add_frame(c.cylinder_frame, "cylinder_frame");
  auto* row = new QHBoxLayout(frame);
  const std::vector<OptionButton*> group = {&c.Option1[0], &c.Option1[1], &c.Option1[2]};
  for (int i = 0; i < 3; ++i) {
    const auto k = static_cast<std::size_t>(i);
    auto* option = new QRadioButton(frame);
    name_widget(option, qs(c.Option1[k].caption) + " cylinders", QString("Option1(%1)").arg(i));
    bind_.option(option, c.Option1[k], group, [this, i] { f_.injectors.Option1_Click(i); });
    w_.Option1[k] = option;
    row->addWidget(option);
  }
  row->addStretch(1);
  return frame;
}

QGroupBox* Form3Window::build_channels() {
  Form3Controls& c = f_.c;
  InjectorSetup& inj = f_.injectors;
  QGroupBox* frame = w_.channel_frame = add_frame(c.channel_frame, "channel_frame");
  auto* grid = new QGridLayout(frame);
  w_.Combo2 = new QComboBox(frame);
  name_widget(w_.Combo2, kInjectorsText, "Combo2");
  bind_.combo(w_.Combo2, c.Combo2, [&inj] { inj.Combo2_Click(); });
  grid->addWidget(w_.Combo2, 0, 0, 1, 2);
  w_.Combo3 = new QComboBox(frame);
  name_widget(w_.Combo3, qs(c.divisor_label.caption), "Combo3");
  bind_.combo(w_.Combo3, c.Combo3, [&inj] { inj.Combo3_Click(); });
  w_.Combo3->setMinimumWidth(70);
  QLabel* divisor = add_label(frame, c.divisor_label, qs(c.divisor_label.caption), "divisor_label");
  divisor->setBuddy(w_.Combo3);
  grid->addWidget(divisor, 1, 0);
  grid->addWidget(w_.Combo3, 1, 1);
  grid->setColumnStretch(2, 1);
  return frame;
}

QGroupBox* Form3Window::build_injectors() {
  Form3Controls& c = f_.c;
  InjectorSetup& inj = f_.injectors;
  QGroupBox* frame = w_.injector_frame = add_frame(c.injector_frame, "injector_frame");
  auto* grid = new QGridLayout(frame);
  const char* names[] = {"Injectoroffset in / µs", "Injectoroffset out / µs", "Injectorsize old",
                         "Injectorsize new"};
  for (int i = 0; i < 4; ++i) {
    const auto k = static_cast<std::size_t>(i);
    w_.Text2[k] =
        add_field(frame, c.Text2[k], QString::fromUtf8(names[i]), QString("Text2(%1)").arg(i),
                  [&inj, i](int key) { return inj.Text2_KeyPress(i, key); });
    w_.Text2[k]->setMaximumWidth(80);
  }
  const struct {
    const Label& label;
    const char* control;
    QLineEdit* first;
    QLineEdit* second;
  } rows[] = {
      {c.size_label, "size_label", w_.Text2[kSizeOld], w_.Text2[kSizeNew]},
      {c.offset_in_label, "offset_in_label", w_.Text2[kOffsetIn], nullptr},
      {c.offset_out_label, "offset_out_label", w_.Text2[kOffsetOut], nullptr},
  };
  int r = 0;
  for (const auto& row : rows) {
    QLabel* label = add_label(frame, row.label, qs(row.label.caption), row.control);
    label->setBuddy(row.first);
    grid->addWidget(label, r, 0);
    grid->addWidget(row.first, r, 1);
    if (row.second) grid->addWidget(row.second, r, 2);
    ++r;
  }
  grid->setColumnStretch(3, 1);
  return frame;
}

}  // namespace nerit::ui
