#include "maps/block_commands.h"

#include "maps/interpolation.h"

namespace nerit {

template <class Interpolate>
void BlockCommands::interpolate(Interpolate lines) {
  const auto map = static_cast<MapId>(state_.active_map);
  if (map != MapId::Correction && map != MapId::Airflow) return;  // no map pressed yet
  Grid& g = editor_.grid(map);
  // A block with equal ends fails here, before a cell changes and with the frame still up.
  const std::vector<CellText> cells = lines(g, state_.block);
  MapEdit edit{map, {}};
  for (const CellText& cell : cells) edit.set(g, cell.row, cell.col, cell.text);
  history_.record(std::move(edit));
  mc_.Frame6.visible = false;
}

void BlockCommands::Command13_Click() {
  interpolate(interpolate_rows);
}

void BlockCommands::Command14_Click() {
  interpolate(interpolate_cols);
}

void BlockCommands::Command16_Click() {
  c_.MSFlexGrid3.set_all_back_color(kWhite);
}

// Buttons without an effect.
void BlockCommands::Command8_Click() {}

void BlockCommands::Command10_Click() {}

void BlockCommands::GraphButton_Click() {
  windows_.show(FormId::Form5);
}

}  // namespace nerit
