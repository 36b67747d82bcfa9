#include "ui/main_window.h"

#include <QCloseEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace nerit::ui {

namespace {

QLabel* status_label(QWidget* parent, int min_width) {
  auto* l = new QLabel(parent);
  l->setAutoFillBackground(true);  // shows the model's back colour
  l->setAlignment(Qt::AlignCenter);
  l->setMinimumWidth(min_width);
  l->setFrameShape(QFrame::Panel);
  l->setFrameShadow(QFrame::Sunken);
  l->setMargin(3);
  return l;
}

}  // namespace

MainWindow::MainWindow(Form1& form, HandlerRunner run, QWidget* parent)
    : QMainWindow(parent),
      f_(form),
      run_(std::move(run)),
      bind_(run_),
      correction_keys_(f_.edits, MapId::Correction, run_),
      airflow_keys_(f_.edits, MapId::Airflow, run_) {
  build_menus();

  auto* central = new QWidget(this);
  auto* outer = new QVBoxLayout(central);
  outer->setContentsMargins(6, 6, 6, 6);
  outer->addWidget(build_link_bar());

  auto* lower = new QWidget(central);
  auto* lower_layout = new QHBoxLayout(lower);
  lower_layout->setContentsMargins(0, 0, 0, 0);
  lower_layout->addWidget(build_live(), 0);
  lower_layout->addWidget(build_panels(), 1);

  auto* log_box = new QGroupBox("Log", central);
  auto* log_layout = new QVBoxLayout(log_box);
  w_.List1 = new QListWidget(log_box);
  w_.List1->setToolTip("Click to clear the log");
  // One text line each: measuring every line on each addition grows slower as the log grows.
  w_.List1->setUniformItemSizes(true);
  log_layout->addWidget(w_.List1);
  bind_.list(w_.List1, f_.c.List1, [this] { f_.session.List1_Click(); });
  lower_layout->addWidget(log_box, 1);

  auto* split = new QSplitter(Qt::Vertical, central);
  split->addWidget(build_maps());
  split->addWidget(lower);
  split->setStretchFactor(0, 3);
  split->setStretchFactor(1, 2);
  split->setChildrenCollapsible(false);
  outer->addWidget(split, 1);
  setCentralWidget(central);

  bind_.custom([this] {
    const QString title = QString::fromStdString(f_.c.caption);
    if (windowTitle() != title) setWindowTitle(title);
  });
  resize(1560, 920);
}

void MainWindow::refresh() {
  bind_.refresh();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (on_close) on_close();
  event->accept();
}

QAction* MainWindow::add_menu_item(QMenu* menu, const MenuItem& m, Handler click) {
  QAction* a = menu->addAction(QString::fromStdString(m.caption));
  bind_.menu(a, m, std::move(click));
  w_.menu[m.caption] = a;
  return a;
}

void MainWindow::build_menus() {
  Form1Menus& m = f_.c.menus;
  auto top = [this](const MenuItem& item) {
    QMenu* menu = menuBar()->addMenu(QString::fromStdString(item.caption));
    bind_.menu(menu->menuAction(), item);
    w_.menu[item.caption] = menu->menuAction();
    return menu;
  };
  QMenu* datei = top(m.datei);
  add_menu_item(datei, m.laden);
  add_menu_item(datei, m.speichern);

  QMenu* controller = top(m.controller);
  add_menu_item(controller, m.autoconnect, [this] { f_.session.Command1_Click(); });
  add_menu_item(controller, m.Lesen, [this] { f_.session.Lesen_Click(); });
  add_menu_item(controller, m.Schreiben, [this] { f_.transfers.Schreiben_Click(); });
  controller->addSeparator();
  add_menu_item(controller, m.firmwareupdate, [this] { f_.session.firmwareupdate_Click(); });

  QMenu* setup = top(m.setup);
  add_menu_item(setup, m.Grundeinstellungen, [this] { f_.shell.Grundeinstellungen_Click(); });
  add_menu_item(setup, m.airflowsettings);
  setup->addSeparator();
  add_menu_item(setup, m.Drehzahlpunkte, [this] { f_.axes.Drehzahlpunkte_Click(); });
  add_menu_item(setup, m.Lastpunke, [this] { f_.axes.Lastpunke_Click(); });

  QMenu* logging = top(m.logging);
  QAction* echtzeit = add_menu_item(logging, m.echtzeit);
  echtzeit->setCheckable(true);
  logging->addSeparator();
  add_menu_item(logging, m.lstart);
  add_menu_item(logging, m.lstop);
}

