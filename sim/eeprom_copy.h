#pragma once
// The reduced copy of working memory that the EEPROM holds, in both directions.
#include "sim/memory_window.h"

namespace nerit::sim {

// Command 0x06: block A (its boost byte excepted), load points 1-12 and correction map rows
// 1-12 x columns 1-8 go from EEPROM back into working memory; the rest stays as it is.
void reload_from_eeprom(const MemoryWindow& eeprom, MemoryWindow& ram);

// The EEPROM contents that mirror working memory, as the program writes them.
void store_reduced_copy(const MemoryWindow& ram, MemoryWindow& eeprom);

}  // namespace nerit::sim
