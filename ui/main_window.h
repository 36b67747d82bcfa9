#pragma once
// The main window (Form1) on screen: menus, link bar, both maps, live values and chart, tuning
// panels, the log and the data log's status, each widget bound to its control model.
#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <array>
#include <map>
#include <string>

#include "app/form1.h"
#include "ui/bindings.h"
#include "ui/cell_editor_box.h"
#include "ui/compare_dialog.h"
#include "ui/live_chart_view.h"
#include "ui/map_command_frame.h"
#include "ui/map_edit_keys.h"
#include "ui/map_grid_view.h"

class QListWidget;
class QComboBox;
class QLabel;
class QPushButton;
class QGroupBox;
class QSplitter;
class QStackedWidget;

namespace nerit::ui {

class MainWindow : public QMainWindow {
 public:
  MainWindow(Form1& form, HandlerRunner run, QWidget* parent = nullptr);
  // True when something waits for a later refresh (see Bindings::refresh).
  bool refresh(bool paced = false);

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
    LiveChartView* chart = nullptr;
    std::array<QCheckBox*, kChartCount> chart_channel{};
    std::array<QGroupBox*, kPanelCount> Frame1{};
    QStackedWidget* panel_stack = nullptr;
    // Manual injector adjust
    QSlider* Slider1 = nullptr;
    QLabel* Label6 = nullptr;
    // Airflow fuel cut
    QLabel* fuelcut_note = nullptr;
    // Boost control
    QCheckBox* Check3 = nullptr;
    QLineEdit* boost_start_text = nullptr;
    QLineEdit* boost_set_text = nullptr;
    QComboBox* Combo4 = nullptr;
    QGroupBox* solenoid_frame = nullptr;
    QRadioButton* solenoid_isc = nullptr;
    QRadioButton* solenoid_injector6 = nullptr;
    QPushButton* Command7 = nullptr;
    // Airflow output
    QRadioButton* OptionFrequency = nullptr;
    QRadioButton* OptionAnalog = nullptr;
    QLineEdit* Text1 = nullptr;
    QPushButton* Command6 = nullptr;
    // Acceleration fuel
    QGroupBox* throttle_frame = nullptr;
    QGroupBox* map_frame = nullptr;
    std::array<QScrollBar*, 6> HScroll1{};
    std::array<QLabel*, 6> Label8{};
    std::map<std::string, QAction*> menu;  // by caption
    QLabel* data_log_status = nullptr;     // in the status bar
  };
  const Widgets& widgets() const { return w_; }

  // Runs when the user closes the window.
  std::function<void()> on_close;

  // The comparison window opened last, while it is open.
  CompareDialog* comparison() const { return comparison_; }

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QPointer<CompareDialog> comparison_;
  QWidget* build_link_bar();
  QWidget* build_maps();                             // main_window_maps.cpp
  QGroupBox* build_map(QWidget* parent, MapId map);  // main_window_maps.cpp
  void build_map_commands();                         // main_window_maps.cpp
  // Where Frame6 goes: the position the model gives, on the grid it was computed for.
  QPoint command_frame_position(const Frame& m) const;
  QWidget* build_live();    // main_window_live.cpp
  QWidget* build_panels();  // main_window_panels.cpp, as are the panels:
  void build_injector_panel(QGroupBox* frame);
  void build_fuelcut_panel(QGroupBox* frame);
  void build_boost_panel(QGroupBox* frame);
  void build_airflow_panel(QGroupBox* frame);
  void build_acceleration_panel(QGroupBox* frame);
  QLabel* add_label(QWidget* parent, const Label& m, const QString& control);
  QPushButton* add_button(QWidget* parent, const CommandButton& m, const QString& control,
                          Handler click);
  void build_status_bar();
  void show_data_log_status();
  void build_menus();
  QAction* add_menu_item(QMenu* menu, const MenuItem& m, const char* control, Handler click = {});

  Form1& f_;
  HandlerRunner run_;
  Bindings bind_;
  MapEditKeys correction_keys_;
  MapEditKeys airflow_keys_;
  Widgets w_;
  QSplitter* split_ = nullptr;  // maps above, live values, panels and log below
  bool split_sized_ = false;
  QTimer data_log_clock_;  // the recording's elapsed time moves between handler runs
};

}  // namespace nerit::ui
