#pragma once
// Switching the controller's streams on and off: status frames ("Realtimedata") and debug text
// ("Debugdata"), the locks the status stream puts on the window, and the live table's boost row.
#include "link/wire.h"
#include "live/live_chart.h"
#include "live/live_controls.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

class LiveStream {
 public:
  LiveStream(Form1Controls& c, LiveControls& lc, LiveChart& chart, ProgramState& vars, Wire& wire)
      : c_(c), lc_(lc), chart_(chart), vars_(vars), wire_(wire) {}

  // Offline nothing happens. Ticked: status frames on, every write to the controller locked,
  // logging may start, the chart runs and may be frozen. Cleared: the reverse; a frozen chart
  // thaws.
  void Check1_Click();
  // Logging menu "Realtimedata": flips the box, whose change runs its click, then runs the
  // click itself, so the frame of the new state goes out twice.
  void echtzeit_Click();
  // Offline nothing happens; otherwise debug text on or off.
  void Check7_Click();
  // On the boost row: the next unit (kPa, volts, raw, kPa ...) and its caption.
  void MSFlexGrid1_Click();
  // Logging menu "Freeze chart": the chart stops or goes on taking samples.
  void chart_freeze_Click();

 private:
  Form1Controls& c_;
  LiveControls& lc_;
  LiveChart& chart_;
  ProgramState& vars_;
  Wire& wire_;
};

}  // namespace nerit
