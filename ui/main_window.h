#pragma once
// The main window (Form1) on screen: menus, link bar, both maps, live values, tuning panels
// and the log, each widget bound to its control model.
#include <QMainWindow>
#include <array>
#include <map>
#include <string>

#include "app/form1.h"
#include "ui/bindings.h"
#include "ui/cell_editor_box.h"
#include "ui/map_command_frame.h"
#include "ui/map_edit_keys.h"
#include "ui/map_grid_view.h"

class QListWidget;
class QComboBox;
class QLabel;
class QPushButton;
class QGroupBox;
class QStackedWidget;

namespace nerit::ui {

class MainWindow : public QMainWindow {
 public:
  MainWindow(Form1& form, HandlerRunner run, QWidget* parent = nullptr);
  void refresh();

  // For tests and screenshots.
  struct Widgets {
    QPushButton* Command1 = nullptr;
    QPushButton* Command12 = nullptr;
    QPushButton* Command9 = nullptr;
    QPushButton* Command15 = nullptr;
    QPushButton* Command4 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command5 = nullptr;
    std::array<QLabel*, 3> Label4{};
    QComboBox* Combo1 = nullptr;
    QComboBox* Combo2 = nullptr;
    QComboBox* Combo3 = nullptr;
    QListWidget* List1 = nullptr;
    QListWidget* List2 = nullptr;
    GridView* MSFlexGrid1 = nullptr;
    MapGridView* MSFlexGrid2 = nullptr;
    MapGridView* MSFlexGrid3 = nullptr;
    CellEditorBox* Text2 = nullptr;
    CellEditorBox* Text5 = nullptr;
    MapCommandFrame* Frame6 = nullptr;
    QPushButton* Command13 = nullptr;
    QPushButton* Command14 = nullptr;
    QPushButton* Command16 = nullptr;
    QPushButton* Command8 = nullptr;
    QPushButton* Command10 = nullptr;
    QPushButton* GraphButton = nullptr;
    std::map<std::string, QCheckBox*> check;  // by caption
    QLineEdit* Text1 = nullptr;
    std::array<QGroupBox*, kPanelCount> Frame1{};
    QStackedWidget* panel_stack = nullptr;
    std::map<std::string, QAction*> menu;  // by caption
  };
  const Widgets& widgets() const { return w_; }

  // Runs when the user closes the window.
  std::function<void()> on_close;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* build_link_bar();
  QWidget* build_maps();                             // main_window_maps.cpp
  QGroupBox* build_map(QWidget* parent, MapId map);  // main_window_maps.cpp
  void build_map_commands();                         // main_window_maps.cpp
  // Where Frame6 goes: the position the model gives, on the grid it was computed for.
  QPoint command_frame_position(const Frame& m) const;
  QWidget* build_live();    // main_window_live.cpp
  QWidget* build_panels();  // main_window_live.cpp
  void build_menus();
  QAction* add_menu_item(QMenu* menu, const MenuItem& m, const char* control, Handler click = {});

  Form1& f_;
  HandlerRunner run_;
  Bindings bind_;
  MapEditKeys correction_keys_;
  MapEditKeys airflow_keys_;
  Widgets w_;
};

}  // namespace nerit::ui
