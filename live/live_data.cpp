#include "live/live_data.h"

#include "shell/numbers.h"

namespace nerit {

void LiveData::Form_Load() {
  Grid& live = lc_.MSFlexGrid1;
  live.set_cols(2);
  live.set_rows(10);
  live.set_col_width(0, 1200);
  live.set_col_width(1, 750);
  const char* rows[] = {"Unit",        "Drehzahl", "INJ In / µs", "INJ Out / µs", "INJ Adj. / %",
                        "Boost / kPa", "TPS / %",  "Airflow",     "Analog 3 / V", "Airflow in"};
  for (int row = 0; row < 10; ++row) live.set_text(row, 0, rows[row]);
  live.set_text(0, 1, "Value");
}

void LiveData::load_captions() {
  lc_.boost_captions = {"Boost / kPa", "Boost / V", "Boost / Raw"};
  lc_.tps_captions = {"TPS / %", "TPS / V", "TPS / Raw"};
}

LiveValues LiveData::status(const StatusReply& s) {
  LiveValues v;
  LiveRow previous;
  previous.drehzahl = vars_.drehzahl;
  previous.tps_in = vars_.tps_in;
  v.row = status_row(s, {vars_.rpmfaktor, vars_.tps_min, vars_.tps_max, &c_.pressure_table},
                     previous);
  vars_.drehzahl = v.row.drehzahl;
  vars_.tps_in = v.row.tps_in;

  const char sep = p_.decimal_separator();
  vars_.map_volt = format_0_00(s.b(5) * 5.0 / 255, sep);
  v.map_raw = s.b(5);
  vars_.tps_raw = s.b(4);
  vars_.tps_in_volt = format_0_00(s.b(4) * 5.0 / 255, sep);

  v.analog_volts = s.b(16) * 5.0 / 255;
  v.analog_mv = whole_part(s.b(16) * 5000.0 / 255);
  v.airflow_in_hz = vortex_hz(s.W[8]);
  v.cell_index = s.b(13);
  return v;
}

void LiveData::show(const LiveValues& v) {
  Grid& g = lc_.MSFlexGrid1;
  auto put = [&g](int r, std::string text) {
    g.set_current(r, 1);
    g.set_text(r, 1, std::move(text));
  };
  const char sep = p_.decimal_separator();
  put(1, number_text(v.row.drehzahl));
  put(2, number_text(v.row.inj_in_us));
  put(3, number_text(v.row.inj_out_us));
  put(4, number_text(v.row.adjust_percent));
  switch (lc_.boost_display) {
    case 2:
      put(5, vars_.map_volt);
      break;
    case 3:
      put(5, number_text(v.map_raw));
      break;
    default:
      put(5, number_text(v.row.boost_kpa));
      break;
  }
  put(6, number_text(v.row.tps_in));
  put(7, number_text(v.row.airflow_out_hz));
  put(8, c_.Combo1.list_index == 2 ? format_0_00(v.analog_volts, sep) : "--");
  put(9, number_text(v.airflow_in_hz));
}

}  // namespace nerit
