#include "maps/map_axes.h"

#include "maps/load_axis.h"
#include "shell/numbers.h"
#include "shell/pressure_tables.h"

namespace nerit {

namespace {

LoadAxisInputs load_axis_inputs(const ProgramState& vars, int load_type) {
  LoadAxisInputs in;
  in.tps_min = vars.tps_min;
  in.tps_max = vars.tps_max;
  if (load_type == kLoadMap) {
    // Without a calibration the MAP axis is all zero; the base settings write the table.
    if (auto bytes = PressureFiles(vars.pfad).sensor()) in.pressure = std::move(*bytes);
  }
  return in;
}

}  // namespace

void MapAxes::Combo1_Click() {
  const int type = c_.Combo1.list_index;
  if (type < kLoadTps || type > kLoadAirflow) return;
  const LoadAxisInputs in = load_axis_inputs(vars_, type);
  Grid& g = c_.MSFlexGrid2;
  for (int k = 0; k < kMapSize; ++k) {
    g.set_current(k + 1, 0);
    g.set_text(k + 1, 0, number_text(default_load_heading(type, k, in)));
    c_.load_points[static_cast<std::size_t>(k + 1)] = load_point(type, k, g.text(k + 1, 0), in);
  }
  copy_load_axis();
}

void MapAxes::fill_load_points() {
  const int type = c_.Combo1.list_index;
  if (type < kLoadTps || type > kLoadAirflow) return;
  const LoadAxisInputs in = load_axis_inputs(vars_, type);
  for (int k = 0; k < kMapSize; ++k)
    c_.load_points[static_cast<std::size_t>(k + 1)] =
        load_point(type, k, c_.MSFlexGrid2.text(k + 1, 0), in);
}

void MapAxes::copy_load_axis() {
  for (int row = 1; row <= kMapSize; ++row)
    c_.MSFlexGrid3.set_text(row, 0, c_.MSFlexGrid2.text(row, 0));
}

void MapAxes::copy_rpm_axis() {
  for (int col = 1; col <= kMapSize; ++col)
    c_.MSFlexGrid3.set_text(0, col, c_.MSFlexGrid2.text(0, col));
}

bool MapAxes::toggle_heading_edit(int& fixed) {
  fixed ^= 1;
  const bool closed = fixed != 0;
  if (show_panels) show_panels(closed);
  return closed;
}

void MapAxes::Drehzahlpunkte_Click() {
  Grid& g = c_.MSFlexGrid2;
  if (!toggle_heading_edit(g.fixed_rows)) return;
  copy_rpm_axis();
  for (int col = 1; col <= kMapSize; ++col)
    c_.rpm_points[static_cast<std::size_t>(col)] =
        to_int32(whole_part(divide(vars_.rpmfaktor, val(g.text(0, col)))));
}

void MapAxes::Lastpunke_Click() {
  if (!toggle_heading_edit(c_.MSFlexGrid2.fixed_cols)) return;
  copy_load_axis();
  fill_load_points();
}

void MapAxes::Check6_MouseUp() {
  c_.MSFlexGrid2.enabled = c_.Check6.value == 1;
}

void MapAxes::Check4_MouseUp() {
  c_.MSFlexGrid3.enabled = c_.Check4.value == 1;
}

}  // namespace nerit
