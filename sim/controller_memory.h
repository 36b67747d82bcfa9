#pragma once
// The two memories of the controller.
#include "sim/memory_map.h"
#include "sim/memory_window.h"

namespace nerit::sim {

struct ControllerMemory {
  MemoryWindow ram{kRamFirst, kRamSize};
  MemoryWindow eeprom{kEepromFirst, kEepromSize};

  bool operator==(const ControllerMemory&) const = default;
};

}  // namespace nerit::sim
