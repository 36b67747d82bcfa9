#include "maps/map_blocks.h"

#include "link/cell_codec.h"
#include "link/memory_map.h"
#include "link/settings_blocks.h"
#include "shell/numbers.h"

namespace nerit {

void MapBlocks::show(const MemoryBlockReply& m) {
  const int address = m.address;
  auto word = [&m](int k) {
    return m.data[static_cast<std::size_t>(2 * k + 1)] * 256 +
           m.data[static_cast<std::size_t>(2 * k)];
  };
  if (address == kLoadAxisLow || address == kLoadAxisHigh) {
    const int first = address == kLoadAxisLow ? 1 : 9;
    for (int k = 0; k < 8; ++k)
      c_.load_points[static_cast<std::size_t>(first + k)] = to_int16(word(k));
  } else if (address == kRpmAxisLow || address == kRpmAxisHigh) {
    const int first = address == kRpmAxisLow ? 1 : 9;
    for (int k = 0; k < 8; ++k) c_.rpm_points[static_cast<std::size_t>(first + k)] = word(k);
    for (int k = 0; k < 8; ++k) {
      const int col = first + k;
      const int period = c_.rpm_points[static_cast<std::size_t>(col)];
      if (period == 0) continue;  // an unset point has no speed to show
      const std::string heading = number_text(speed_heading(vars_.rpmfaktor, period));
      c_.MSFlexGrid2.set_text(0, col, heading);
      c_.MSFlexGrid3.set_text(0, col, heading);
    }
  } else if (address >= kCorrectionMapAddress && address < kAirflowMapAddress) {
    const int row = (address - kCorrectionMapAddress) / 16 + 1;
    for (int i = 1; i <= 16; ++i)
      c_.MSFlexGrid2.set_text(row, i,
                              correction_cell_text(m.data[static_cast<std::size_t>(i - 1)]));
  } else if (address >= kAirflowMapAddress && address < kAirflowMapEnd) {
    const int row = (address - kAirflowMapAddress) / 32 + 1;
    const int first_col = (address / 16) % 2 == 0 ? 1 : 9;
    for (int j = 0; j < 8; ++j)
      c_.MSFlexGrid3.set_text(
          row, first_col + j,
          airflow_cell_text(m.data[static_cast<std::size_t>(2 * j)],
                            m.data[static_cast<std::size_t>(2 * j + 1)], vars_.airflowtype));
  }
}

}  // namespace nerit
