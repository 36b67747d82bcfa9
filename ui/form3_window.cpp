#include "ui/form3_window.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/accessible.h"
#include "ui/key_press_filter.h"

namespace nerit::ui {

namespace {

QString qs(const std::string& s) {
  return QString::fromStdString(s);
}

}  // namespace

Form3Window::Form3Window(Form3& form, HandlerRunner run)
    : QWidget(nullptr, Qt::Window), f_(form), run_(run), bind_(std::move(run)) {
  setWindowTitle("Basesettings");
  auto* columns = new QHBoxLayout;
  columns->addWidget(build_pressure(), 1);
  auto* right = new QVBoxLayout;
  right->addWidget(build_throttle());
  right->addWidget(build_cylinders());
  right->addWidget(build_channels());
  right->addWidget(build_injectors());
  right->addStretch(1);
  columns->addLayout(right);

  auto* bottom = new QHBoxLayout;
  bottom->addStretch(1);
  w_.Command3 = add_button(this, f_.c.Command3, "Command3", [this] { f_.Command3_Click(); });
  w_.Command3->setMinimumWidth(100);
  bottom->addWidget(w_.Command3);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns, 1);
  layout->addLayout(bottom);

  run_([this] { f_.Form_Load(); });
  refresh();  // not yet among the windows the program refreshes
}

void Form3Window::refresh() {
  bind_.refresh();
}

QGroupBox* Form3Window::add_frame(const Frame& m, const QString& control) {
  auto* frame = new QGroupBox(this);
  name_widget(frame, qs(m.caption), control);
  bind_.frame(frame, m);
  return frame;
}

QLabel* Form3Window::add_label(QWidget* parent, const Label& m, const QString& name,
                               const QString& control) {
  auto* label = new QLabel(parent);
  name_widget(label, name, control);
  bind_.label(label, m);
  return label;
}

QPushButton* Form3Window::add_button(QWidget* parent, const CommandButton& m,
                                     const QString& control, Handler click) {
  auto* button = new QPushButton(parent);
  name_widget(button, qs(m.caption), control);
  bind_.button(button, m, std::move(click));
  return button;
}

QLineEdit* Form3Window::add_field(QWidget* parent, TextBox& m, const QString& name,
                                  const QString& control, std::function<int(int)> key_press,
                                  Handler change) {
  auto* edit = new QLineEdit(parent);
  name_widget(edit, name, control);
  edit->setMaximumWidth(110);
  bind_.text(edit, m, std::move(change));
  if (key_press)
    new KeyPressFilter(edit, [this, key_press](int ascii) {
      int key = 0;  // dropped when the handler fails
      run_([&] { key = key_press(ascii); });
      return key;
    });
  return edit;
}

