#include "sim/default_tune.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "sim/eeprom_copy.h"
#include "sim/memory_map.h"
#include "sim/sensors.h"

namespace nerit::sim {

namespace {

void fill_settings(MemoryWindow& ram) {
  using namespace block_a;
  ram.set(kBlockA + kLoadType, 1);  // MAP
  ram.set(kBlockA + kPressureSensor, 1);
  ram.set(kBlockA + kTpsMin, 20);
  ram.set(kBlockA + kTpsMax, 230);
  ram.set_word(kBlockA + kOffsetIn, 0x0150);
  ram.set_word(kBlockA + kOffsetOut, 0x0120);
  ram.set_word(kBlockA + kInjOld, 440);
  ram.set_word(kBlockA + kInjNew, 440);
  ram.set(kBlockA + kInjSizeCorr, 128);
  ram.set(kBlockA + kAirflowType, 0);
  ram.set(kBlockA + kAoutMax, 255);
  ram.set(kBlockA + kBoostEnable, 0);

  using namespace block_b;
  ram.set(kBlockB + kBoostStart, map_sensor_raw(150));
  ram.set(kBlockB + kBoostSet, 128);
  ram.set(kBlockB + kCylinders, 4);
  ram.set(kBlockB + kInjChannels, 15);
  ram.set(kBlockB + kMapFlags, kCorrectionMapActive | kAirflowMapActive);
  const std::uint8_t accel[] = {2, 20, 2, 20, 0};
  for (int i = 0; i < 5; ++i) ram.set(kBlockB + kAccelFirst + i, accel[i]);
  ram.set(kBlockB + kSeqFactor, 1);
}

void fill_axes(MemoryWindow& ram) {
  const std::uint32_t factor = rpm_factor(4);
  for (int k = 0; k < kAxisPoints; ++k) {
    ram.set_word(kLoadAxis + 2 * k, map_sensor_raw(default_load_kpa(k)));
    ram.set_word(kSpeedAxis + 2 * k, speed_period(factor, default_column_rpm(k + 1)));
  }
}

void fill_maps(MemoryWindow& ram) {
  for (int row = 0; row < kAxisPoints; ++row) {
    for (int col = 0; col < kAxisPoints; ++col) {
      ram.set(kCorrectionMap + row * 16 + col, 128);
      const double hz = std::floor(airflow_hz(default_column_rpm(col + 1), row / 15.0));
      ram.set_word(kAirflowMap + row * 32 + col * 2, vortex_period(hz));
    }
  }
}

// The demo correction in percent at a load point's pressure and a column's speed.
double demo_correction_percent(double kpa, double rpm) {
  const double boost = std::clamp((kpa - 100) / 150, 0.0, 1.0);
  const double speed = (rpm - 500) / 7500;
  const double cruise = std::exp(-std::pow((kpa - 55) / 25, 2) - std::pow((rpm - 2500) / 1200, 2));
  return 18 * std::pow(boost, 1.5) + 5 * speed * speed - 8 * cruise;
}

void shape_correction_map(MemoryWindow& ram) {
  for (int row = 0; row < kAxisPoints; ++row) {
    for (int col = 0; col < kAxisPoints; ++col) {
      const double percent =
          demo_correction_percent(default_load_kpa(row), default_column_rpm(col + 1));
      ram.set(kCorrectionMap + row * 16 + col,
              static_cast<std::uint8_t>(std::round(percent * 1.27 + 128)));
    }
  }
}

}  // namespace

double default_load_kpa(int k) {
  return 20 + k * 230.0 / 15;
}

int default_column_rpm(int column) {
  return 500 * column;
}

ControllerMemory default_tune() {
  ControllerMemory memory;
  fill_settings(memory.ram);
  fill_axes(memory.ram);
  fill_maps(memory.ram);
  store_reduced_copy(memory.ram, memory.eeprom);
  return memory;
}

ControllerMemory demo_tune() {
  ControllerMemory memory = default_tune();
  shape_correction_map(memory.ram);
  memory.ram.set(kBlockA + block_a::kBoostEnable, 1);
  store_reduced_copy(memory.ram, memory.eeprom);
  return memory;
}

}  // namespace nerit::sim
