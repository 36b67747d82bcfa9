#include "sim/engine_model.h"

#include <cmath>
#include <numbers>

#include "sim/sensors.h"

namespace nerit::sim {

namespace {

// 0 at idle, 1 at the top of the sweep.
double sweep(double t_ms) {
  return 0.5 - 0.5 * std::cos(2 * std::numbers::pi * t_ms / kSweepPeriodMs);
}

}  // namespace

EngineState engine_state_at(double t_ms) {
  EngineState e;
  e.rpm = 800 + 5700 * sweep(t_ms);
  e.throttle_percent = 3 + 92 * sweep(t_ms + 300);
  e.map_kpa = 30 + 170 * sweep(t_ms - 200);
  e.injector_in_us = 1800 + 40 * (e.map_kpa - 30);
  e.airflow_hz = airflow_hz(e.rpm, (e.map_kpa - 20) / 230);
  e.analog3_volts = 0.8 + 3.0 * sweep(t_ms - 400);
  return e;
}

}  // namespace nerit::sim
