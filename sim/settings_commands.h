#pragma once
// Commands 0x03, 0x09 and 0x0A: single settings written into blocks A and B of working memory.
// `data` is the frame's 16 data bytes (frame offset 4 = data[0]).
#include <cstdint>

#include "sim/memory_window.h"

namespace nerit::sim {

// Slider, offset in (high, low), offset out (high, low), injsizecorr, injchannels.
// Returns the manual adjust slider value, which the controller keeps outside its blocks.
std::uint8_t apply_injector_data(const Block& data, MemoryWindow& ram);
// airflowtype, aoutmax.
void apply_airflow_settings(const Block& data, MemoryWindow& ram);
// boost_enable, boost_start, boost_set.
void apply_boost_settings(const Block& data, MemoryWindow& ram);

}  // namespace nerit::sim
