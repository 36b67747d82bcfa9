#pragma once
// The base-settings window (Form3) on screen: the pressure sensor with its table and wizard on
// the left; throttle, cylinders, injector channels and injectors on the right; "Close" below.
#include <QWidget>
#include <array>

#include "setup/form3.h"
#include "ui/bindings.h"

class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QComboBox;

namespace nerit::ui {

class Form3Window : public QWidget {
 public:
  // Runs the window's load through `run`.
  Form3Window(Form3& form, HandlerRunner run);
  // The program calls it after every handler, with the main window's.
  void refresh();

  // For tests and screenshots.
  struct Widgets {
    QGroupBox* pressure_frame = nullptr;
    QComboBox* Combo1 = nullptr;
    std::array<QLineEdit*, 3> Text1{};
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command4 = nullptr;
    QListWidget* List1 = nullptr;
    QGroupBox* wizard_frame = nullptr;
    std::array<QRadioButton*, 2> Option2{};
    QLineEdit* Text3 = nullptr;
    std::array<QLineEdit*, 2> Text4{};
    QPushButton* Command5 = nullptr;
    QPushButton* Command7 = nullptr;

    QGroupBox* throttle_frame = nullptr;
    std::array<QPushButton*, 2> Command6{};
    std::array<QLabel*, 2> end_value{};
    std::array<QLabel*, 2> end_volt{};
    QLabel* live_value = nullptr;
    QLabel* live_volt = nullptr;
    QLabel* live_percent = nullptr;

    QGroupBox* cylinder_frame = nullptr;
    std::array<QRadioButton*, 3> Option1{};
    QGroupBox* channel_frame = nullptr;
    QComboBox* Combo2 = nullptr;
    QComboBox* Combo3 = nullptr;
    QGroupBox* injector_frame = nullptr;
    std::array<QLineEdit*, 4> Text2{};

    QPushButton* Command3 = nullptr;
  };
  const Widgets& widgets() const { return w_; }

 private:
  QGroupBox* build_pressure();
  QGroupBox* build_wizard(QWidget* parent);
  QGroupBox* build_throttle();
  QGroupBox* build_cylinders();
  QGroupBox* build_channels();
  QGroupBox* build_injectors();

  QGroupBox* add_frame(const Frame& m, const QString& control);
  QLabel* add_label(QWidget* parent, const Label& m, const QString& name, const QString& control);
  QPushButton* add_button(QWidget* parent, const CommandButton& m, const QString& control,
                          Handler click);
  // A line edit whose keys pass the core's KeyPress handler first.
  QLineEdit* add_field(QWidget* parent, TextBox& m, const QString& name, const QString& control,
                       std::function<int(int)> key_press = {}, Handler change = {});

  Form3& f_;
  HandlerRunner run_;
  Bindings bind_;
  Widgets w_;
};

}  // namespace nerit::ui