QWidget* MainWindow::build_link_bar() {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);

  w_.Command1 = new QPushButton(bar);
  w_.Command1->setMinimumWidth(110);
  bind_.button(w_.Command1, f_.c.Command1, [this] { f_.session.Command1_Click(); });
  row->addWidget(w_.Command1);

  const int widths[3] = {80, 110, 200};
  for (int i = 0; i < 3; ++i) {
    w_.Label4[i] = status_label(bar, widths[i]);
    bind_.label(w_.Label4[i], f_.c.Label4[static_cast<std::size_t>(i)]);
    row->addWidget(w_.Label4[i]);
  }
  w_.Label4[0]->setToolTip("Link");
  w_.Label4[1]->setToolTip("Port");
  w_.Label4[2]->setToolTip("Firmware");
  row->addSpacing(12);

  struct Action {
    CommandButton* model;
    std::function<void()> click;
    QPushButton** widget;
  };
  const Action actions[] = {
      {&f_.c.Command12, [this] { f_.session.Command12_Click(); }, &w_.Command12},
      {&f_.c.Command9, [this] { f_.transfers.Command9_Click(); }, &w_.Command9},
      {&f_.c.Command15, [this] { f_.transfers.Command15_Click(); }, &w_.Command15},
      {&f_.c.Command4[0], [this] { f_.transfers.Command4_Click(0); }, &w_.Command4},
      {&f_.c.Command2, [this] { f_.transfers.Command2_Click(); }, &w_.Command2},
      {&f_.c.Command5, [this] { f_.transfers.Command5_Click(); }, &w_.Command5},
  };
  for (const Action& a : actions) {
    *a.widget = new QPushButton(bar);
    bind_.button(*a.widget, *a.model, a.click);
    row->addWidget(*a.widget);
  }
  row->addStretch(1);

  row->addWidget(new QLabel("Debugport:", bar));
  w_.Combo2 = new QComboBox(bar);
  w_.Combo2->setMinimumWidth(170);
  w_.Combo2->setMaxVisibleItems(12);
  bind_.combo(w_.Combo2, f_.c.Combo2, [this] { f_.session.Combo2_Click(); });
  row->addWidget(w_.Combo2);

  // Which device a port number means.
  bind_.custom([this] {
    const SerialPort& comm = f_.platform.comm;
    auto device_text = [&comm](int n) {
      const std::string device = comm.device_name(n);
      return QString::fromStdString(device.empty() ? "no device" : device);
    };
    QString port_tip = "Port";
    if (f_.c.Label4[1].caption.starts_with("Port: "))
      port_tip = QString("Port %1: %2").arg(comm.comm_port()).arg(device_text(comm.comm_port()));
    if (w_.Label4[1]->toolTip() != port_tip) w_.Label4[1]->setToolTip(port_tip);
    for (int n = 1; n < w_.Combo2->count(); ++n) {
      const QString tip = device_text(n);
      if (w_.Combo2->itemData(n, Qt::ToolTipRole).toString() != tip)
        w_.Combo2->setItemData(n, tip, Qt::ToolTipRole);
    }
  });
  return bar;
}

QWidget* MainWindow::build_maps() {
  auto* maps = new QWidget(this);
  auto* row = new QHBoxLayout(maps);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(build_map(maps, MapId::Correction), 1);
  row->addWidget(build_map(maps, MapId::Airflow), 1);
  build_map_commands();
  return maps;
}

