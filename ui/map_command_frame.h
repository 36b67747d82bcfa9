#pragma once
// The map command frame (Frame6): a small panel of buttons floating over the maps, shown where
// the right mouse button went down while its model is visible.
#include <QFrame>
#include <QPoint>

#include "shell/controls.h"

class QPushButton;
class QVBoxLayout;

namespace nerit::ui {

class MapCommandFrame : public QFrame {
 public:
  MapCommandFrame(const Frame& model, QWidget* parent);
  // A button for the caller to bind; `small` for the buttons without an effect.
  QPushButton* add_button(bool small = false);
  // Where the frame goes the next time it shows, in global coordinates.
  void set_anchor(QPoint global) { anchor_ = global; }
  void refresh();

 private:
  const Frame& m_;
  QVBoxLayout* column_;
  QPoint anchor_;
};

}  // namespace nerit::ui
