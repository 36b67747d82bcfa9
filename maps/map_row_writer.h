#pragma once
// Write-through of edited map rows to a connected controller: one working-memory write per
// correction row, two per airflow row, each acknowledged before the next goes.
#include "link/wire.h"
#include "maps/map_state.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

class MapRowWriter {
 public:
  MapRowWriter(Form1Controls& c, const ProgramState& vars, Wire& wire)
      : c_(c), vars_(vars), wire_(wire) {}

  // Rows first..last (ascending; none when last < first) from the grid's cell texts.
  void send_rows(MapId map, int first_row, int last_row);

 private:
  Form1Controls& c_;
  const ProgramState& vars_;
  Wire& wire_;
};

}  // namespace nerit
