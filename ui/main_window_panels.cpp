// The main window's tuning panels: the list that chooses one, and the five panels on top of
// each other.
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/accessible.h"
#include "ui/key_press_filter.h"
#include "ui/main_window.h"

namespace nerit::ui {

namespace {

QString qs(const std::string& s) {
  return QString::fromStdString(s);
}

}  // namespace

QWidget* MainWindow::build_panels() {
  PanelControls& pc = f_.panel_controls;
  auto* box = new QGroupBox("Tuning", this);
  name_widget(box, "Tuning", "Tuning");
  auto* row = new QHBoxLayout(box);
  w_.List2 = new QListWidget(box);
  name_widget(w_.List2, "Tuning panels", "List2");
  w_.List2->setMaximumWidth(150);
  bind_.list(w_.List2, pc.List2, [this] { f_.panels.List2_Click(); });
  row->addWidget(w_.List2);

  // The panels lie on top of each other: the highest one the model shows is the one seen.
  w_.panel_stack = new QStackedWidget(box);
  name_widget(w_.panel_stack, "Tuning panel", "Frame1");
  for (int i = 0; i < kPanelCount; ++i) {
    auto* frame = new QGroupBox(w_.panel_stack);
    frame->setMinimumWidth(260);
    w_.Frame1[static_cast<std::size_t>(i)] = frame;
    w_.panel_stack->addWidget(frame);
  }
  auto* none = new QWidget(w_.panel_stack);
  name_widget(none, "No tuning panel", "Frame1(none)");
  w_.panel_stack->addWidget(none);
  bind_.custom([this] {
    int top = kPanelCount;
    for (int i = 0; i < kPanelCount; ++i) {
      const Frame& m = f_.panel_controls.Frame1[static_cast<std::size_t>(i)];
      QGroupBox* frame = w_.Frame1[static_cast<std::size_t>(i)];
      if (frame->title() != qs(m.caption)) {
        frame->setTitle(qs(m.caption));
        name_widget(frame, qs(m.caption), QString("Frame1(%1)").arg(i));
      }
      if (frame->isEnabled() != m.enabled) frame->setEnabled(m.enabled);
      if (m.visible) top = i;
    }
    if (w_.panel_stack->currentIndex() != top) w_.panel_stack->setCurrentIndex(top);
  });
  build_injector_panel(w_.Frame1[kPanelInjektoradjust]);
  build_fuelcut_panel(w_.Frame1[kPanelAirflowFuelcut]);
  build_boost_panel(w_.Frame1[kPanelBoostcontrol]);
  build_airflow_panel(w_.Frame1[kPanelAirflowOutput]);
  build_acceleration_panel(w_.Frame1[kPanelAccelerationFuel]);
  row->addWidget(w_.panel_stack, 1);
  return box;
}

QLabel* MainWindow::add_label(QWidget* parent, const Label& m, const QString& control) {
  auto* label = new QLabel(parent);
  name_widget(label, qs(m.caption), control);
  bind_.label(label, m);
  return label;
}

QPushButton* MainWindow::add_button(QWidget* parent, const CommandButton& m, const QString& control,
                                    Handler click) {
  auto* button = new QPushButton(parent);
  name_widget(button, qs(m.caption), control);
  bind_.button(button, m, std::move(click));
  return button;
}

void MainWindow::build_injector_panel(QGroupBox* frame) {
  PanelControls& pc = f_.panel_controls;
  auto* col = new QVBoxLayout(frame);
  auto* line = new QHBoxLayout();
  w_.Slider1 = new QSlider(Qt::Horizontal, frame);
  name_widget(w_.Slider1, "Injector adjust", "Slider1");
  w_.Slider1->setTickPosition(QSlider::TicksBelow);
  w_.Slider1->setTickInterval(32);
  w_.Slider1->setPageStep(8);
  bind_.slider(
      w_.Slider1, pc.Slider1, [this] { f_.injector.Slider1_Scroll(); },
      [this] { f_.injector.Slider1_Change(); });
  w_.Label6 = add_label(frame, pc.Label6, "Label6");
  name_widget(w_.Label6, "Injector adjust percent", "Label6");
  w_.Label6->setMinimumWidth(48);
  w_.Label6->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  line->addWidget(w_.Slider1, 1);
  line->addWidget(w_.Label6);
  col->addLayout(line);
  col->addStretch(1);
}

void MainWindow::build_fuelcut_panel(QGroupBox* frame) {
  auto* col = new QVBoxLayout(frame);
  w_.fuelcut_note = add_label(frame, f_.panel_controls.fuelcut_note, "fuelcut_note");
  w_.fuelcut_note->setWordWrap(true);
  col->addWidget(w_.fuelcut_note);
  col->addStretch(1);
}

void MainWindow::build_boost_panel(QGroupBox* frame) {
  PanelControls& pc = f_.panel_controls;
  auto* col = new QVBoxLayout(frame);
  w_.Check3 = new QCheckBox(frame);
  name_widget(w_.Check3, qs(pc.Check3.caption), "Check3");
  bind_.check(w_.Check3, pc.Check3, [this] { f_.boost.Check3_MouseUp(); });
  w_.check[pc.Check3.caption] = w_.Check3;
  col->addWidget(w_.Check3);

  auto* fields = new QGridLayout();
  auto field = [&](const Label& caption, const char* label_control, QWidget* w, int r) {
    QLabel* label = add_label(frame, caption, label_control);
    label->setBuddy(w);
    fields->addWidget(label, r, 0);
    fields->addWidget(w, r, 1);
  };
  w_.boost_start_text = new QLineEdit(frame);
  name_widget(w_.boost_start_text, "Start / kPa", "boost_start_text");
  bind_.text(w_.boost_start_text, pc.boost_start_text);
  field(pc.boost_start_label, "boost_start_label", w_.boost_start_text, 0);
  w_.boost_set_text = new QLineEdit(frame);
  name_widget(w_.boost_set_text, "Set / %", "boost_set_text");
  bind_.text(w_.boost_set_text, pc.boost_set_text);
  field(pc.boost_set_label, "boost_set_label", w_.boost_set_text, 1);
  w_.Combo4 = new QComboBox(frame);
  name_widget(w_.Combo4, "Analog In Channel", "Combo4");
  bind_.combo(w_.Combo4, pc.Combo4);
  field(pc.analog_in_label, "analog_in_label", w_.Combo4, 2);
  for (QLineEdit* w : {w_.boost_start_text, w_.boost_set_text}) w->setMaximumWidth(90);
  fields->setColumnStretch(2, 1);

  w_.solenoid_frame = new QGroupBox(frame);
  name_widget(w_.solenoid_frame, qs(pc.solenoid_frame.caption), "solenoid_frame");
  bind_.frame(w_.solenoid_frame, pc.solenoid_frame);
  auto* solenoid = new QHBoxLayout(w_.solenoid_frame);
  const std::vector<OptionButton*> outputs = {&pc.solenoid_isc, &pc.solenoid_injector6};
  const std::pair<QRadioButton**, const char*> options[] = {
      {&w_.solenoid_isc, "solenoid_isc"}, {&w_.solenoid_injector6, "solenoid_injector6"}};
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    auto* option = new QRadioButton(w_.solenoid_frame);
    name_widget(option, qs(outputs[i]->caption), options[i].second);
    bind_.option(option, *outputs[i], outputs);
    *options[i].first = option;
    solenoid->addWidget(option);
  }
  solenoid->addStretch(1);
  fields->addWidget(w_.solenoid_frame, 3, 0, 1, 3);
  col->addLayout(fields);

