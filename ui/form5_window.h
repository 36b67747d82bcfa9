#pragma once
// The graph window (Form5) on screen: the correction map as a 3-D surface that turns and
// zooms with the mouse, and the two buttons that read the map again.
#include <QWidget>

#include "maps/form5.h"
#include "ui/bindings.h"

class QLabel;
class QPushButton;
class Q3DSurface;

namespace nerit::ui {

// True when this display can give the surface an OpenGL context. Q3DSurface cannot run
// without one, so nothing creates one without asking here first. The offscreen platform
// never counts: nothing it draws reaches a screen.
bool opengl_available();

inline constexpr const char* kNoGraphText =
    "3-D graph not available: this display offers no OpenGL.";

class Form5Window : public QWidget {
 public:
  // Runs the window's load through `run`.
  Form5Window(Form5& form, HandlerRunner run);
  // The program calls it after every handler, with the main window's.
  void refresh();

  // For tests and screenshots.
  Q3DSurface* graph() const { return graph_; }  // null without OpenGL
  QLabel* notice() const { return notice_; }    // null with OpenGL
  QPushButton* Command1 = nullptr;
  QPushButton* Command2 = nullptr;

 private:
  QWidget* build_graph();
  void show_surface();
  void reset_camera();

  Form5& f_;
  Bindings bind_;
  Q3DSurface* graph_ = nullptr;
  QLabel* notice_ = nullptr;
  unsigned shown_revision_ = 0;
  unsigned shown_camera_resets_ = 0;
};

}  // namespace nerit::ui
