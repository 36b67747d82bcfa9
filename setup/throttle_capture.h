#pragma once
// The "Drosselklappe" frame: the throttle's end points as raw value and voltage, captured from
// the live value, and the live value with its percentage while the window is open.
#include <string>

#include "setup/form3_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

// The whole part of (raw - tps_min) x (100 / (tps_max - tps_min)) and " %"; "-- %" when the
// end points are equal.
std::string throttle_percent_text(double raw, double tps_min, double tps_max);

// Command6 by index.
enum ThrottleEnd : int { kOpen = 0, kClosed = 1 };

class ThrottleCapture {
 public:
  ThrottleCapture(Form3Controls& c, ProgramState& vars, Platform& platform)
      : c_(c), vars_(vars), p_(platform) {}

  // The frame usable only online; the stored end points shown, the live labels "--".
  void load();
  // The live raw value, its voltage and its percentage.
  void Timer1_Timer();
  // "Set 100%" (0) / "Set 0%" (1): the live raw value becomes tps_max / tps_min.
  void Command6_Click(int index);

  static constexpr int kIntervalMs = 250;

 private:
  void show_end(int index, double raw);
  std::string volts(double raw) const;

  Form3Controls& c_;
  ProgramState& vars_;
  Platform& p_;
};

}  // namespace nerit
