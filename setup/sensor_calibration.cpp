#include "setup/sensor_calibration.h"

#include <cmath>
#include <system_error>

#include "shell/data_files.h"
#include "shell/numbers.h"
#include "shell/pressure_tables.h"

namespace nerit {

double sensor_volts(double faktor, double offset, double p) {
  return (faktor * p + offset) * 5;
}

std::uint8_t sensor_raw(double faktor, double offset, double p) {
  double volts = sensor_volts(faktor, offset, p);
  if (volts < 0) volts = 0;
  return to_byte(whole_part(volts * 51));
}

std::vector<std::uint8_t> calibration_raws(double faktor, double offset, double max_p) {
  std::vector<std::uint8_t> raws;
  for (int p = 0; p <= max_p; ++p) raws.push_back(sensor_raw(faktor, offset, p));
  return raws;
}

bool write_mpx4250_tables_if_none(const std::filesystem::path& pfad) {
  std::error_code ec;
  for (const char* name : {PressureFiles::kSensorName, PressureFiles::kRawName}) {
    if (std::filesystem::exists(data_file(pfad, name), ec)) return false;
  }
  PressureFiles(pfad).save(calibration_raws(kMpx4250.faktor, kMpx4250.offset, kMpx4250.max_p));
  return true;
}

}  // namespace nerit
