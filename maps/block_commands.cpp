#include "maps/block_commands.h"

#include "maps/interpolation.h"
#include "shell/numbers.h"

namespace nerit {

Grid* BlockCommands::active_grid() {
  if (state_.active_map == static_cast<int>(MapId::Correction)) return &c_.MSFlexGrid2;
  if (state_.active_map == static_cast<int>(MapId::Airflow)) return &c_.MSFlexGrid3;
  return nullptr;
}

template <class Interpolate>
void BlockCommands::interpolate(Interpolate lines) {
  Grid* g = active_grid();
  if (!g) return;
  // A block with equal ends fails here, before a cell changes and with the frame still up.
  const std::vector<CellText> cells = lines(*g, state_.block);
  MapEdit edit{static_cast<MapId>(state_.active_map), {}};
  for (const CellText& cell : cells) edit.set(*g, cell.row, cell.col, cell.text);
  history_.record(std::move(edit));
  c_.Frame6.visible = false;
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

void BlockCommands::Command8_Click() {
  // An empty count, kept as the button always had it.
  for (int i = 1; i <= 12; ++i) {
  }
}

void BlockCommands::Command10_Click() {
  for (int i = 1; i <= 16; ++i) (void)hex_text(c_.rpm_points[static_cast<std::size_t>(i)]);
}

void BlockCommands::GraphButton_Click() {
  windows_.show(FormId::Form5);
}

}  // namespace nerit
