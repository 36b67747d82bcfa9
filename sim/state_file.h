#pragma once
// The file that keeps the controller's permanent state (working memory and EEPROM) across runs.
#include <optional>
#include <string>

#include "sim/controller_memory.h"

namespace nerit::sim {

// The memory kept in the file. A missing file gives nothing with an empty error; a file that
// is not a state file gives nothing with the reason.
std::optional<ControllerMemory> load_state_file(const std::string& path, std::string& error);

// Writes through a temporary file and a rename, so a failed write leaves the old state intact.
bool save_state_file(const std::string& path, const ControllerMemory& memory, std::string& error);

}  // namespace nerit::sim
