// libFuzzer target over the controller's working memory as "Read Data from Unit" receives it:
// any 864 bytes read as a tune or name the cell a tune cannot hold, and what such a tune
// writes reads back as the same tune and writes the same bytes again.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "files/tune_memory.h"
#include "fuzz/fuzz_check.h"
#include "shell/errors.h"

using nerit::fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  nerit::MemoryImage memory{};
  for (std::size_t i = 0; i < std::min(size, memory.size() * 16); ++i)
    memory[i / 16][i % 16] = data[i];
  nerit::LoadAxisInputs in;
  in.pressure.assign(data, data + std::min<std::size_t>(size, 251));
  try {
    const nerit::Tune first = nerit::tune_from_memory(memory, 7500000, in);
    const nerit::MemoryImage written = nerit::memory_from_tune(first);
    const nerit::Tune second = nerit::tune_from_memory(written, 7500000, in);
    check(nerit::memory_from_tune(second) == written, "a written image does not write back");
  } catch (const nerit::ProgramError&) {
  }
  return 0;
}
