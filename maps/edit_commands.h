#pragma once
// Copy and paste of a block as tab-separated text, undo and redo of committed edits. A paste,
// an undo and a redo are commits: written through to a connected controller like Enter.
#include <string>
#include <string_view>

#include "maps/cell_editor.h"
#include "maps/edit_history.h"
#include "maps/map_row_writer.h"
#include "maps/map_state.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

class EditCommands {
 public:
  EditCommands(ProgramState& vars, MapState& state, CellEditor& editor, MapRowWriter& writer,
               EditHistory& history)
      : vars_(vars), state_(state), editor_(editor), writer_(writer), history_(history) {}

  // The selected block when it lies on this map (and runs down and right), else the current
  // cell.
  std::string copy_block(MapId map);
  // Pasted from the current cell down and right; cells past the map's edge and empty cells
  // are left alone, values are clamped to the map's range.
  void paste_block(MapId map, std::string_view text);
  void undo();
  void redo();

 private:
  void apply(const MapEdit& edit, bool forward);
  // Sends the rows the edit touched when the controller is online.
  void write_through(const MapEdit& edit);

  ProgramState& vars_;
  MapState& state_;
  CellEditor& editor_;
  MapRowWriter& writer_;
  EditHistory& history_;
};

}  // namespace nerit
