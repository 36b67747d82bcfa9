#pragma once
// A block of cells as tab-separated text, the form spreadsheets copy and paste.
#include <string>
#include <string_view>
#include <vector>

#include "shell/controls.h"

namespace nerit {

// Rows first_row..last_row of columns first_col..last_col: cells joined by tabs, rows by
// line feeds, no line feed after the last row.
std::string block_text(const Grid& g, int first_row, int first_col, int last_row, int last_col);

// Rows of cells; CR LF or LF ends a row, a final line end adds no row.
std::vector<std::vector<std::string>> parse_block_text(std::string_view text);

}  // namespace nerit
