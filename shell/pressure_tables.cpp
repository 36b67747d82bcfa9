#include "shell/pressure_tables.h"

#include <algorithm>

#include "shell/data_files.h"
#include "shell/numbers.h"

namespace nerit {

void read_pressure_raw(const Bytes& file, PressureTable& table) {
  for (std::size_t i = 0; i < 256 && 2 * i + 1 < file.size(); ++i) {
    const auto word = static_cast<std::uint16_t>(file[2 * i] | (file[2 * i + 1] << 8));
    table[i] = static_cast<std::int16_t>(word);
  }
}

void read_pressure_sensor(const Bytes& file, PressureTable& table) {
  // A kPa past the 16-bit range fails with OverflowError, after the ones before it.
  for (std::size_t kpa = 0; kpa < file.size(); ++kpa)
    table[file[kpa]] = to_int16(static_cast<double>(kpa));
}

std::optional<std::uint8_t> sensor_raw_at(const Bytes& file, double kpa) {
  if (!(kpa >= 0) || kpa >= static_cast<double>(file.size())) return std::nullopt;
  return file[static_cast<std::size_t>(kpa)];
}

Bytes with_pressure_sensor(Bytes file, const Bytes& raws) {
  if (file.size() < raws.size()) file.resize(raws.size(), 0);
  std::copy(raws.begin(), raws.end(), file.begin());
  return file;
}

Bytes with_pressure_raw(Bytes file, const Bytes& raws) {
  for (std::size_t kpa = 0; kpa < raws.size(); ++kpa) {
    const std::size_t at = 2 * std::size_t{raws[kpa]};
    if (file.size() < at + 2) file.resize(at + 2, 0);
    file[at] = static_cast<std::uint8_t>(kpa & 0xFF);
    file[at + 1] = static_cast<std::uint8_t>((kpa >> 8) & 0xFF);
  }
  return file;
}

std::optional<Bytes> PressureFiles::sensor() const {
  return read_file_bytes(data_file(pfad_, kSensorName));
}

std::optional<Bytes> PressureFiles::raw() const {
  return read_file_bytes(data_file(pfad_, kRawName));
}

void PressureFiles::save(const Bytes& raws) const {
  write_file_bytes(data_file(pfad_, kSensorName),
                   with_pressure_sensor(sensor().value_or(Bytes{}), raws));
  write_file_bytes(data_file(pfad_, kRawName), with_pressure_raw(raw().value_or(Bytes{}), raws));
}

}  // namespace nerit
