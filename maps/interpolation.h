#pragma once
// Straight lines across a block: each row between its first and last column, or each column
// between its first and last row. The end cells keep their values. Pure: returns the cells
// to write, the caller writes them.
#include <string>
#include <vector>

#include "maps/map_state.h"
#include "shell/controls.h"

namespace nerit {

struct CellText {
  int row = 0, col = 0;
  std::string text;
};

// The running value is kept in single precision, so the error grows along the line; each cell
// is that value rounded (ties to even). A block with equal ends fails with
// DivisionByZeroError before anything is written.
std::vector<CellText> interpolate_rows(const Grid& g, const SelectedBlock& block);
std::vector<CellText> interpolate_cols(const Grid& g, const SelectedBlock& block);

}  // namespace nerit
