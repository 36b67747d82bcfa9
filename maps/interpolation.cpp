#include "maps/interpolation.h"

#include <array>
#include <functional>
#include <stdexcept>

#include "shell/numbers.h"

namespace nerit {

namespace {

// One line from index `first` to `last`; cell(i) is the grid cell at index i of the line.
void interpolate_line(const Grid& g, int first, int last,
                      const std::function<std::pair<int, int>(int)>& cell,
                      std::vector<CellText>& out) {
  const auto [r0, c0] = cell(first);
  const auto [r1, c1] = cell(last);
  const double a = val(g.text(r0, c0));
  const double b = val(g.text(r1, c1));
  const double step = divide(b - a, last - first);
  std::array<float, 17> work{};
  auto at = [&work](int i) -> float& {
    if (i < 0 || i > 16) throw std::out_of_range("Subscript out of range");
    return work[static_cast<std::size_t>(i)];
  };
  at(first) = static_cast<float>(a);
  for (int i = first + 1; i <= last - 1; ++i) {
    at(i) = static_cast<float>(static_cast<double>(at(i - 1)) + step);
    const auto [r, c] = cell(i);
    out.push_back({r, c, number_text(round_half_even(at(i)))});
  }
}

}  // namespace

std::vector<CellText> interpolate_rows(const Grid& g, const SelectedBlock& block) {
  std::vector<CellText> out;
  for (int r = block.start_row; r <= block.end_row; ++r)
    interpolate_line(g, block.start_col, block.end_col,
                     [r](int c) { return std::pair{r, c}; }, out);
  return out;
}

std::vector<CellText> interpolate_cols(const Grid& g, const SelectedBlock& block) {
  std::vector<CellText> out;
  for (int c = block.start_col; c <= block.end_col; ++c)
    interpolate_line(g, block.start_row, block.end_row,
                     [c](int r) { return std::pair{r, c}; }, out);
  return out;
}

}  // namespace nerit
