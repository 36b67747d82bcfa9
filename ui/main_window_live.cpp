// The main window's live values and tuning panels.
#include <QFormLayout>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "ui/accessible.h"
#include "ui/main_window.h"

namespace nerit::ui {

QWidget* MainWindow::build_live() {
  LiveControls& lc = f_.live_controls;
  auto* box = new QGroupBox("Live", this);
  name_widget(box, "Live", "Live");
  auto* col = new QVBoxLayout(box);
  auto* checks = new QHBoxLayout();
  const std::pair<CheckBox*, const char*> boxes[] = {{&f_.c.Check1, "Check1"},
                                                     {&lc.Check7, "Check7"}};
  for (const auto& [m, control] : boxes) {
    auto* cb = new QCheckBox(box);
    name_widget(cb, QString::fromStdString(m->caption), control);
    bind_.check(cb, *m);
    w_.check[m->caption] = cb;
    checks->addWidget(cb);
  }
  col->addLayout(checks);
  w_.MSFlexGrid1 = new GridView(lc.MSFlexGrid1, GridView::Fit::ModelWidths, box);
  name_widget(w_.MSFlexGrid1, "Live values", "MSFlexGrid1");
  w_.MSFlexGrid1->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  w_.MSFlexGrid1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  w_.MSFlexGrid1->setMinimumWidth(240);
  bind_.grid(w_.MSFlexGrid1);
  col->addWidget(w_.MSFlexGrid1, 1);
  return box;
}

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
      if (frame->title() != QString::fromStdString(m.caption))
        frame->setTitle(QString::fromStdString(m.caption));
      name_widget(frame, QString::fromStdString(m.caption), QString("Frame1(%1)").arg(i));
      if (frame->isEnabled() != m.enabled) frame->setEnabled(m.enabled);
      if (m.visible) top = i;
    }
    if (w_.panel_stack->currentIndex() != top) w_.panel_stack->setCurrentIndex(top);
  });
  // The airflow input choice belongs to the airflow output panel.
  QGroupBox* output = w_.Frame1[kPanelAirflowOutput];
  auto* airflow = new QFormLayout(output);
  // A field with its caption label in front.
  auto labelled = [&](const Label& caption, const char* label_control, QWidget* field) {
    auto* label = new QLabel(output);
    name_widget(label, QString::fromStdString(caption.caption), label_control);
    bind_.label(label, caption);
    label->setBuddy(field);
    airflow->addRow(label, field);
  };
  w_.Combo3 = new QComboBox(output);
  name_widget(w_.Combo3, "Airflow input", "Combo3");
  bind_.combo(w_.Combo3, pc.Combo3);
  labelled(pc.Label1, "Label1", w_.Combo3);
  w_.Text1 = new QLineEdit(output);
  name_widget(w_.Text1, "Clamp / mV", "Text1");
  bind_.text(w_.Text1, pc.Text1);
  labelled(pc.clamp_label, "Label5", w_.Text1);

  // Acceleration fuel: the six bars with their value labels.
  QGroupBox* accel_frame = w_.Frame1[kPanelAccelerationFuel];
  auto* accel = new QFormLayout(accel_frame);
  const char* captions[6] = {"Throttle Filter", "Throttle Menge", "Throttle Dauer",
                             "Map Filter",      "Map Menge",      "Reduzierung"};
  for (int i = 0; i < 6; ++i) {
    const auto k = static_cast<std::size_t>(i);
    auto* line = new QHBoxLayout();
    auto* caption = new QLabel(captions[i], accel_frame);
    name_widget(caption, captions[i], QString("Label7(%1)").arg(i));
    auto* bar = new QScrollBar(Qt::Horizontal, accel_frame);
    name_widget(bar, captions[i], QString("HScroll1(%1)").arg(i));
    bind_.scroll(bar, pc.HScroll1[k]);
    auto* value = new QLabel(accel_frame);
    name_widget(value, QString(captions[i]) + " value", QString("Label8(%1)").arg(i));
    value->setMinimumWidth(32);
    bind_.label(value, pc.Label8[k]);
    line->addWidget(bar, 1);
    line->addWidget(value);
    accel->addRow(caption, line);
  }
  row->addWidget(w_.panel_stack, 1);
  return box;
}

}  // namespace nerit::ui
