// The main window's maps: both grids with their floating editors, the boxes and the load type
// under them, and the map command frame.
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/accessible.h"
#include "ui/main_window.h"

namespace nerit::ui {

QWidget* MainWindow::build_maps() {
  auto* maps = new QWidget(this);
  name_widget(maps, "Maps", "Maps");
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
  MapControls& mc = f_.map_controls;
  struct Check {
    CheckBox* model;
    Handler click;
    const char* control;
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
    const char *frame_control, *grid_name, *grid_control, *editor_name, *editor_control;
  };
  const Parts parts =
      map == MapId::Correction
          ? Parts{mc.correction_frame,
                  c.MSFlexGrid2,
                  mc.Text2,
                  {[&e](int b) { e.MSFlexGrid2_MouseDown(b); },
                   [&e](int b) { e.MSFlexGrid2_MouseUp(b); }},
                  {[&e] { e.Text2_GotFocus(); }, [&e](int k) { e.Text2_KeyDown(k); },
                   [&e](int k, char ch) { e.type_key(MapId::Correction, k, ch); }},
                  correction_keys_,
                  &w_.MSFlexGrid2,
                  &w_.Text2,
                  {{&c.Check6, [this] { f_.axes.Check6_MouseUp(); }, "Check6"},
                   {&mc.Check2, {}, "Check2"}},
                  "Frame2",
                  "Injector correction map",
                  "MSFlexGrid2",
                  "Correction cell editor",
                  "Text2"}
          : Parts{mc.airflow_map_frame,
                  c.MSFlexGrid3,
                  mc.Text5,
                  {[&e](int b) { e.MSFlexGrid3_MouseDown(b); },
                   [&e](int b) { e.MSFlexGrid3_MouseUp(b); }},
                  {[&e] { e.Text5_GotFocus(); }, [&e](int k) { e.Text5_KeyDown(k); },
                   [&e](int k, char ch) { e.type_key(MapId::Airflow, k, ch); }},
                  airflow_keys_,
                  &w_.MSFlexGrid3,
                  &w_.Text5,
                  {{&c.Check4, [this] { f_.axes.Check4_MouseUp(); }, "Check4"},
                   {&mc.Check5, [this] { f_.automap.Check5_Click(); }, "Check5"}},
                  "Frame3",
                  "Airflow output map",
                  "MSFlexGrid3",
                  "Airflow cell editor",
                  "Text5"};

  auto* box = new QGroupBox(parent);
  name_widget(box, QString::fromStdString(parts.frame.caption), parts.frame_control);
  bind_.frame(box, parts.frame);
  auto* col = new QVBoxLayout(box);
  auto* view = new MapGridView(parts.grid, run_, parts.grid_events, parts.keys, box);
  name_widget(view, parts.grid_name, parts.grid_control);
  bind_.grid(view);
  // After its grid, so the box goes where the refreshed grid shows the cell.
  auto* editor =
      new CellEditorBox(parts.text, parts.frame, view, run_, parts.text_events, parts.keys);
  name_widget(editor, parts.editor_name, parts.editor_control);
  bind_.custom([editor] { editor->refresh(); });
  *parts.view = view;
  *parts.editor = editor;
  col->addWidget(view, 1);

  auto* under = new QHBoxLayout();
  for (const Check& check : parts.checks) {
    auto* cb = new QCheckBox(box);
    name_widget(cb, QString::fromStdString(check.model->caption), check.control);
    bind_.check(cb, *check.model, check.click);
    w_.check[check.model->caption] = cb;
    under->addWidget(cb);
  }
  if (map == MapId::Correction) {
    w_.GraphButton = new QPushButton(box);
    name_widget(w_.GraphButton, "Graph", "GraphButton");
    bind_.button(w_.GraphButton, mc.GraphButton, [this] { f_.block_commands.GraphButton_Click(); });
    under->addWidget(w_.GraphButton);
  }
  under->addStretch(1);
  if (map == MapId::Correction) {
    auto* caption = new QLabel(box);
    name_widget(caption, QString::fromStdString(mc.load_type_label.caption), "Label2");
    bind_.label(caption, mc.load_type_label);
    under->addWidget(caption);
    w_.Combo1 = new QComboBox(box);
    name_widget(w_.Combo1, "Loadtype", "Combo1");
    caption->setBuddy(w_.Combo1);
    w_.Combo1->setMinimumWidth(200);
    bind_.combo(w_.Combo1, c.Combo1, [this] { f_.axes.Combo1_Click(); });
    under->addWidget(w_.Combo1);
  }
  col->addLayout(under);
  return box;
}

QPoint MainWindow::command_frame_position(const Frame& m) const {
  // The model places the frame at a grid's corner, in twips from the window's map frames.
  const MapControls& mc = f_.map_controls;
  const bool airflow = m.left >= mc.airflow_map_frame.left;
  const Frame& frame = airflow ? mc.airflow_map_frame : mc.correction_frame;
  const Grid& g = airflow ? f_.c.MSFlexGrid3 : f_.c.MSFlexGrid2;
  const QWidget* view = airflow ? static_cast<QWidget*>(w_.MSFlexGrid3) : w_.MSFlexGrid2;
  const QPoint offset((m.left - frame.left - g.left) / kTwipsPerPixel,
                      (m.top - frame.top - g.top) / kTwipsPerPixel);
  return view->mapTo(this, QPoint(0, 0)) + offset;
}

void MainWindow::build_map_commands() {
  BlockCommands& b = f_.block_commands;
  MapControls& mc = f_.map_controls;
  w_.Frame6 = new MapCommandFrame(mc.Frame6, this,
                                  [this](const Frame& m) { return command_frame_position(m); });
  name_widget(w_.Frame6, "Map commands", "Frame6");
  const struct {
    CommandButton& model;
    Handler click;
    QPushButton** widget;
    bool small;
    const char* control;
  } buttons[] = {
      {mc.Command13, [&b] { b.Command13_Click(); }, &w_.Command13, false, "Command13"},
      {mc.Command14, [&b] { b.Command14_Click(); }, &w_.Command14, false, "Command14"},
      {mc.Command16, [&b] { b.Command16_Click(); }, &w_.Command16, false, "Command16"},
      {mc.Command8, [&b] { b.Command8_Click(); }, &w_.Command8, true, "Command8"},
      {mc.Command10, [&b] { b.Command10_Click(); }, &w_.Command10, true, "Command10"},
  };
  for (const auto& button : buttons) {
    *button.widget = w_.Frame6->add_button(button.small);
    name_widget(*button.widget, QString::fromStdString(button.model.caption), button.control);
    bind_.button(*button.widget, button.model, button.click);
  }
  bind_.custom([this] { w_.Frame6->refresh(); });
}

}  // namespace nerit::ui
