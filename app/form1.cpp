#include "app/form1.h"

namespace nerit {

Form1::Form1(Platform& p, std::filesystem::path program_folder)
    : platform(p),
      shell(c, vars, p, std::move(program_folder)),
      session(c, vars, link, p),
      dispatcher(c, vars, link, p),
      transfers(c, vars, link, p, session),
      panels(c),
      axes(c, vars),
      map_writer(c, vars, link, session),
      editor(c, vars, maps, map_writer, map_history),
      edits(vars, maps, editor, map_writer, map_history),
      block_commands(c, maps, editor, map_history, p.windows),
      automap(c, maps) {
  c.Timer1.on_tick = [this] { session.Timer1_Timer(); };
  c.Timer2.on_tick = [this] { session.Timer2_Timer(); };
  c.Timer3.on_tick = [this] { session.Timer3_Timer(); };
  c.Timer5.on_tick = [this] { session.Timer5_Timer(); };
  for (Timer* t : {&c.Timer1, &c.Timer2, &c.Timer3, &c.Timer4, &c.Timer5}) t->attach(&p.timers);
  p.comm.on_comm = [this] { dispatcher.MSComm1_OnComm(); };
  dispatcher.hooks.automap = [this](double speed, double load, double value) {
    automap.automap(speed, load, value);
  };
  dispatcher.hooks.highlight = [this](int row, int col) { automap.highlight(row, col); };
  dispatcher.hooks.load_type_changed = [this] { axes.Combo1_Click(); };
}

Program::Program(Platform& platform, std::filesystem::path program_folder)
    : form1(platform, std::move(program_folder)),
      form4(platform.windows),
      form5(form1.c.MSFlexGrid2) {
  form4.Timer1.on_tick = [this] { form4.Timer1_Timer(); };
  form4.Timer1.attach(&platform.timers);
}

}  // namespace nerit
