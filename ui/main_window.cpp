#include "ui/main_window.h"

#include "ui/accessible.h"
#include "ui/text_cache_delegate.h"

#include <QCloseEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
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
  f_.compare_file.show = [this](const Comparison& c) { comparison_ = show_comparison(c, this); };

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
  name_widget(log_box, "Log", "Log");
  auto* log_layout = new QVBoxLayout(log_box);
  w_.List1 = new QListWidget(log_box);
  name_widget(w_.List1, "Log", "List1");
  w_.List1->setToolTip("Click to clear the log");
  // One text line each: measuring every line on each addition grows slower as the log grows.
  w_.List1->setUniformItemSizes(true);
  w_.List1->setItemDelegate(new TextCacheDelegate(w_.List1));
  // Painting its own background, the list repaints without the group box behind it.
  w_.List1->setAutoFillBackground(true);
  log_layout->addWidget(w_.List1);
  bind_.list(w_.List1, f_.c.List1, [this] { f_.session.List1_Click(); });
  lower_layout->addWidget(log_box, 1);

  auto* split = split_ = new QSplitter(Qt::Vertical, central);
  split->addWidget(build_maps());
  split->addWidget(lower);
  split->setStretchFactor(0, 3);
  split->setStretchFactor(1, 2);
  split->setChildrenCollapsible(false);
  outer->addWidget(split, 1);
  setCentralWidget(central);
  build_status_bar();

  bind_.custom([this] {
    const QString title = QString::fromStdString(f_.c.caption);
    if (windowTitle() != title) setWindowTitle(title);
  });
  resize(1560, 920);
}

void MainWindow::build_status_bar() {
  name_widget(statusBar(), "Status bar", "StatusBar");
  w_.data_log_status = new QLabel(statusBar());
  name_widget(w_.data_log_status, "Data log", "DataLog status");
  statusBar()->addPermanentWidget(w_.data_log_status);
  data_log_clock_.setInterval(1000);
  connect(&data_log_clock_, &QTimer::timeout, this, [this] { show_data_log_status(); });
  // The rows and the time move once a second; the window's refreshes only start and stop it.
  bind_.custom([this] {
    if (f_.data_log.recording() != data_log_clock_.isActive()) show_data_log_status();
  });
  w_.data_log_status->setMinimumWidth(360);  // a growing row count moves nothing around it
}

void MainWindow::show_data_log_status() {
  const QString text = QString::fromStdString(f_.data_log.status_text());
  if (w_.data_log_status->text() != text) w_.data_log_status->setText(text);
  const bool recording = f_.data_log.recording();
  if (recording && !data_log_clock_.isActive()) data_log_clock_.start();
  if (!recording) data_log_clock_.stop();
}

bool MainWindow::refresh(bool paced) {
  return bind_.refresh(paced);
}

void MainWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (split_sized_) return;
  split_sized_ = true;
  // The maps as tall as they ask to be, every row in its own height; the live values, the
  // chart and the panels get the rest.
  const int maps = split_->widget(0)->sizeHint().height();
  const int total = split_->height() - split_->handleWidth();
  if (total > maps) split_->setSizes({maps, total - maps});
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (on_close) on_close();
  event->accept();
}

QAction* MainWindow::add_menu_item(QMenu* menu, const MenuItem& m, const char* control,
                                   Handler click) {
  QAction* a = menu->addAction(QString::fromStdString(m.caption));
  name_action(a, control);
  bind_.menu(a, m, std::move(click));
  w_.menu[m.caption] = a;
  return a;
}

