#include "shell/data_files.h"

#include <fstream>
#include <iterator>

#include "shell/errors.h"

namespace nerit {

std::filesystem::path data_file(const std::filesystem::path& pfad, std::string_view name) {
  while (!name.empty() && (name.front() == '\\' || name.front() == '/')) name.remove_prefix(1);
  return pfad / std::filesystem::path(name);
}

std::optional<std::vector<std::uint8_t>> read_file_bytes(const std::filesystem::path& file) {
  std::error_code ec;
  if (!std::filesystem::exists(file, ec)) return std::nullopt;
  // A folder of that name opens as a stream too, and then fails on the first read.
  if (std::filesystem::is_directory(file, ec)) throw FileError("Cannot open " + file.string());
  std::ifstream in(file, std::ios::binary);
  if (!in) throw FileError("Cannot open " + file.string());
  try {
    std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(in),
                                    std::istreambuf_iterator<char>()};
    if (in.bad()) throw FileError("Cannot read " + file.string());
    return bytes;
  } catch (const std::ios_base::failure&) {
    throw FileError("Cannot read " + file.string());
  }
}

void write_file_bytes(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  if (!out) throw FileError("Cannot open " + file.string());
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
  if (!out) throw FileError("Cannot write " + file.string());
}

void replace_file_bytes(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
  std::filesystem::path temp = file;
  temp += ".saving";
  try {
    {
      std::ofstream out(temp, std::ios::binary | std::ios::trunc);
      if (!out) throw FileError("Cannot create " + temp.string());
      out.write(reinterpret_cast<const char*>(bytes.data()),
                static_cast<std::streamsize>(bytes.size()));
      out.flush();
      if (!out) throw FileError("Cannot write " + temp.string());
    }
    std::error_code ec;
    std::filesystem::rename(temp, file, ec);
    if (ec) throw FileError("Cannot replace " + file.string() + ": " + ec.message());
  } catch (...) {
    std::error_code ignored;
    std::filesystem::remove(temp, ignored);
    throw;
  }
}

}  // namespace nerit
