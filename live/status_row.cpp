#include "live/status_row.h"

#include "link/cell_codec.h"
#include "shell/numbers.h"
#include "shell/quietly.h"

namespace nerit {

double vortex_hz(long period) {
  return period == 0 ? 0 : whole_part(double{kVortexTicks} / static_cast<double>(period));
}

LiveRow status_row(const StatusReply& s, const StatusScales& k, const LiveRow& previous) {
  const auto& W = s.W;
  LiveRow row;
  row.drehzahl = previous.drehzahl;
  quietly([&] {
    const double speed = whole_part(divide(k.rpmfaktor, static_cast<double>(W[4])));
    if (speed < 9000) row.drehzahl = speed;  // spikes are noise, not engine speed
  });
  row.inj_in_us = 4.0 * static_cast<double>(W[2]);
  row.inj_out_us = 4.0 * static_cast<double>(W[3]);
  row.adjust_percent = round_half_even(s.b(12) * 100.0 / 128 - 100);
  if (k.pressure) row.boost_kpa = (*k.pressure)[static_cast<std::size_t>(s.b(5))] - 100;
  row.tps_in = previous.tps_in;
  quietly(
      [&] { row.tps_in = whole_part((s.b(4) - k.tps_min) * divide(100, k.tps_max - k.tps_min)); });
  if (row.tps_in < 0) row.tps_in = 0;
  if (row.tps_in > 100) row.tps_in = 100;
  row.airflow_out_hz = vortex_hz(W[6]);
  return row;
}

}  // namespace nerit
