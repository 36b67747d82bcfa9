#include "shell/form4.h"

namespace nerit {

void Form4::Form_Load(int screen_width, int screen_height) {
  left = (screen_width - width) / 2;
  top = (screen_height - height) / 2;
  Timer1.set_enabled(true);
}

void Form4::Timer1_Timer() {
  Timer1.set_enabled(false);
  windows_.unload(FormId::Form4);
}

}  // namespace nerit
