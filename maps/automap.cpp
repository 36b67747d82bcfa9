#include "maps/automap.h"

#include <algorithm>

#include "shell/numbers.h"

namespace nerit {

namespace {

// The first heading (1..16) within `window` of x, or 0 for none.
template <class Headings>
int first_near(const Headings& headings, double x, double window) {
  for (int i = 1; i <= kMapSize; ++i) {
    const double h = headings[static_cast<std::size_t>(i)];
    if (h - window < x && x < h + window) return i;
  }
  return 0;
}

}  // namespace

void Automap::Check5_Click() {
  if (mc_.Check5.value != 1) return;
  const Grid& g = c_.MSFlexGrid2;
  for (int i = 1; i <= kMapSize; ++i) {
    const auto k = static_cast<std::size_t>(i);
    state_.automap_rpm[k] = val(g.text(0, i));
    state_.automap_load[k] = to_int16(val(g.text(i, 0)));
  }
}

void Automap::automap(double speed, double load, double value) {
  const int col = first_near(state_.automap_rpm, speed, kSpeedWindow);
  const int row = first_near(state_.automap_load, load, kLoadWindow);
  if (col == 0 || row == 0) return;
  Grid& g = c_.MSFlexGrid3;
  g.set_text(row, col, number_text(value));
  g.set_current(row, col);
  g.set_back_color(row, col, kYellow);
}

void Automap::highlight(int grid_row, int grid_col) {
  Grid& g = c_.MSFlexGrid2;
  g.set_back_color(state_.marked_row, state_.marked_col, kWhite);
  g.set_back_color(grid_row, grid_col, kGreen);
  state_.marked_row = grid_row;
  state_.marked_col = grid_col;
}

void Automap::operating_cell(int cell) {
  if (vars_.fokus != 1) {
    state_.cell_row = cell / 16;
    state_.cell_col = std::max(cell & 15, 1);
  }
  const bool moved = cell != state_.previous_cell;
  state_.previous_cell = cell;
  if (mc_.Check2.value == 1 && moved) highlight(state_.cell_row + 1, state_.cell_col);
}

}  // namespace nerit
