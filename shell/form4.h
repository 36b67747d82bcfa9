#pragma once
// The splash window: centred on the screen before the main window, closed by its own timer.
#include "shell/controls.h"
#include "shell/platform.h"

namespace nerit {

class Form4 {
 public:
  explicit Form4(WindowHost& windows) : windows_(windows) {}

  // Screen size in twips.
  void Form_Load(int screen_width, int screen_height);
  void Timer1_Timer();

  int left = 0, top = 0;
  int width = 6300, height = 3600;  // twips
  static constexpr int kShowMs = 1500;

  Timer Timer1{kShowMs};  // runs from the load on

 private:
  WindowHost& windows_;
};

}  // namespace nerit
