#pragma once
// Axis and map blocks read from the controller's working memory, shown in the grids.
#include "link/replies.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

class MapBlocks {
 public:
  MapBlocks(Form1Controls& c, const ProgramState& vars) : c_(c), vars_(vars) {}

  // Load points (0x260, 0x270), speed points with the headings of both maps (0x280, 0x290),
  // correction map rows (0x2A0-0x39F) and airflow map half rows (0x3A0-0x59F). Other
  // addresses are not the maps'.
  void show(const MemoryBlockReply& block);

 private:
  Form1Controls& c_;
  const ProgramState& vars_;
};

}  // namespace nerit
