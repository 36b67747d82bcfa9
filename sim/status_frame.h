#pragma once
// What the controller reports while it streams: the status frame (reply type 0xFF) and the
// debug text line, both computed from the engine and from the tune in working memory.
#include <cstdint>
#include <string>

#include "sim/engine_model.h"
#include "sim/memory_window.h"

namespace nerit::sim {

struct Status {
  std::uint8_t throttle_raw = 0;   // b4
  std::uint8_t map_raw = 0;        // b5
  std::uint16_t injector_in = 0;   // b6-7, 4 us ticks
  std::uint16_t injector_out = 0;  // b8-9, 4 us ticks
  std::uint16_t speed_period = 0;  // b10-11
  std::uint8_t adjust = 128;       // b12, 128 = 0 %
  std::uint8_t cell = 0;           // b13, load row x 16 + (speed column & 15)
  std::uint16_t airflow_out = 0;   // b14-15
  std::uint8_t analog3_raw = 0;    // b16
  std::uint16_t airflow_in = 0;    // b18-19, vortex period
  double injector_out_us = 0;
};

// `manual_adjust` is the slider value of command 0x03 (128 = 0 %).
Status compute_status(const EngineState& engine, const MemoryWindow& ram,
                      std::uint8_t manual_adjust);

std::string status_frame(const Status& status);

// "RPM 2500 TPS 34 MAP 101 INJ 3120", without the CR that ends it on the wire.
std::string debug_line(const EngineState& engine, const Status& status, const MemoryWindow& ram);

}  // namespace nerit::sim
