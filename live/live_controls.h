#pragma once
// The live-value table and what goes with it.
#include <array>
#include <string>

#include "live/live_chart.h"
#include "shell/controls.h"

namespace nerit {

struct LiveControls {
  Grid MSFlexGrid1{10, 2};  // captions in column 0, values in column 1
  CheckBox Check7{"Debugdata"};
  int boost_display = 1;                      // live boost row: 1 kPa, 2 volts, 3 raw
  std::array<std::string, 3> boost_captions;  // its caption for each
  std::array<std::string, 3> tps_captions;    // units of the live TPS row

  // The chart under the table: its channels, and the Logging menu's entry that holds it still.
  // The entry is usable while the status stream runs.
  ChartControls chart;
  MenuItem chart_freeze{"Freeze chart", true, false, false};
};

}  // namespace nerit
