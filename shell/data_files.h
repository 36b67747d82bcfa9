#pragma once
// Data files of the program folder. Their names are written with a leading backslash
// ("\Pressure.raw"); on every system they are plain files inside pfad.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace nerit {

std::filesystem::path data_file(const std::filesystem::path& pfad, std::string_view name);

// The whole file, or nothing when it does not exist. FileError when it exists but cannot be read.
std::optional<std::vector<std::uint8_t>> read_file_bytes(const std::filesystem::path& file);

// Replaces the file's contents. FileError when it cannot be written.
void write_file_bytes(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes);

// Replaces the file as a whole: the bytes go to a temporary file in the same folder, which is
// then renamed over the old one, so the file is never left half written. FileError on failure
// (the old file is untouched and the temporary one removed).
void replace_file_bytes(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes);

}  // namespace nerit
