#pragma once
// The firmware window (Form2) on screen: the image, the two ways to start, the progress and the
// loader's status.
#include <QWidget>

#include "firmware/form2.h"
#include "ui/bindings.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace nerit::ui {

class Form2Window : public QWidget {
 public:
  // Runs the window's load through `run`.
  Form2Window(Form2& form, HandlerRunner run);
  // The program calls it after every handler, with the main window's; during a transfer at the
  // display's pace.
  void refresh();

  struct Widgets {
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command5 = nullptr;
    QPushButton* Command4 = nullptr;
    QPushButton* Command3 = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QLabel* Label1 = nullptr;
    QLabel* Label2 = nullptr;
    QLabel* Label3 = nullptr;
    QLabel* file_label = nullptr;
  };
  const Widgets& widgets() const { return w_; }

 private:
  QPushButton* add_button(const CommandButton& m, const QString& control, Handler click);
  QLabel* add_label(const Label& m, const QString& name, const QString& control);

  Form2& f_;
  Bindings bind_;
  Widgets w_;
};

}  // namespace nerit::ui