QGroupBox* MainWindow::build_map(QWidget* parent, MapId map) {
  CellEditor& e = f_.editor;
  Form1Controls& c = f_.c;
  struct Check {
    CheckBox* model;
    Handler click;
  };
  struct Parts {
    Frame& frame;
    Grid& grid;
    TextBox& text;
    MapGridEvents grid_events;
    CellEditorEvents text_events;
    const MapEditKeys& keys;
    MapGridView** view;
    CellEditorBox** editor;
    std::vector<Check> checks;
  };
  const Parts parts =
      map == MapId::Correction
          ? Parts{c.correction_frame,
                  c.MSFlexGrid2,
                  c.Text2,
                  {[&e](int b) { e.MSFlexGrid2_MouseDown(b); },
                   [&e](int b) { e.MSFlexGrid2_MouseUp(b); }},
                  {[&e] { e.Text2_GotFocus(); }, [&e](int k) { e.Text2_KeyDown(k); },
                   [&e](int k, char ch) { e.type_key(MapId::Correction, k, ch); }},
                  correction_keys_,
                  &w_.MSFlexGrid2,
                  &w_.Text2,
                  {{&c.Check6, [this] { f_.axes.Check6_MouseUp(); }}, {&c.Check2, {}}}}
          : Parts{c.airflow_map_frame,
                  c.MSFlexGrid3,
                  c.Text5,
                  {[&e](int b) { e.MSFlexGrid3_MouseDown(b); },
                   [&e](int b) { e.MSFlexGrid3_MouseUp(b); }},
                  {[&e] { e.Text5_GotFocus(); }, [&e](int k) { e.Text5_KeyDown(k); },
                   [&e](int k, char ch) { e.type_key(MapId::Airflow, k, ch); }},
                  airflow_keys_,
                  &w_.MSFlexGrid3,
                  &w_.Text5,
                  {{&c.Check4, [this] { f_.axes.Check4_MouseUp(); }},
                   {&c.Check5, [this] { f_.automap.Check5_Click(); }}}};

  auto* box = new QGroupBox(parent);
  bind_.frame(box, parts.frame);
  auto* col = new QVBoxLayout(box);
  auto* view = new MapGridView(parts.grid, run_, parts.grid_events, parts.keys, box);
  view->on_press = [this](QPoint at) { w_.Frame6->set_anchor(at); };
  bind_.grid(view);
  // After its grid, so the box goes where the refreshed grid shows the cell.
  auto* editor = new CellEditorBox(parts.text, view, run_, parts.text_events, parts.keys);
  bind_.custom([editor] { editor->refresh(); });
  *parts.view = view;
  *parts.editor = editor;
  col->addWidget(view, 1);

  auto* under = new QHBoxLayout();
  for (const Check& check : parts.checks) {
    auto* cb = new QCheckBox(box);
    bind_.check(cb, *check.model, check.click);
    w_.check[check.model->caption] = cb;
    under->addWidget(cb);
  }
  if (map == MapId::Correction) {
    w_.GraphButton = new QPushButton(box);
    bind_.button(w_.GraphButton, c.GraphButton, [this] { f_.block_commands.GraphButton_Click(); });
    under->addWidget(w_.GraphButton);
  }
  under->addStretch(1);
  if (map == MapId::Correction) {
    auto* caption = new QLabel(box);
    bind_.label(caption, c.load_type_label);
    under->addWidget(caption);
    w_.Combo1 = new QComboBox(box);
    w_.Combo1->setMinimumWidth(200);
    bind_.combo(w_.Combo1, c.Combo1, [this] { f_.axes.Combo1_Click(); });
    under->addWidget(w_.Combo1);
  }
  col->addLayout(under);
  return box;
}

void MainWindow::build_map_commands() {
  BlockCommands& b = f_.block_commands;
  Form1Controls& c = f_.c;
  w_.Frame6 = new MapCommandFrame(c.Frame6, this);
  const struct {
    CommandButton& model;
    Handler click;
    QPushButton** widget;
    bool small;
  } buttons[] = {
      {c.Command13, [&b] { b.Command13_Click(); }, &w_.Command13, false},
      {c.Command14, [&b] { b.Command14_Click(); }, &w_.Command14, false},
      {c.Command16, [&b] { b.Command16_Click(); }, &w_.Command16, false},
      {c.Command8, [&b] { b.Command8_Click(); }, &w_.Command8, true},
      {c.Command10, [&b] { b.Command10_Click(); }, &w_.Command10, true},
  };
  for (const auto& button : buttons) {
    *button.widget = w_.Frame6->add_button(button.small);
    bind_.button(*button.widget, button.model, button.click);
  }
  bind_.custom([this] { w_.Frame6->refresh(); });
}

