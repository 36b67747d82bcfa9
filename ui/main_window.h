#pragma once
// The main window (Form1) on screen: menus, link bar, both maps, live values, tuning panels
// and the log, each widget bound to its control model.
#include <QMainWindow>
#include <array>
#include <map>
#include <string>

#include "app/form1.h"
#include "ui/bindings.h"

class QListWidget;
class QComboBox;
class QLabel;
class QPushButton;
class QGroupBox;

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
    GridView* MSFlexGrid2 = nullptr;
    GridView* MSFlexGrid3 = nullptr;
    std::array<QGroupBox*, kPanelCount> Frame1{};
    std::map<std::string, QAction*> menu;  // by caption
  };
  const Widgets& widgets() const { return w_; }

  // Runs when the user closes the window.
  std::function<void()> on_close;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* build_link_bar();
  QWidget* build_maps();
  QWidget* build_live();
  QWidget* build_panels();
  void build_menus();
  QAction* add_menu_item(QMenu* menu, const MenuItem& m, Handler click = {});

  Form1& f_;
  Bindings bind_;
  Widgets w_;
  std::string shown_caption_;
};

}  // namespace nerit::ui
