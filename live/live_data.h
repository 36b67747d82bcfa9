#pragma once
// Live engine values from the controller's status frames: the program-wide live variables,
// the values in the program's units and the live table.
#include <array>

#include "link/replies.h"
#include "live/live_controls.h"
#include "live/status_row.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

struct LiveValues {
  LiveRow row;
  double map_raw = 0;       // MAP sensor byte
  double analog_mv = 0;     // analog input 3, whole millivolts
  double analog_volts = 0;  // analog input 3
  double airflow_in_hz = 0;
  int cell_index = 0;  // the correction map cell the controller works in, 16 x row + column
};

class LiveData {
 public:
  LiveData(LiveControls& lc, const Form1Controls& c, ProgramState& vars, Platform& platform)
      : lc_(lc), c_(c), vars_(vars), p_(platform) {}

  // Start-up: the unit captions of the boost and TPS rows, then (later in the start-up) the
  // table with its captions.
  void load_captions();
  void Form_Load();
  // The frame's values; drehzahl, tps_raw, tps_in, tps_in_volt and map_volt follow it. A speed
  // that cannot be computed, or one of 9000 rpm and more, leaves drehzahl as it was; a throttle
  // range of zero leaves tps_in.
  LiveValues status(const StatusReply& frame);
  // Rows 1-9 of the live table.
  void show(const LiveValues& v);

 private:
  LiveControls& lc_;
  const Form1Controls& c_;
  ProgramState& vars_;
  Platform& p_;
};

}  // namespace nerit
