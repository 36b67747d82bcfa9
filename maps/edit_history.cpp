#include "maps/edit_history.h"

#include <algorithm>

namespace nerit {

void MapEdit::set(Grid& g, int row, int col, std::string text) {
  std::string before = g.text(row, col);
  if (before != text) cells.push_back({row, col, before, text});
  g.set_text(row, col, std::move(text));
}

std::vector<int> MapEdit::body_rows() const {
  std::vector<int> rows;
  for (const CellChange& ch : cells)
    if (ch.row >= 1 && ch.col >= 1) rows.push_back(ch.row);
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

void EditHistory::record(MapEdit edit) {
  if (edit.cells.empty()) return;
  undone_.clear();
  done_.push_back(std::move(edit));
  if (done_.size() > kDepth) done_.pop_front();
}

std::optional<MapEdit> EditHistory::undo() {
  if (done_.empty()) return std::nullopt;
  MapEdit edit = std::move(done_.back());
  done_.pop_back();
  undone_.push_back(edit);
  return edit;
}

std::optional<MapEdit> EditHistory::redo() {
  if (undone_.empty()) return std::nullopt;
  MapEdit edit = std::move(undone_.back());
  undone_.pop_back();
  done_.push_back(edit);
  return edit;
}

}  // namespace nerit