  auto* buttons = new QHBoxLayout();
  w_.Command7 = add_button(frame, pc.Command7, "Command7", [this] { f_.boost.Command7_Click(); });
  buttons->addWidget(w_.Command7);
  buttons->addStretch(1);
  col->addLayout(buttons);
  col->addStretch(1);
}

void MainWindow::build_airflow_panel(QGroupBox* frame) {
  PanelControls& pc = f_.panel_controls;
  AirflowOutput& a = f_.airflow;
  auto* col = new QVBoxLayout(frame);
  auto* kinds = new QHBoxLayout();
  const std::vector<OptionButton*> group = {&pc.OptionFrequency, &pc.OptionAnalog};
  const struct {
    OptionButton& model;
    Handler click;
    QRadioButton** widget;
    const char* control;
  } options[] = {
      {pc.OptionFrequency, [&a] { a.OptionFrequency_Click(); }, &w_.OptionFrequency,
       "OptionFrequency"},
      {pc.OptionAnalog, [&a] { a.OptionAnalog_Click(); }, &w_.OptionAnalog, "OptionAnalog"},
  };
  for (const auto& o : options) {
    *o.widget = new QRadioButton(frame);
    name_widget(*o.widget, qs(o.model.caption), o.control);
    bind_.option(*o.widget, o.model, group, o.click);
    kinds->addWidget(*o.widget);
  }
  kinds->addStretch(1);
  col->addLayout(kinds);

  auto* fields = new QGridLayout();
  w_.Combo3 = new QComboBox(frame);
  name_widget(w_.Combo3, "Airflow input", "Combo3");
  bind_.combo(w_.Combo3, pc.Combo3, [&a] { a.Combo3_Click(); });
  QLabel* input = add_label(frame, pc.Label1, "Label1");
  input->setBuddy(w_.Combo3);
  fields->addWidget(input, 0, 0);
  fields->addWidget(w_.Combo3, 0, 1);

  w_.Text1 = new QLineEdit(frame);
  name_widget(w_.Text1, "Clamp / mV", "Text1");
  w_.Text1->setMaximumWidth(90);
  bind_.text(w_.Text1, pc.Text1);
  new KeyPressFilter(w_.Text1, [this](int ascii) {
    int key = 0;  // dropped when the handler fails
    run_([this, ascii, &key] { key = f_.airflow.Text1_KeyPress(ascii); });
    return key;
  });
  QLabel* clamp = add_label(frame, pc.clamp_label, "Label5");
  clamp->setBuddy(w_.Text1);
  fields->addWidget(clamp, 1, 0);
  fields->addWidget(w_.Text1, 1, 1, Qt::AlignLeft);
  fields->setColumnStretch(2, 1);
  col->addLayout(fields);

  auto* buttons = new QHBoxLayout();
  w_.Command6 = add_button(frame, pc.Command6, "Command6", [&a] { a.Command6_Click(); });
  buttons->addWidget(w_.Command6);
  buttons->addStretch(1);
  col->addLayout(buttons);
  col->addStretch(1);
}