QGroupBox* Form3Window::build_pressure() {
  Form3Controls& c = f_.c;
  PressureCalibration& p = f_.pressure;
  QGroupBox* frame = w_.pressure_frame = add_frame(c.pressure_frame, "pressure_frame");
  auto* col = new QVBoxLayout(frame);

  w_.Combo1 = new QComboBox(frame);
  name_widget(w_.Combo1, kSensorTypeText, "Combo1");
  bind_.combo(w_.Combo1, c.Combo1, [&p] { p.Combo1_Click(); });
  col->addWidget(w_.Combo1);

  auto* fields = new QGridLayout;
  const char* names[] = {"Faktor", "Offset", "max P"};
  for (int i = 0; i < 3; ++i) {
    const auto k = static_cast<std::size_t>(i);
    const QString control = QString("Text1(%1)").arg(i);
    w_.Text1[k] = add_field(
        frame, c.Text1[k], names[i], control, [&p, i](int key) { return p.Text1_KeyPress(i, key); },
        [&p, i] { p.Text1_Change(i); });
    QLabel* label = add_label(frame, c.sensor_labels[k], qs(c.sensor_labels[k].caption),
                              QString("sensor_labels(%1)").arg(i));
    label->setBuddy(w_.Text1[k]);
    fields->addWidget(label, i, 0);
    fields->addWidget(w_.Text1[k], i, 1);
  }
  fields->setColumnStretch(2, 1);
  col->addLayout(fields);

  auto* buttons = new QHBoxLayout;
  w_.Command1 = add_button(frame, c.Command1, "Command1", [&p] { p.Command1_Click(); });
  w_.Command2 = add_button(frame, c.Command2, "Command2", [&p] { p.Command2_Click(); });
  w_.Command4 = add_button(frame, c.Command4, "Command4", [this] { f_.wizard.Command4_Click(); });
  for (QPushButton* b : {w_.Command1, w_.Command2, w_.Command4}) buttons->addWidget(b);
  buttons->addStretch(1);
  col->addLayout(buttons);

  // The table and the wizard share the space below; the models show one of them.
  w_.List1 = new QListWidget(frame);
  name_widget(w_.List1, "Sensor table", "List1");
  w_.List1->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  w_.List1->setMinimumSize(260, 240);
  bind_.list(w_.List1, c.List1);
  // A new table shows from its heading line on.
  bind_.custom([this, count = -1, last = std::string()]() mutable {
    const ListBox& m = f_.c.List1;
    const std::string now = m.items.empty() ? std::string() : m.items.back();
    if (m.list_count() == count && now == last) return;
    count = m.list_count();
    last = now;
    w_.List1->scrollToTop();
  });
  col->addWidget(w_.List1, 1);
  col->addWidget(build_wizard(frame), 1);
  return frame;
}

QGroupBox* Form3Window::build_wizard(QWidget* parent) {
  Form3Controls& c = f_.c;
  SensorWizard& wiz = f_.wizard;
  auto* frame = new QGroupBox(parent);
  name_widget(frame, qs(c.wizard_frame.caption), "wizard_frame");
  bind_.frame(frame, c.wizard_frame);
  w_.wizard_frame = frame;
  auto* grid = new QGridLayout(frame);
  grid->addWidget(add_label(frame, c.pressure_heading, "Pressure / kPa", "pressure_heading"), 0, 1);
  grid->addWidget(add_label(frame, c.voltage_heading, "Sensor voltage", "voltage_heading"), 0, 2);

  const std::vector<OptionButton*> group = {&c.Option2[0], &c.Option2[1]};
  const char* point_names[] = {"Measure at 100 kPa", "Measure at P2"};
  const char* volt_names[] = {"Volt at 100 kPa", "Volt at P2"};
  const auto sensor_key = [&p = f_.pressure](int key) { return p.Text1_KeyPress(0, key); };
  for (int i = 0; i < 2; ++i) {
    const auto k = static_cast<std::size_t>(i);
    auto* option = new QRadioButton(frame);
    name_widget(option, point_names[i], QString("Option2(%1)").arg(i));
    bind_.option(option, c.Option2[k], group);
    w_.Option2[k] = option;
    grid->addWidget(option, i + 1, 0);
    w_.Text4[k] =
        add_field(frame, c.Text4[k], volt_names[i], QString("Text4(%1)").arg(i), sensor_key);
    grid->addWidget(w_.Text4[k], i + 1, 2);
  }
  grid->addWidget(add_label(frame, c.fixed_100kpa, "100 kPa", "fixed_100kpa"), 1, 1);
  w_.Text3 = add_field(frame, c.Text3, "P2 / kPa", "Text3", sensor_key);
  grid->addWidget(w_.Text3, 2, 1);

  auto* buttons = new QHBoxLayout;
  w_.Command5 = add_button(frame, c.Command5, "Command5", [&wiz] { wiz.Command5_Click(); });
  w_.Command7 = add_button(frame, c.Command7, "Command7", [&wiz] { wiz.Command7_Click(); });
  buttons->addWidget(w_.Command5);
  buttons->addWidget(w_.Command7);
  buttons->addStretch(1);
  grid->addLayout(buttons, 3, 0, 1, 4);
  grid->setColumnStretch(3, 1);
  grid->setRowStretch(4, 1);
  return frame;
}

}  // namespace nerit::ui
