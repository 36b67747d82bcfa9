#include "app/form1.h"

namespace nerit {

Form1::Form1(Platform& p, std::filesystem::path program_folder)
    : platform(p),
      wire(c.List1, link, p),
      shell(c, vars, p, std::move(program_folder)),
      session(c, vars, link, p, wire),
      dispatcher(c, vars, link, p, wire),
      transfers(c, vars, p, wire),
      live(live_controls, c, vars, p),
      stream(c, live_controls, chart, vars, wire),
      settings_panels(panel_controls, c, vars),
      panels(panel_controls),
      acceleration_fuel(panel_controls, c, vars, wire),
      boost(panel_controls, c, vars, p, wire),
      airflow(panel_controls, vars, p, wire),
      injector(panel_controls, c, vars, wire),
      data_log(c, vars, p),
      settings_file(c, panel_controls, vars, p),
      compare_file(c, vars, p),
      restore_points(c, vars, p),
      axes(c, vars),
      map_blocks(c, vars),
      map_writer(c, vars, wire),
      editor(c, map_controls, vars, maps, map_writer, map_history),
      edits(vars, maps, editor, map_writer, map_history),
      block_commands(c, map_controls, maps, editor, map_history, p.windows),
      automap(c, map_controls, vars, maps),
      replies(c, map_controls, live, settings_panels, axes, map_blocks, automap) {
  c.Timer1.on_tick = [this] { session.Timer1_Timer(); };
  c.Timer2.on_tick = [this] { session.Timer2_Timer(); };
  c.Timer3.on_tick = [this] { session.Timer3_Timer(); };
  c.Timer5.on_tick = [this] { session.Timer5_Timer(); };
  for (Timer* t : {&c.Timer1, &c.Timer2, &c.Timer3, &c.Timer4, &c.Timer5}) t->attach(&p.timers);
  p.comm.on_comm = [this] { dispatcher.MSComm1_OnComm(); };
  p.comm.on_closed = [this](const std::string& why) { session.MSComm1_Closed(why); };
  dispatcher.sink = &replies;
  axes.show_panels = [this](bool visible) { settings_panels.show_all(visible); };
  replies.live_row = [this](const LiveRow& row) { take_live_row(row); };
  shell.on_unload = [this] { data_log.close(); };
  wire_files();
}

void Form1::wire_files() {
  settings_file.run_load_type = [this] { axes.Combo1_Click(); };
  settings_file.accel_changed = [this](std::size_t bar) { acceleration_fuel.HScroll1_Change(bar); };
  settings_file.map_boxes_changed = [this] {
    axes.Check6_MouseUp();
    axes.Check4_MouseUp();
  };
  settings_file.used = [this](const std::filesystem::path& file) { recent_files.add(file); };
  recent_files.open = [this](const std::filesystem::path& file) { settings_file.load(file); };
  session.read_done = [this] { restore_points.remember_read(); };
  transfers.before_write = [this](const std::string& action) {
    restore_points.before_write(action);
  };
}

void Form1::take_live_row(const LiveRow& r) {
  data_log.write_row({r.drehzahl, r.inj_in_us, r.inj_out_us, r.adjust_percent, r.boost_kpa,
                      r.tps_in, r.airflow_out_hz});
  chart.add(platform.clock.milliseconds(), {r.drehzahl, r.inj_out_us, r.boost_kpa, r.tps_in});
}

void Form1::Form_Load() {
  settings_panels.load_panels();
  shell.load_map_grids();
  live.load_captions();
  shell.load_window();
  recent_files.load(vars.pfad);
  settings_panels.load_airflow_input();
  boost.load();
  shell.load_menus();
  live.Form_Load();
  shell.load_axes_and_labels();
}

Program::Program(Platform& platform, std::filesystem::path program_folder)
    : form1(platform, std::move(program_folder)),
      form2(platform, form1.vars),
      form3(platform, form1.vars, form1.shell, form1.wire, form1.panel_controls.Slider1),
      form4(platform.windows),
      form5(form1.c.MSFlexGrid2) {
  form4.Timer1.on_tick = [this] { form4.Timer1_Timer(); };
  form4.Timer1.attach(&platform.timers);
  platform.windows.unload_handlers[FormId::Form2] = [this] { form2.Form_Unload(); };
  platform.windows.unload_handlers[FormId::Form3] = [this] { form3.Form_Unload(); };
  form2.before_update = [this] { form1.restore_points.before_firmware(); };
}

Program::~Program() {
  form1.platform.windows.unload_handlers.erase(FormId::Form2);
  form1.platform.windows.unload_handlers.erase(FormId::Form3);
}

}  // namespace nerit
