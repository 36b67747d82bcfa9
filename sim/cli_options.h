#pragma once
// The command line of nerit-sim.
#include <optional>
#include <string>
#include <vector>

#include "sim/options.h"

namespace nerit::sim {

struct CommandLine {
  Options options;
  bool help = false;
  bool version = false;
};

// The arguments after the program name. Pacing is on unless --no-pacing is given. A bad
// argument gives nothing and the reason in `error`.
std::optional<CommandLine> parse_command_line(const std::vector<std::string>& args,
                                              std::string& error);

std::string usage_text();

}  // namespace nerit::sim
