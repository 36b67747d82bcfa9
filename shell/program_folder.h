#pragma once
// Where the program keeps its data files (pfad): the folder of the executable, or a per-user
// folder when that one is not writable (a system-wide install), or the folder given with
// --data-dir.
#include <filesystem>
#include <optional>

namespace nerit {

struct ProgramFolderSources {
  std::filesystem::path executable_folder;
  std::filesystem::path per_user_folder;
  std::optional<std::filesystem::path> data_dir_option;
};

// Creates the chosen folder when it does not exist yet. FileError when none can be used.
std::filesystem::path choose_program_folder(const ProgramFolderSources& sources);

// True when a file can be created in the folder.
bool folder_is_writable(const std::filesystem::path& folder);

}  // namespace nerit
