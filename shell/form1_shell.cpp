#include "shell/form1_shell.h"

#include <string>

#include "shell/data_files.h"
#include "shell/numbers.h"

namespace nerit {

namespace {

constexpr int kAccelStart[6] = {2, 50, 10, 2, 50, 0};  // Filter, Menge, Dauer, Filter, Menge, Red.

void set_up_map_grid(Grid& g) {
  g.set_cols(17);
  g.set_rows(17);
  for (int col = 0; col <= kMapSize; ++col) g.set_col_width(col, 550);
  for (int row = 1; row <= kMapSize; ++row) g.set_text(row, 0, "--");
  for (int col = 1; col <= kMapSize; ++col) g.set_text(0, col, std::to_string(500 * col));
}

}  // namespace

void Form1Shell::Form_Load() {
  c_.List2.clear();
  for (const char* entry :
       {"Injektoradjust", "Airflow Fuelcut", "Boostcontrol", "Airflow Output", "Acceleration Fuel"})
    c_.List2.add_item(entry);

  for (int i = 0; i < 6; ++i) {
    c_.HScroll1[i].value = kAccelStart[i];
    c_.Label8[i].caption = std::to_string(kAccelStart[i]);
    c_.accel_param[i] = kAccelStart[i];
  }

  for (auto& frame : c_.Frame1) frame.visible = false;

  for (Grid* g : {&c_.MSFlexGrid2, &c_.MSFlexGrid3})
    for (int row = 1; row <= kMapSize; ++row)
      for (int col = 1; col <= kMapSize; ++col) g->set_text(row, col, "0");

  c_.boost_captions = {"Boost / kPa", "Boost / V", "Boost / Raw"};
  c_.tps_captions = {"TPS / %", "TPS / V", "TPS / Raw"};

  vars_.pfad = program_folder_;

  c_.caption_prefix = "Nerit: ";
  c_.caption = c_.caption_prefix;

  c_.Combo1.clear();
  for (const char* entry :
       {"TPS / %", "MAP / kPa abs.", "Analog #3 / mVolt", "Airflow Karmann Vortex / Hz"})
    c_.Combo1.add_item(entry);

  c_.Combo2.clear();
  c_.Combo2.add_item("Deaktivieren");
  for (int n = 1; n <= 32; ++n) c_.Combo2.add_item(std::to_string(n));
  c_.Combo2.text = "Debugport wählen....";

  c_.Combo3.enabled = false;
  c_.Label1.enabled = false;
  c_.Text1.enabled = false;
  c_.Combo3.clear();
  for (const char* entry : {"Deaktiviert", "Analog #1 / TPS", "Analog #2 / Map", "Analog #3",
                            "Analog #4", "Analog #5", "Analog #6", "Analog #7", "Analog #8"})
    c_.Combo3.add_item(entry);

  c_.menus.lstart.enabled = false;
  c_.menus.lstop.enabled = false;

  Grid& live = c_.MSFlexGrid1;
  live.set_cols(2);
  live.set_rows(10);
  live.set_col_width(0, 1200);
  live.set_col_width(1, 750);
  const char* rows[] = {"Unit",        "Drehzahl", "INJ In / µs", "INJ Out / µs", "INJ Adj. / %",
                        "Boost / kPa", "TPS / %",  "Airflow",     "Analog 3 / V", "Airflow in"};
  for (int row = 0; row < 10; ++row) live.set_text(row, 0, rows[row]);
  live.set_text(0, 1, "Value");

  set_up_map_grid(c_.MSFlexGrid2);
  set_up_map_grid(c_.MSFlexGrid3);

  c_.Label4[0].caption = "offline";
  c_.Label4[0].back_color = kRed;
  c_.Label4[1].caption = "-";
  c_.Label4[2].caption = "-";
}

void Form1Shell::Form_Activate() {
  vars_.pfad = program_folder_;
  load_pressure_raw();
  fill_rpm_points();
}

void Form1Shell::load_pressure_raw() {
  // A missing table is no error: every entry keeps its value (all zero at start).
  const auto bytes = read_file_bytes(data_file(vars_.pfad, "\\Pressure.raw"));
  if (!bytes) return;
  for (std::size_t i = 0; i < 256 && 2 * i + 1 < bytes->size(); ++i) {
    const auto lo = static_cast<std::uint16_t>((*bytes)[2 * i]);
    const auto hi = static_cast<std::uint16_t>((*bytes)[2 * i + 1]);
    c_.pressure_table[i] = static_cast<std::int16_t>(static_cast<std::uint16_t>(lo | (hi << 8)));
  }
}

void Form1Shell::fill_rpm_points() {
  for (int i = 1; i <= kMapSize; ++i)
    c_.rpm_points[static_cast<std::size_t>(i)] =
        to_int32(divide(vars_.rpmfaktor, val(c_.MSFlexGrid2.text(0, i))));
}

void Form1Shell::reload_pressure() {
  const auto bytes = read_file_bytes(data_file(vars_.pfad, "\\PressureSensor.dat"));
  if (!bytes) return;
  // Rising positions: where several pressures share a raw byte the highest pressure wins.
  for (std::size_t i = 0; i < bytes->size(); ++i)
    c_.pressure_table[(*bytes)[i]] = to_int16(static_cast<double>(i));
}

void Form1Shell::Grundeinstellungen_Click() {
  if (vars_.connected == 0)
    platform_.dialogs.message_box(kOfflineNote, MsgButtons::Ok, MsgIcon::Information);
  platform_.windows.show(FormId::Form3);
}

void Form1Shell::Form_Unload() {
  for (FormId form : {FormId::Form2, FormId::Form3, FormId::Form4, FormId::Form5})
    platform_.windows.unload(form);
  platform_.windows.end_program();
}

}  // namespace nerit
