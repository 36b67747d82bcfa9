#pragma once
// Live data on the maps: Automap writes the live airflow value into the airflow map cell of
// the engine's speed and load (marked yellow until "clear"), and the operating cell of the
// correction map is marked green while "Highlight" is ticked.
#include "maps/map_controls.h"
#include "maps/map_state.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

class Automap {
 public:
  Automap(Form1Controls& c, MapControls& mc, const ProgramState& vars, MapState& state)
      : c_(c), mc_(mc), vars_(vars), state_(state) {}

  // Ticking "Automap" takes a snapshot of the correction map's axes.
  void Check5_Click();
  // From every status frame while Automap is ticked. The first speed heading within 250 rpm
  // and the first load heading within 5 choose the cell; without both nothing changes.
  void automap(double speed, double load, double value);
  // The operating cell moved: the old one back to white, the new one green.
  void highlight(int grid_row, int grid_col);
  // Every status frame: the controller's operating cell (16 x map row + column; column 0 counts
  // as 1) is followed unless fokus is 1, and marked while "Highlight" is ticked and it moved.
  void operating_cell(int cell_index);

  static constexpr double kSpeedWindow = 250;
  static constexpr double kLoadWindow = 5;

 private:
  Form1Controls& c_;
  MapControls& mc_;
  const ProgramState& vars_;
  MapState& state_;
};

}  // namespace nerit
