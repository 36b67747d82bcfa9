#pragma once
// What the map editor keeps beside the grids: the selected block (shared by both maps), the
// map the block commands act on, the automap axis snapshot and the highlighted cell.
#include <array>
#include <cstdint>

namespace nerit {

enum class MapId { Correction = 2, Airflow = 3 };  // the numbers are the grids' own

struct SelectedBlock {
  int start_row = 0, start_col = 0;  // where the mouse button went down
  int end_row = 0, end_col = 0;      // the selection's far corner when it came up
};

struct MapState {
  SelectedBlock block;
  int active_map = 0;  // 2 correction, 3 airflow: the map the block commands act on

  // Axes of the correction map when Automap was ticked, index 1..16.
  std::array<double, 17> automap_rpm{};
  std::array<std::int16_t, 17> automap_load{};

  // The operating cell marked green on the correction map.
  int marked_row = 0, marked_col = 0;
  // The controller's operating cell: its index in the previous status frame, and its map row
  // (0-15) and column (1-15).
  int previous_cell = -1;
  int cell_row = 0, cell_col = 0;
};

}  // namespace nerit
