#pragma once
// The arguments every nerit-cli command parses the same way: its options and their values,
// the rest in order, and the options that name the controller's port and the data folder.
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "cli/command.h"

namespace nerit::cli {

struct ParsedArgs {
  std::vector<std::string> positional;
  std::map<std::string, std::string> values;  // option -> value
  std::set<std::string> flags;

  bool has(const std::string& option) const { return values.count(option) || flags.count(option); }
  std::string value(const std::string& option, const std::string& otherwise = "") const;
  // A whole number of at least `min` (UsageError otherwise).
  int number(const std::string& option, int otherwise, int min) const;
};

// `valued` options take the next argument; `flags` stand alone. UsageError for any other
// argument that starts with "--", and for a value that is missing.
ParsedArgs parse_args(const Args& args, const std::set<std::string>& valued,
                      const std::set<std::string>& flags);

// The options of every command that talks to the controller.
inline const std::set<std::string> kLineOptions = {"--port", "--timeout", "--data-dir"};
inline constexpr int kDefaultTimeoutMs = 2000;

// --port as a device ("" is a UsageError naming the command's need).
std::string port_of(const ParsedArgs& args);
// --data-dir, or the per-user folder the program uses when installed (restore points and
// the pressure-sensor table live there).
std::filesystem::path data_folder_of(const ParsedArgs& args);

}  // namespace nerit::cli
