#include "maps/block_text.h"

namespace nerit {

std::string block_text(const Grid& g, int first_row, int first_col, int last_row, int last_col) {
  std::string out;
  for (int r = first_row; r <= last_row; ++r) {
    if (r > first_row) out += '\n';
    for (int c = first_col; c <= last_col; ++c) {
      if (c > first_col) out += '\t';
      out += g.text(r, c);
    }
  }
  return out;
}

std::vector<std::vector<std::string>> parse_block_text(std::string_view text) {
  std::vector<std::vector<std::string>> rows;
  while (!text.empty()) {
    std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    std::vector<std::string>& row = rows.emplace_back();
    for (;;) {
      const std::size_t tab = line.find('\t');
      row.emplace_back(line.substr(0, tab));
      if (tab == std::string_view::npos) break;
      line = line.substr(tab + 1);
    }
  }
  return rows;
}

}  // namespace nerit
