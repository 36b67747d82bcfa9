#pragma once
// The pressure sensor's calibration: its line from kPa to volts, the raw bytes the controller
// reads from it, and the presets of the sensor list.
#include <array>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <vector>

namespace nerit {

// U = (faktor x P + offset) x 5 V at P kPa, read up to max_p kPa.
struct SensorPreset {
  const char* name;
  double faktor;
  double offset;
  double max_p;
};

// The sensor list in its order. "Manuell" brings no values (NaN): the fields keep what is typed.
inline constexpr std::array<SensorPreset, 3> kSensorPresets{{
    {"Manuell", std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(),
     std::numeric_limits<double>::quiet_NaN()},
    {"MPX4250", 0.00315, 0.04, 250},
    {"Toyota 1/2JZ", 0.003795, 0.134507, 227},
}};

inline constexpr const SensorPreset& kMpx4250 = kSensorPresets[1];

// The sensor voltage U at P kPa, evaluated in this order so that every table matches the one
// the sensor window saves byte for byte. Not clamped.
double sensor_volts(double faktor, double offset, double p);

// The raw byte of P kPa: the whole part of U x 51 (U x 255 / 5), a negative U read as 0.
// OverflowError past 255 (above about 5.02 V).
std::uint8_t sensor_raw(double faktor, double offset, double p);

// The raw byte of every whole kPa from 0 to max_p (max_p + 1 entries), as the pressure tables
// are saved. Voltages above 5 V are not checked here.
std::vector<std::uint8_t> calibration_raws(double faktor, double offset, double max_p);

// The virtual controller's sensor follows the MPX4250 line. When `pfad` holds neither
// "\PressureSensor.dat" nor "\Pressure.raw", writes both for that calibration and returns true;
// otherwise leaves the folder alone. FileError when a file cannot be written.
bool write_mpx4250_tables_if_none(const std::filesystem::path& pfad);

}  // namespace nerit
