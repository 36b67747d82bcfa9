#include "sim/atomic_file.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace nerit::sim {

bool replace_file(const std::string& path, std::string_view bytes, std::string& error) {
  error.clear();
  const std::string temporary = path + ".tmp";
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    if (!out) {
      error = "cannot create " + temporary;
      return false;
    }
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) {
      error = "cannot write " + temporary;
      return false;
    }
  }
  std::error_code ec;
  std::filesystem::rename(temporary, path, ec);
  if (ec) {
    error = "cannot replace " + path + ": " + ec.message();
    return false;
  }
  return true;
}

}  // namespace nerit::sim
