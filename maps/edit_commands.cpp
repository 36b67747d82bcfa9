#include "maps/edit_commands.h"

#include "maps/block_text.h"
#include "shell/numbers.h"

namespace nerit {

std::string EditCommands::copy_block(MapId map) {
  const Grid& g = editor_.grid(map);
  const SelectedBlock& b = state_.block;
  if (state_.active_map == static_cast<int>(map) && b.end_row >= b.start_row &&
      b.end_col >= b.start_col)
    return block_text(g, b.start_row, b.start_col, b.end_row, b.end_col);
  return block_text(g, g.row, g.col, g.row, g.col);
}

void EditCommands::paste_block(MapId map, std::string_view text) {
  Grid& g = editor_.grid(map);
  if (editor_.box(map).visible) editor_.close_box(map);
  const int top = g.row, left = g.col;
  if (top < 1 || left < 1) return;  // headings take no pasted values
  MapEdit edit{map, {}};
  const auto rows = parse_block_text(text);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < rows[i].size(); ++j) {
      const int r = top + static_cast<int>(i), c = left + static_cast<int>(j);
      if (r > kMapSize || c > kMapSize || rows[i][j].empty()) continue;
      edit.set(g, r, c, number_text(CellEditor::clamp_body(map, val(rows[i][j]))));
    }
  }
  state_.block = {top, left, top, left};
  g.set_current(top, left);
  history_.record(edit);
  write_through(edit);
}

void EditCommands::write_through(const MapEdit& edit) {
  if (vars_.connected == 1)
    for (int r : edit.body_rows()) writer_.send_rows(edit.map, r, r);
}

void EditCommands::apply(const MapEdit& edit, bool forward) {
  Grid& g = editor_.grid(edit.map);
  if (editor_.box(edit.map).visible) editor_.close_box(edit.map);
  for (const CellChange& ch : edit.cells)
    g.set_text(ch.row, ch.col, forward ? ch.after : ch.before);
  write_through(edit);
}

void EditCommands::undo() {
  if (auto edit = history_.undo()) apply(*edit, false);
}

void EditCommands::redo() {
  if (auto edit = history_.redo()) apply(*edit, true);
}

}  // namespace nerit
