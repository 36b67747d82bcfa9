#include "link/map_rows.h"

#include "link/cell_codec.h"
#include "shell/numbers.h"

namespace nerit {

FrameData correction_row_data(const Grid& g, int row) {
  FrameData d{};
  for (int col = 1; col <= 16; ++col)
    d[static_cast<std::size_t>(col - 1)] = correction_byte(val(g.text(row, col)));
  return d;
}

FrameData airflow_half_row_data(const Grid& g, int row, int half, double airflowtype) {
  FrameData d{};
  for (int j = 0; j < 8; ++j) {
    const auto bytes = airflow_bytes(val(g.text(row, 8 * half + j + 1)), airflowtype);
    d[static_cast<std::size_t>(2 * j)] = bytes[0];
    d[static_cast<std::size_t>(2 * j + 1)] = bytes[1];
  }
  return d;
}

}  // namespace nerit
