#include "sim/eeprom_copy.h"

#include "sim/memory_map.h"

namespace nerit::sim {

namespace {

// Pairs of (EEPROM address, working-memory address) for every byte of the reduced copy.
template <typename Visit>
void for_each_mirrored_byte(Visit visit) {
  for (int i = 0; i < block_a::kBoostEnable; ++i) visit(kEeBlockA + i, kBlockA + i);
  for (int i = 0; i < 2 * kEeLoadPoints; ++i) visit(kEeLoadAxis + i, kLoadAxis + i);
  for (int row = 0; row < kEeMapRows; ++row) {
    for (int col = 0; col < kEeMapColumns; ++col) {
      visit(kEeCorrectionMap + row * kEeMapColumns + col, kCorrectionMap + row * 16 + col);
    }
  }
}

}  // namespace

void reload_from_eeprom(const MemoryWindow& eeprom, MemoryWindow& ram) {
  for_each_mirrored_byte([&](int ee, int wm) { ram.set(wm, eeprom.at(ee)); });
}

void store_reduced_copy(const MemoryWindow& ram, MemoryWindow& eeprom) {
  for_each_mirrored_byte([&](int ee, int wm) { eeprom.set(ee, ram.at(wm)); });
  eeprom.set(kEeBlockA + block_a::kBoostEnable, 0);
}

}  // namespace nerit::sim
