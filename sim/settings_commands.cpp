#include "sim/settings_commands.h"

#include "sim/memory_map.h"

namespace nerit::sim {

namespace {

std::uint16_t high_first(std::uint8_t high, std::uint8_t low) {
  return static_cast<std::uint16_t>(high << 8 | low);
}

}  // namespace

std::uint8_t apply_injector_data(const Block& data, MemoryWindow& ram) {
  ram.set_word(kBlockA + block_a::kOffsetIn, high_first(data[1], data[2]));
  ram.set_word(kBlockA + block_a::kOffsetOut, high_first(data[3], data[4]));
  ram.set(kBlockA + block_a::kInjSizeCorr, data[5]);
  ram.set(kBlockB + block_b::kInjChannels, data[6]);
  return data[0];
}

void apply_airflow_settings(const Block& data, MemoryWindow& ram) {
  ram.set(kBlockA + block_a::kAirflowType, data[0]);
  ram.set(kBlockA + block_a::kAoutMax, data[1]);
}

void apply_boost_settings(const Block& data, MemoryWindow& ram) {
  ram.set(kBlockA + block_a::kBoostEnable, data[0]);
  ram.set(kBlockB + block_b::kBoostStart, data[1]);
  ram.set(kBlockB + block_b::kBoostSet, data[2]);
}

}  // namespace nerit::sim
