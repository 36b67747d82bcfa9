#include "shell/program_folder.h"

#include <fstream>
#include <string>

#include "shell/errors.h"

namespace nerit {

bool folder_is_writable(const std::filesystem::path& folder) {
  std::error_code ec;
  if (!std::filesystem::is_directory(folder, ec)) return false;
  auto probe = folder / ".nerit-write-probe";
  for (int n = 0; std::filesystem::exists(probe, ec); ++n)
    probe = folder / (".nerit-write-probe-" + std::to_string(n));
  {
    std::ofstream out(probe, std::ios::binary);
    if (!out) return false;
  }
  std::filesystem::remove(probe, ec);
  return true;
}

namespace {

std::filesystem::path usable(const std::filesystem::path& folder) {
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  if (!folder_is_writable(folder))
    throw FileError("Cannot write to the data folder " + folder.string());
  return std::filesystem::absolute(folder);
}

}  // namespace

std::filesystem::path choose_program_folder(const ProgramFolderSources& sources) {
  if (sources.data_dir_option) return usable(*sources.data_dir_option);
  if (folder_is_writable(sources.executable_folder))
    return std::filesystem::absolute(sources.executable_folder);
  return usable(sources.per_user_folder);
}

}  // namespace nerit
