#include "sim/state_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

#include "sim/atomic_file.h"

namespace nerit::sim {

namespace {

// "NERITSIM", a format version, working memory, EEPROM.
constexpr char kMagic[] = "NERITSIM\x01";
constexpr std::size_t kMagicSize = sizeof kMagic - 1;

}  // namespace

std::optional<ControllerMemory> load_state_file(const std::string& path, std::string& error) {
  error.clear();
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::error_code ec;
    if (std::filesystem::exists(path, ec)) error = "cannot read " + path;
    return std::nullopt;
  }
  const std::vector<char> content{std::istreambuf_iterator<char>(in), {}};
  ControllerMemory memory;
  const std::size_t ram_size = memory.ram.size();
  const std::size_t eeprom_size = memory.eeprom.size();
  if (content.size() != kMagicSize + ram_size + eeprom_size ||
      !std::equal(kMagic, kMagic + kMagicSize, content.begin())) {
    error = path + " is not a state file of this controller";
    return std::nullopt;
  }
  auto ram_begin = content.begin() + kMagicSize;
  memory.ram.assign({ram_begin, ram_begin + ram_size});
  memory.eeprom.assign({ram_begin + ram_size, content.end()});
  return memory;
}

bool save_state_file(const std::string& path, const ControllerMemory& memory, std::string& error) {
  std::string content(kMagic, kMagicSize);
  for (const auto* window : {&memory.ram, &memory.eeprom}) {
    content.append(window->bytes().begin(), window->bytes().end());
  }
  return replace_file(path, content, error);
}

}  // namespace nerit::sim
