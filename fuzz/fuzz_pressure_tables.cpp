// libFuzzer target over the two pressure tables of the program folder: "\Pressure.raw" and
// "\PressureSensor.dat" as any bytes, read into the main window's table, and a pressure looked
// up in the sensor table.
//
// Input: one byte choosing the kPa to look up (0..255, as a tuner types it), then the file.
#include <cstddef>
#include <cstdint>
#include <optional>

#include "fuzz/fuzz_check.h"
#include "shell/errors.h"
#include "shell/pressure_tables.h"

using nerit::fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const double kpa = data[0];
  const nerit::Bytes file(data + 1, data + size);

  nerit::PressureTable raw_table{};
  nerit::read_pressure_raw(file, raw_table);
  for (std::size_t i = 256; i < raw_table.size(); ++i)
    check(raw_table[i] == 0, "the raw file filled an entry past 255");
  for (std::size_t i = 0; i < 256 && 2 * i + 1 < file.size(); ++i)
    check(raw_table[i] == static_cast<std::int16_t>(file[2 * i] | (file[2 * i + 1] << 8)),
          "an entry is not the file's little-endian word");

  nerit::PressureTable sensor_table{};
  try {
    nerit::read_pressure_sensor(file, sensor_table);
    check(file.size() <= 32768, "a table past 32767 kPa was read");
  } catch (const nerit::OverflowError&) {
    check(file.size() > 32768, "an overflow within 32767 kPa");
  }

  const std::optional<std::uint8_t> raw = nerit::sensor_raw_at(file, kpa);
  check(raw.has_value() == (kpa < static_cast<double>(file.size())), "lookup outside the table");
  if (raw) check(*raw == file[static_cast<std::size_t>(kpa)], "lookup is not the byte at kPa");
  return 0;
}