void MainWindow::build_acceleration_panel(QGroupBox* frame) {
  PanelControls& pc = f_.panel_controls;
  auto* col = new QVBoxLayout(frame);
  // Bars 0-2 belong to the throttle, 3 and 4 to the map pressure, 5 stands alone.
  auto inner = [&](const Frame& m, const char* control) {
    auto* group = new QGroupBox(frame);
    name_widget(group, qs(m.caption), control);
    bind_.frame(group, m);
    col->addWidget(group);
    return group;
  };
  QGroupBox* throttle = inner(pc.throttle_frame, "throttle_frame");
  QGroupBox* map = inner(pc.map_frame, "map_frame");
  w_.throttle_frame = throttle;
  w_.map_frame = map;
  auto* alone = new QGridLayout();
  col->addLayout(alone);
  col->addStretch(1);
  struct Place {
    QWidget* holder;
    QGridLayout* grid;
  };
  const Place throttle_place{throttle, new QGridLayout(throttle)};
  const Place map_place{map, new QGridLayout(map)};
  const Place places[6] = {throttle_place, throttle_place, throttle_place,
                           map_place,      map_place,      {frame, alone}};
  // The bars line up across the frames.
  for (QGridLayout* g : {throttle_place.grid, map_place.grid, alone}) {
    g->setColumnMinimumWidth(0, 90);
    g->setColumnStretch(1, 1);
  }
  for (int i = 0; i < 6; ++i) {
    const auto k = static_cast<std::size_t>(i);
    QWidget* holder = places[i].holder;
    const int r = i < 3 ? i : i < 5 ? i - 3 : 0;
    // A bar's name tells its frame too: "Throttle Filter", "Map Filter".
    QString name = qs(pc.accel_captions[k].caption);
    if (holder != frame) name = holder->accessibleName() + " " + name;
    QLabel* caption = add_label(holder, pc.accel_captions[k], QString("Label7(%1)").arg(i));
    auto* bar = new QScrollBar(Qt::Horizontal, holder);
    name_widget(bar, name, QString("HScroll1(%1)").arg(i));
    bar->setMinimumWidth(140);
    bar->setFocusPolicy(Qt::StrongFocus);  // the arrow keys move it as they move the slider
    bar->setPageStep(std::max(1, (pc.HScroll1[k].max - pc.HScroll1[k].min) / 8));
    bind_.scroll(
        bar, pc.HScroll1[k], [this, k] { f_.acceleration_fuel.HScroll1_Scroll(k); },
        [this, k] { f_.acceleration_fuel.HScroll1_Change(k); });
    QLabel* value = add_label(holder, pc.Label8[k], QString("Label8(%1)").arg(i));
    name_widget(value, name + " value", QString("Label8(%1)").arg(i));
    value->setMinimumWidth(32);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    caption->setBuddy(bar);
    places[i].grid->addWidget(caption, r, 0);
    places[i].grid->addWidget(bar, r, 1);
    places[i].grid->addWidget(value, r, 2);
    w_.HScroll1[k] = bar;
    w_.Label8[k] = value;
  }
}

}  // namespace nerit::ui
