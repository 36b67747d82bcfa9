#include "files/tune_file.h"

#include "files/inj_format.h"
#include "shell/data_files.h"

namespace nerit {

Tune read_tune_file(const std::filesystem::path& file) {
  const auto bytes = read_file_bytes(file);
  if (!bytes) throw FileError("The file " + file.string() + " does not exist.");
  try {
    return decode_inj(*bytes);
  } catch (const InjFormatError& e) {
    throw InjFormatError(file.filename().string() + " is no settings file: " + e.what());
  }
}

void write_tune_file(const std::filesystem::path& file, const Tune& tune) {
  auto old = read_file_bytes(file);
  replace_file_bytes(file, encode_inj(tune, old ? std::move(*old) : std::vector<std::uint8_t>{}));
}

}  // namespace nerit
