#pragma once
// The map command frame (Frame6): a small panel of buttons floating over the maps, shown at
// the position its model gives while the model is visible.
#include <QFrame>
#include <QPoint>
#include <functional>

#include "shell/controls.h"

class QPushButton;
class QVBoxLayout;

namespace nerit::ui {

class MapCommandFrame : public QFrame {
 public:
  // `position` turns the model's position into one in the parent's coordinates.
  MapCommandFrame(const Frame& model, QWidget* parent,
                  std::function<QPoint(const Frame&)> position);
  // A button for the caller to bind; `small` for the buttons without an effect.
  QPushButton* add_button(bool small = false);
  void refresh();

 private:
  const Frame& m_;
  QVBoxLayout* column_;
  std::function<QPoint(const Frame&)> position_;
};

}  // namespace nerit::ui
