#pragma once
// Write-through of edited map rows to a connected controller: one working-memory write per
// correction row, two per airflow row, each acknowledged before the next goes.
#include "link/frames.h"
#include "link/link_state.h"
#include "link/serial_session.h"
#include "maps/map_state.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

class MapRowWriter {
 public:
  MapRowWriter(Form1Controls& c, ProgramState& vars, LinkState& link, SerialSession& session)
      : c_(c), vars_(vars), link_(link), session_(session) {}

  // Rows first..last (ascending; none when last < first) from the grid's cell texts.
  void send_rows(MapId map, int first_row, int last_row);

 private:
  void send_block(int address, const FrameData& data);

  Form1Controls& c_;
  ProgramState& vars_;
  LinkState& link_;
  SerialSession& session_;
};

}  // namespace nerit
