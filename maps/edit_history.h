#pragma once
// Undo and redo of committed map edits. An edit is the list of cells it changed, with their
// texts before and after; edits that change nothing are not kept.
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "maps/map_state.h"
#include "shell/controls.h"

namespace nerit {

struct CellChange {
  int row = 0, col = 0;
  std::string before, after;
};

struct MapEdit {
  MapId map = MapId::Correction;
  std::vector<CellChange> cells;

  // Writes `text` into the cell and notes the change.
  void set(Grid& g, int row, int col, std::string text);
  // Rows 1..16 the edit touched, ascending, each once.
  std::vector<int> body_rows() const;
};

class EditHistory {
 public:
  static constexpr std::size_t kDepth = 200;

  void record(MapEdit edit);  // forgets what could be redone
  std::optional<MapEdit> undo();
  std::optional<MapEdit> redo();
  bool can_undo() const { return done_.size() > 0; }
  bool can_redo() const { return undone_.size() > 0; }

 private:
  std::deque<MapEdit> done_;
  std::vector<MapEdit> undone_;
};

}  // namespace nerit
