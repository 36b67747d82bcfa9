#include "maps/interpolation.h"

#include <utility>

#include "shell/numbers.h"

namespace nerit {

namespace {

// One line from index `first` to `last`; cell(i) is the grid cell at index i of the line.
template <class Cell>
void interpolate_line(const Grid& g, int first, int last, Cell cell, std::vector<CellText>& out) {
  const auto [r0, c0] = cell(first);
  const auto [r1, c1] = cell(last);
  const double a = val(g.text(r0, c0));
  const double b = val(g.text(r1, c1));
  const double step = divide(b - a, last - first);
  float running = static_cast<float>(a);
  for (int i = first + 1; i <= last - 1; ++i) {
    running = static_cast<float>(static_cast<double>(running) + step);
    const auto [r, c] = cell(i);
    out.push_back({r, c, number_text(round_half_even(running))});
  }
}

}  // namespace

std::vector<CellText> interpolate_rows(const Grid& g, const SelectedBlock& block) {
  std::vector<CellText> out;
  for (int r = block.start_row; r <= block.end_row; ++r)
    interpolate_line(
        g, block.start_col, block.end_col,
        [r](int c) {
          return std::pair{r, c};
        },
        out);
  return out;
}

std::vector<CellText> interpolate_cols(const Grid& g, const SelectedBlock& block) {
  std::vector<CellText> out;
  for (int c = block.start_col; c <= block.end_col; ++c)
    interpolate_line(
        g, block.start_row, block.end_row,
        [c](int r) {
          return std::pair{r, c};
        },
        out);
  return out;
}

}  // namespace nerit
