#pragma once
// How the engine's physical values look to the controller: raw 8-bit analogue readings,
// vortex periods in 4 us ticks and speed periods.
#include <cstdint>

namespace nerit::sim {

// Manifold pressure sensor with an MPX4250-like line: whole part of (0.00315 kPa + 0.04) x 5 V
// x 51.
std::uint8_t map_sensor_raw(double kpa);
// Throttle sensor from 20 (closed) to 230 (wide open).
std::uint8_t throttle_sensor_raw(double percent);
// Whole part of volts x 51, clamped to 0..255.
std::uint8_t analog_raw(double volts);

// The engine's airflow (Karman vortex) frequency at a speed and a load between 0 and 1.
double airflow_hz(double rpm, double load_fraction);
// Whole part of 250000 / hz, clamped to 1..65535.
std::uint16_t vortex_period(double hz);

// Speed period units per rpm for the cylinder count in block B.
std::uint32_t rpm_factor(std::uint8_t cylinders);
// Whole part of factor / rpm, clamped to 16 bits.
std::uint16_t speed_period(std::uint32_t factor, double rpm);

}  // namespace nerit::sim
