#pragma once
// Map cells as the controller stores them, and back as the text a grid cell shows.
#include <array>
#include <cstdint>
#include <string>

namespace nerit {

// The controller's clock for vortex periods: 4 µs ticks, 250000 a second.
inline constexpr int kVortexTicks = 250000;

// Injector correction, percent: value x 1.27 + 128, ties to even (128 is 0 %).
std::uint8_t correction_byte(double percent);
std::string correction_cell_text(std::uint8_t stored);
// The stored byte as whole percent: round((stored - 128) / 1.27), ties to even.
double correction_percent(std::uint8_t stored);

// Airflow output. Frequency output (airflowtype 0): the period word floor(250000 / Hz), low
// byte first. Voltage output: floor(mV x 255 / 5000), at most 255, then a zero byte.
std::array<std::uint8_t, 2> airflow_bytes(double value, double airflowtype);
// The cell text for two stored bytes. For the frequency output it is the shortest number that
// writes back as the same word.
std::string airflow_cell_text(std::uint8_t low, std::uint8_t high, double airflowtype);

}  // namespace nerit
