#include "shell/form1_shell.h"

#include <string>

#include "shell/numbers.h"
#include "shell/pressure_tables.h"

namespace nerit {

namespace {

void set_up_map_grid(Grid& g) {
  g.set_cols(17);
  g.set_rows(17);
  for (int col = 0; col <= kMapSize; ++col) g.set_col_width(col, 550);
  for (int row = 1; row <= kMapSize; ++row) g.set_text(row, 0, "--");
  for (int col = 1; col <= kMapSize; ++col) g.set_text(0, col, std::to_string(500 * col));
}

}  // namespace

void Form1Shell::load_map_grids() {
  for (Grid* g : {&c_.MSFlexGrid2, &c_.MSFlexGrid3})
    for (int row = 1; row <= kMapSize; ++row)
      for (int col = 1; col <= kMapSize; ++col) g->set_text(row, col, "0");
}

void Form1Shell::load_window() {
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
}

void Form1Shell::load_menus() {
  c_.menus.lstart.enabled = false;
  c_.menus.lstop.enabled = false;
}

void Form1Shell::load_axes_and_labels() {
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
  if (const auto bytes = PressureFiles(vars_.pfad).raw())
    read_pressure_raw(*bytes, c_.pressure_table);
}

void Form1Shell::fill_rpm_points() {
  for (int i = 1; i <= kMapSize; ++i)
    c_.rpm_points[static_cast<std::size_t>(i)] =
        to_int32(divide(vars_.rpmfaktor, val(c_.MSFlexGrid2.text(0, i))));
}

void Form1Shell::reload_pressure() {
  if (const auto bytes = PressureFiles(vars_.pfad).sensor())
    read_pressure_sensor(*bytes, c_.pressure_table);
}

void Form1Shell::Grundeinstellungen_Click() {
  if (vars_.connected == 0)
    platform_.dialogs.message_box(kOfflineNote, MsgButtons::Ok, MsgIcon::Information);
  platform_.windows.show(FormId::Form3);
}

void Form1Shell::Form_Unload() {
  if (on_unload) on_unload();
  for (FormId form : {FormId::Form2, FormId::Form3, FormId::Form4, FormId::Form5})
    platform_.windows.unload(form);
  platform_.windows.end_program();
}

}  // namespace nerit
