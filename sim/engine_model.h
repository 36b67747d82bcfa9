#pragma once
// A small engine that sweeps slowly between idle and 6500 rpm and back, throttle leading and
// manifold pressure lagging the speed, so every live value moves smoothly.
namespace nerit::sim {

inline constexpr double kSweepPeriodMs = 20000;

struct EngineState {
  double rpm = 0;
  double throttle_percent = 0;
  double map_kpa = 0;
  double injector_in_us = 0;  // the factory computer's pulse
  double airflow_hz = 0;      // the airflow sensor's vortex frequency
  double analog3_volts = 0;
};

EngineState engine_state_at(double t_ms);

}  // namespace nerit::sim