void MainWindow::build_menus() {
  Form1Menus& m = f_.c.menus;
  name_widget(menuBar(), "Menu", "Menu");
  auto top = [this](const MenuItem& item, const char* control) {
    QMenu* menu = menuBar()->addMenu(QString::fromStdString(item.caption));
    name_widget(menu, QString::fromStdString(item.caption), control);
    name_action(menu->menuAction(), control);
    bind_.menu(menu->menuAction(), item);
    w_.menu[item.caption] = menu->menuAction();
    return menu;
  };
  QMenu* datei = top(m.datei, "datei");
  add_menu_item(datei, m.laden, "laden", [this] { f_.settings_file.Laden_Click(); });
  add_menu_item(datei, m.speichern, "speichern", [this] { f_.settings_file.Speichern_Click(); });
  datei->addSeparator();
  add_menu_item(datei, f_.compare_file.compare, "compare", [this] { f_.compare_file.compare_Click(); });
  datei->addSeparator();
  for (std::size_t i = 0; i < f_.recent_files.items.size(); ++i) {
    const QString control = QString("recent(%1)").arg(i);
    add_menu_item(datei, f_.recent_files.items[i], control.toUtf8().constData(),
                  [this, i] { f_.recent_files.recent_Click(i); });
  }

  QMenu* controller = top(m.controller, "controller");
  add_menu_item(controller, m.autoconnect, "autoconnect", [this] { f_.session.Command1_Click(); });
  add_menu_item(controller, m.Lesen, "Lesen", [this] { f_.session.Lesen_Click(); });
  add_menu_item(controller, m.Schreiben, "Schreiben", [this] { f_.transfers.Schreiben_Click(); });
  controller->addSeparator();
  add_menu_item(controller, m.firmwareupdate, "firmwareupdate",
                [this] { f_.session.firmwareupdate_Click(); });

  QMenu* setup = top(m.setup, "setup");
  add_menu_item(setup, m.Grundeinstellungen, "Grundeinstellungen",
                [this] { f_.shell.Grundeinstellungen_Click(); });
  add_menu_item(setup, m.airflowsettings, "airflowsettings",
                [this] { f_.airflow.airflowsettings_Click(); });
  setup->addSeparator();
  add_menu_item(setup, m.Drehzahlpunkte, "Drehzahlpunkte",
                [this] { f_.axes.Drehzahlpunkte_Click(); });
  add_menu_item(setup, m.Lastpunke, "Lastpunke", [this] { f_.axes.Lastpunke_Click(); });

  QMenu* logging = top(m.logging, "logging");
  // Checkable entries show the model's mark: the binding puts back what Qt flips on a click.
  add_menu_item(logging, m.echtzeit, "echtzeit", [this] {
    f_.stream.echtzeit_Click();
  })->setCheckable(true);
  add_menu_item(logging, f_.live_controls.chart_freeze, "chart_freeze", [this] {
    f_.stream.chart_freeze_Click();
  })->setCheckable(true);
  logging->addSeparator();
  add_menu_item(logging, m.lstart, "lstart", [this] { f_.data_log.lstart_Click(); });
  add_menu_item(logging, m.lstop, "lstop", [this] { f_.data_log.lstop_Click(); });
}

QWidget* MainWindow::build_link_bar() {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);

  w_.Command1 = new QPushButton(bar);
  name_widget(w_.Command1, "Connect", "Command1");
  w_.Command1->setMinimumWidth(110);
  bind_.button(w_.Command1, f_.c.Command1, [this] { f_.session.Command1_Click(); });
  row->addWidget(w_.Command1);

  const int widths[3] = {80, 110, 200};
  const char* names[3] = {"Link", "Port", "Firmware"};
  for (int i = 0; i < 3; ++i) {
    w_.Label4[i] = status_label(bar, widths[i]);
    name_widget(w_.Label4[i], names[i], QString("Label4(%1)").arg(i));
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
    const char* control;
  };
  const Action actions[] = {
      {&f_.c.Command12, [this] { f_.session.Command12_Click(); }, &w_.Command12, "Command12"},
      {&f_.c.Command9, [this] { f_.transfers.Command9_Click(); }, &w_.Command9, "Command9"},
      {&f_.c.Command15, [this] { f_.transfers.Command15_Click(); }, &w_.Command15, "Command15"},
      {&f_.c.Command4[0], [this] { f_.transfers.Command4_Click(0); }, &w_.Command4, "Command4(0)"},
      {&f_.c.Command2, [this] { f_.transfers.Command2_Click(); }, &w_.Command2, "Command2"},
      {&f_.c.Command5, [this] { f_.transfers.Command5_Click(); }, &w_.Command5, "Command5"},
  };
  for (const Action& a : actions) {
    *a.widget = new QPushButton(bar);
    name_widget(*a.widget, QString::fromStdString(a.model->caption), a.control);
    bind_.button(*a.widget, *a.model, a.click);
    row->addWidget(*a.widget);
  }
  row->addStretch(1);

  auto* debug_label = new QLabel("Debugport:", bar);
  name_widget(debug_label, "Debugport:", "Debugport label");
  row->addWidget(debug_label);
  w_.Combo2 = new QComboBox(bar);
  name_widget(w_.Combo2, "Debug port", "Combo2");
  debug_label->setBuddy(w_.Combo2);
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

}  // namespace nerit::ui
