#pragma once
// A tune on disk as a .inj file.
#include <filesystem>

#include "files/tune.h"

namespace nerit {

// FileError when the file is missing or unreadable; InjFormatError, naming the file, when it
// is no settings file.
Tune read_tune_file(const std::filesystem::path& file);
// Replaces the file as a whole, keeping the bytes the tune does not hold (4-15, 44-47, past
// 879) of an existing file. Nothing is touched when the tune cannot be stored.
void write_tune_file(const std::filesystem::path& file, const Tune& tune);

}  // namespace nerit
