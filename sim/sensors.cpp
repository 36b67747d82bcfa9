#include "sim/sensors.h"

#include <algorithm>
#include <cmath>

namespace nerit::sim {

namespace {

std::uint8_t byte_of(double x) {
  return static_cast<std::uint8_t>(std::clamp(std::floor(x), 0.0, 255.0));
}

std::uint16_t word_of(double x) {
  return static_cast<std::uint16_t>(std::clamp(std::floor(x), 0.0, 65535.0));
}

}  // namespace

std::uint8_t map_sensor_raw(double kpa) {
  return byte_of((0.00315 * kpa + 0.04) * 5 * 51);
}

std::uint8_t throttle_sensor_raw(double percent) {
  return byte_of(20 + percent * 210 / 100);
}

std::uint8_t analog_raw(double volts) {
  return byte_of(volts * 51);
}

double airflow_hz(double rpm, double load_fraction) {
  return 30 + 2900 * (rpm / 8000) * (0.2 + 0.8 * load_fraction);
}

std::uint16_t vortex_period(double hz) {
  if (hz <= 0) return 65535;
  return std::max<std::uint16_t>(1, word_of(250000 / hz));
}

std::uint32_t rpm_factor(std::uint8_t cylinders) {
  switch (cylinders) {
    case 6:
      return 20000000;
    case 8:
      return 15000000;
    default:
      return 30000000;
  }
}

std::uint16_t speed_period(std::uint32_t factor, double rpm) {
  if (rpm <= 0) return 65535;
  return word_of(factor / rpm);
}

}  // namespace nerit::sim