QWidget* MainWindow::build_live() {
  auto* box = new QGroupBox("Live", this);
  auto* col = new QVBoxLayout(box);
  auto* checks = new QHBoxLayout();
  for (CheckBox* m : {&f_.c.Check1, &f_.c.Check7}) {
    auto* cb = new QCheckBox(box);
    bind_.check(cb, *m);
    checks->addWidget(cb);
  }
  col->addLayout(checks);
  w_.MSFlexGrid1 = new GridView(f_.c.MSFlexGrid1, GridView::Fit::ModelWidths, box);
  w_.MSFlexGrid1->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  w_.MSFlexGrid1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  w_.MSFlexGrid1->setMinimumWidth(240);
  bind_.grid(w_.MSFlexGrid1);
  col->addWidget(w_.MSFlexGrid1, 1);
  return box;
}

QWidget* MainWindow::build_panels() {
  auto* box = new QGroupBox("Tuning", this);
  auto* row = new QHBoxLayout(box);
  w_.List2 = new QListWidget(box);
  w_.List2->setMaximumWidth(150);
  bind_.list(w_.List2, f_.c.List2, [this] { f_.panels.List2_Click(); });
  row->addWidget(w_.List2);

  // The panels lie on top of each other: the highest one the model shows is the one seen.
  w_.panel_stack = new QStackedWidget(box);
  for (int i = 0; i < kPanelCount; ++i) {
    auto* frame = new QGroupBox(w_.panel_stack);
    frame->setMinimumWidth(260);
    w_.Frame1[static_cast<std::size_t>(i)] = frame;
    w_.panel_stack->addWidget(frame);
  }
  w_.panel_stack->addWidget(new QWidget(w_.panel_stack));  // none shown
  bind_.custom([this] {
    int top = kPanelCount;
    for (int i = 0; i < kPanelCount; ++i) {
      const Frame& m = f_.c.Frame1[static_cast<std::size_t>(i)];
      QGroupBox* frame = w_.Frame1[static_cast<std::size_t>(i)];
      if (frame->title() != QString::fromStdString(m.caption))
        frame->setTitle(QString::fromStdString(m.caption));
      if (frame->isEnabled() != m.enabled) frame->setEnabled(m.enabled);
      if (m.visible) top = i;
    }
    if (w_.panel_stack->currentIndex() != top) w_.panel_stack->setCurrentIndex(top);
  });
  // The airflow input choice belongs to the airflow output panel.
  auto* airflow = new QFormLayout(w_.Frame1[kPanelAirflowOutput]);
  auto* input_label = new QLabel(w_.Frame1[kPanelAirflowOutput]);
  bind_.label(input_label, f_.c.Label1);
  w_.Combo3 = new QComboBox(w_.Frame1[kPanelAirflowOutput]);
  bind_.combo(w_.Combo3, f_.c.Combo3);
  airflow->addRow(input_label, w_.Combo3);
  auto* clamp_label = new QLabel(w_.Frame1[kPanelAirflowOutput]);
  bind_.label(clamp_label, f_.c.clamp_label);
  auto* clamp = new QLineEdit(w_.Frame1[kPanelAirflowOutput]);
  bind_.text(clamp, f_.c.Text1);
  airflow->addRow(clamp_label, clamp);

  // Acceleration fuel: the six bars with their value labels.
  auto* accel = new QFormLayout(w_.Frame1[kPanelAccelerationFuel]);
  const char* captions[6] = {"Throttle Filter", "Throttle Menge", "Throttle Dauer",
                             "Map Filter",      "Map Menge",      "Reduzierung"};
  for (int i = 0; i < 6; ++i) {
    auto* line = new QHBoxLayout();
    auto* bar = new QScrollBar(Qt::Horizontal, w_.Frame1[kPanelAccelerationFuel]);
    bind_.scroll(bar, f_.c.HScroll1[static_cast<std::size_t>(i)]);
    auto* value = new QLabel(w_.Frame1[kPanelAccelerationFuel]);
    value->setMinimumWidth(32);
    bind_.label(value, f_.c.Label8[static_cast<std::size_t>(i)]);
    line->addWidget(bar, 1);
    line->addWidget(value);
    accel->addRow(captions[i], line);
  }
  row->addWidget(w_.panel_stack, 1);
  return box;
}

}  // namespace nerit::ui
