#pragma once
// Ties widgets to the control models. Refreshing copies every model into its widget (only
// what changed); user input writes into the model first and then runs the control's handler.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <functional>
#include <vector>

#include "shell/controls.h"
#include "ui/grid_view.h"
#include "ui/qt_platform.h"

namespace nerit::ui {

using Handler = std::function<void()>;

class Bindings {
 public:
  explicit Bindings(HandlerRunner run) : run_(std::move(run)) {}

  // The back colour shows only on a label that fills its background.
  void label(QLabel* w, const Label& m);
  void button(QPushButton* w, const CommandButton& m, Handler click = {});
  void check(QCheckBox* w, CheckBox& m, Handler click = {});
  void combo(QComboBox* w, ComboBox& m, Handler click = {});
  void list(QListWidget* w, ListBox& m, Handler click = {});
  void frame(QGroupBox* w, const Frame& m);
  void menu(QAction* w, const MenuItem& m, Handler click = {});
  // Option buttons of one group: a click sets the button and clears the others, then runs the
  // handler.
  void option(QRadioButton* w, OptionButton& m, std::vector<OptionButton*> group,
              Handler click = {});
  // What the user types goes into the model, then `change` runs.
  void text(QLineEdit* w, TextBox& m, Handler change = {});
  // Each step of a drag runs `scroll`; a new value from keys, wheel or clicks on the track runs
  // `change`, and so does the end of a drag that moved the value.
  void scroll(QScrollBar* w, ScrollBar& m, Handler scroll = {}, Handler change = {});
  void slider(QSlider* w, Slider& m, Handler scroll = {}, Handler change = {});
  void grid(GridView* w);
  void custom(std::function<void()> refresher) { refreshers_.push_back(std::move(refresher)); }

  // Copies the models into the widgets. Paced (the controller's stream, not the user), a log
  // that grows shows its new lines at most every kLogPaceMs; the call then returns true and
  // wants to be repeated a little later.
  bool refresh(bool paced = false);

  static constexpr int kLogPaceMs = 250;

 private:
  void on_user(Handler h);
  template <class Model>
  void range(QAbstractSlider* w, Model& m, Handler scroll, Handler change);
  HandlerRunner run_;
  std::vector<std::function<void()>> refreshers_;
  bool paced_ = false;     // the refresh running is paced
  bool deferred_ = false;  // a binding left something for a later refresh
};

}  // namespace nerit::ui
