#include "setup/form3.h"

#include "live/panel_controls.h"

namespace nerit {

Form3::Form3(Platform& platform, ProgramState& vars, Form1Shell& shell, Wire& wire,
             const Slider& slider)
    : pressure(c, vars, platform, shell),
      wizard(c, vars, platform),
      throttle(c, vars, platform),
      injectors(c, vars, platform, shell, wire, slider),
      p_(platform) {
  Timer1.on_tick = [this] { throttle.Timer1_Timer(); };
  Timer1.attach(&platform.timers);
}

void Form3::Form_Load() {
  c = Form3Controls{};
  pressure.load();
  throttle.load();
  injectors.load();
  Timer1.set_enabled(true);
}

void Form3::Form_Unload() {
  Timer1.set_enabled(false);
  injectors.apply(false);
}

void Form3::Command3_Click() {
  p_.dialogs.message_box(kMakePermanentReminder, MsgButtons::Ok, MsgIcon::None);
  p_.windows.unload(FormId::Form3);
}

}  // namespace nerit
