#pragma once
// Finds the map cell the engine runs in from the axes in working memory.
#include <cstdint>

#include "sim/memory_window.h"

namespace nerit::sim {

// The load row (0-15) whose load point lies nearest to the value; the first of equals wins.
int nearest_load_row(const MemoryWindow& ram, int load_value);
// The speed column (1-16) whose period lies nearest to the period; the first of equals wins.
int nearest_speed_column(const MemoryWindow& ram, std::uint16_t period);

}  // namespace nerit::sim
