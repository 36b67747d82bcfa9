#pragma once
// The two pressure tables of the program folder, read and written here only.
//  "\PressureSensor.dat": kPa -> raw sensor byte, one unsigned byte a kPa (offset P holds the
//    byte of P kPa), P = 0..max P.
//  "\Pressure.raw": raw sensor byte -> kPa, 16-bit little-endian signed integers at offset
//    2 x raw; where several pressures give one raw byte the highest pressure is kept.
// The table functions are pure; PressureFiles does the file access.
#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace nerit {

// The main window's table raw byte -> kPa (index 0..400; 0..255 are ever filled).
using PressureTable = std::array<std::int16_t, 401>;
using Bytes = std::vector<std::uint8_t>;

// Entries 0..255 from "\Pressure.raw"; entries the bytes do not reach keep their value.
void read_pressure_raw(const Bytes& file, PressureTable& table);
// The inverse of "\PressureSensor.dat": for each kPa in rising order, table(byte) = kPa
// (OverflowError past 32767 kPa).
void read_pressure_sensor(const Bytes& file, PressureTable& table);
// The raw byte "\PressureSensor.dat" gives for a pressure; nothing outside the table.
std::optional<std::uint8_t> sensor_raw_at(const Bytes& file, double kpa);

// The files after saving a calibration whose raw byte of P kPa is raws[P], P = 0..max P.
// Neither file is shortened: bytes past max P and entries of raw bytes no pressure gave stay.
Bytes with_pressure_sensor(Bytes file, const Bytes& raws);
Bytes with_pressure_raw(Bytes file, const Bytes& raws);

class PressureFiles {
 public:
  explicit PressureFiles(std::filesystem::path pfad) : pfad_(std::move(pfad)) {}

  static constexpr const char* kSensorName = "\\PressureSensor.dat";
  static constexpr const char* kRawName = "\\Pressure.raw";

  // A file's bytes, nothing when it does not exist. FileError when it cannot be read.
  std::optional<Bytes> sensor() const;
  std::optional<Bytes> raw() const;
  // Writes both files for a calibration (raws[P] for P = 0..max P). FileError on failure.
  void save(const Bytes& raws) const;

 private:
  std::filesystem::path pfad_;
};

}  // namespace nerit
