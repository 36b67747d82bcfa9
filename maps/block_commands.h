#pragma once
// The map command frame (Frame6): interpolation of the active map's block, "clear" of the
// automap colouring, two buttons without an effect; and the button that opens the graph.
#include "maps/cell_editor.h"
#include "maps/edit_history.h"
#include "maps/map_controls.h"
#include "maps/map_state.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"

namespace nerit {

class BlockCommands {
 public:
  BlockCommands(Form1Controls& c, MapControls& mc, MapState& state, CellEditor& editor,
                EditHistory& history, WindowHost& windows)
      : c_(c), mc_(mc), state_(state), editor_(editor), history_(history), windows_(windows) {}

  void Command13_Click();  // interpolate rows
  void Command14_Click();  // interpolate cols
  void Command16_Click();  // clear: the airflow map back to white
  void Command8_Click();
  void Command10_Click();
  void GraphButton_Click();  // the 3-D graph of the correction map

 private:
  template <class Interpolate>
  void interpolate(Interpolate lines);

  Form1Controls& c_;
  MapControls& mc_;
  MapState& state_;
  CellEditor& editor_;
  EditHistory& history_;
  WindowHost& windows_;
};

}  // namespace nerit
