// libFuzzer target over settings files (.inj): the loader's checks, and for every file it takes,
// a save of the tune over the same file gives the file back byte for byte.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "files/inj_format.h"
#include "fuzz/fuzz_check.h"

using nerit::fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> file(data, data + size);
  nerit::Tune tune;
  try {
    tune = nerit::decode_inj(file);
  } catch (const nerit::InjFormatError&) {
    return 0;
  }
  check(size >= nerit::kInjSize, "a short file was taken");
  check(tune.load_type <= 3, "a load type above 3 was taken");
  for (auto heading : tune.rpm_headings) check(heading != 0, "a zero RPM heading was taken");
  for (const auto& row : tune.correction)
    for (auto cell : row) check(cell >= -100 && cell <= 155, "a correction cell out of range");
  check(nerit::encode_inj(tune, file) == file, "saving the loaded tune changed the file");
  check(nerit::decode_inj(nerit::encode_inj(tune)) == tune, "a new file does not load back");
  return 0;
}
