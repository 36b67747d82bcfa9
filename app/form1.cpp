#include "app/form1.h"

namespace nerit {

Form1::Form1(Platform& p, std::filesystem::path program_folder)
    : platform(p), shell(c, vars, p, std::move(program_folder)), panels(c) {
  for (Timer* t : {&c.Timer1, &c.Timer2, &c.Timer3, &c.Timer4, &c.Timer5}) t->attach(&p.timers);
}

Program::Program(Platform& platform, std::filesystem::path program_folder)
    : form1(platform, std::move(program_folder)), form4(platform.windows) {
  form4.Timer1.on_tick = [this] { form4.Timer1_Timer(); };
  form4.Timer1.attach(&platform.timers);
}

}  // namespace nerit
