// libFuzzer target over map CSV files as nerit-cli import reads them: any bytes either fail
// with a message or give maps that export and import back unchanged.
#include <cstddef>
#include <cstdint>
#include <string>

#include "files/tune_text.h"
#include "fuzz/fuzz_check.h"
#include "shell/errors.h"

using nerit::fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string csv(reinterpret_cast<const char*>(data), size);
  nerit::Tune tune;
  try {
    tune = nerit::with_maps_csv(nerit::Tune{}, csv);
  } catch (const nerit::ProgramError&) {
    return 0;
  }
  for (const auto& row : tune.correction)
    for (auto cell : row) check(cell >= -100 && cell <= 155, "a correction cell out of range");
  for (auto h : tune.rpm_headings) check(h > 0, "an RPM heading of 0 or below");
  check(nerit::with_maps_csv(nerit::Tune{}, nerit::maps_csv(tune)) == tune,
        "exported maps do not import back");
  return 0;
}
