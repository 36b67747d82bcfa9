#include "sim/status_frame.h"

#include <algorithm>
#include <cmath>

#include "sim/frames.h"
#include "sim/memory_map.h"
#include "sim/operating_point.h"
#include "sim/sensors.h"

namespace nerit::sim {

namespace {

std::uint16_t ticks_of(double us) {
  return static_cast<std::uint16_t>(std::clamp(std::round(us / 4), 0.0, 65535.0));
}

int load_value(const Status& s, std::uint8_t load_type) {
  switch (load_type) {
    case 0:
      return s.throttle_raw;
    case 2:
      return s.analog3_raw;
    case 3:
      return 32762 - s.airflow_in;  // the program's airflow load points
    default:
      return s.map_raw;
  }
}

// Total correction in percent: the map cell when the map is active, plus the manual slider.
double correction_percent(const MemoryWindow& ram, std::uint32_t cell_address,
                          std::uint8_t manual_adjust) {
  double percent = (manual_adjust - 128) * 100.0 / 128;
  if (ram.at(kBlockB + block_b::kMapFlags) & kCorrectionMapActive) {
    percent += (ram.at(cell_address) - 128) / 1.27;
  }
  return percent;
}

void put_word(ReplyData& d, int offset, std::uint16_t w) {
  d[offset - 2] = static_cast<std::uint8_t>(w & 0xFF);
  d[offset - 1] = static_cast<std::uint8_t>(w >> 8);
}

}  // namespace

Status compute_status(const EngineState& engine, const MemoryWindow& ram,
                      std::uint8_t manual_adjust) {
  Status s;
  s.throttle_raw = throttle_sensor_raw(engine.throttle_percent);
  s.map_raw = map_sensor_raw(engine.map_kpa);
  s.analog3_raw = analog_raw(engine.analog3_volts);
  s.airflow_in = vortex_period(engine.airflow_hz);
  s.speed_period = speed_period(rpm_factor(ram.at(kBlockB + block_b::kCylinders)), engine.rpm);

  const int row = nearest_load_row(ram, load_value(s, ram.at(kBlockA + block_a::kLoadType)));
  const int column = nearest_speed_column(ram, s.speed_period);
  s.cell = static_cast<std::uint8_t>(row * 16 + (column & 15));

  const double percent =
      correction_percent(ram, kCorrectionMap + row * 16 + (column - 1), manual_adjust);
  s.adjust =
      static_cast<std::uint8_t>(std::clamp(std::round(percent * 128 / 100 + 128), 0.0, 255.0));

  const double offset_in = ram.word(kBlockA + block_a::kOffsetIn);
  const double offset_out = ram.word(kBlockA + block_a::kOffsetOut);
  const double size_ratio = ram.at(kBlockA + block_a::kInjSizeCorr) / 128.0;
  const double open_us = std::max(0.0, engine.injector_in_us - offset_in);
  s.injector_out_us = std::max(0.0, open_us * size_ratio * (1 + percent / 100) + offset_out);
  s.injector_in = ticks_of(engine.injector_in_us);
  s.injector_out = ticks_of(s.injector_out_us);

  // An inactive airflow map passes the sensor's signal through.
  s.airflow_out = (ram.at(kBlockB + block_b::kMapFlags) & kAirflowMapActive)
                      ? ram.word(kAirflowMap + row * 32 + (column - 1) * 2)
                      : s.airflow_in;
  return s;
}

std::string status_frame(const Status& s) {
  ReplyData d{};
  d[4 - 2] = s.throttle_raw;
  d[5 - 2] = s.map_raw;
  put_word(d, 6, s.injector_in);
  put_word(d, 8, s.injector_out);
  put_word(d, 10, s.speed_period);
  d[12 - 2] = s.adjust;
  d[13 - 2] = s.cell;
  put_word(d, 14, s.airflow_out);
  d[16 - 2] = s.analog3_raw;
  put_word(d, 18, s.airflow_in);
  return reply_frame(reply::kStatus, d);
}

std::string debug_line(const EngineState& engine, const Status& s, const MemoryWindow& ram) {
  const int tps_min = ram.at(kBlockA + block_a::kTpsMin);
  const int tps_max = ram.at(kBlockA + block_a::kTpsMax);
  int tps = 0;
  if (tps_max != tps_min) tps = (s.throttle_raw - tps_min) * 100 / (tps_max - tps_min);
  tps = std::clamp(tps, 0, 100);
  return "RPM " + std::to_string(static_cast<int>(engine.rpm)) + " TPS " + std::to_string(tps) +
         " MAP " + std::to_string(static_cast<int>(engine.map_kpa)) + " INJ " +
         std::to_string(static_cast<int>(s.injector_out_us));
}

}  // namespace nerit::sim
