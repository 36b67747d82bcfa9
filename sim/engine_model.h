#pragma once
// A small engine driven round a repeating cycle: idle, two free revs, a part-throttle cruise,
// a full-throttle pull into boost, lift-off into overrun and back to idle. Every value is a
// smooth function of time alone, so consecutive frames never jump and a held time always gives
// the same engine.
namespace nerit::sim {

inline constexpr double kDriveCycleMs = 36000;

struct EngineState {
  double rpm = 0;
  double throttle_percent = 0;
  double map_kpa = 0;
  double injector_in_us = 0;  // the factory computer's pulse
  double airflow_hz = 0;      // the airflow sensor's vortex frequency
  double analog3_volts = 0;
};

// The engine at t_ms of the cycle; it repeats every kDriveCycleMs, before 0 too.
EngineState engine_state_at(double t_ms);

}  // namespace nerit::sim
