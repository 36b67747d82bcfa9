#pragma once
// The two-point wizard of the pressure sensor: the sensor voltage at 100 kPa and at a second
// pressure P2 give "Faktor:" and "Offset".
#include <string>

#include "setup/form3_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

// Faktor and Offset of the line through (100 kPa, u100) and (p2, u2): slope m = (u100 - u2) /
// (100 - p2), intercept o = u100 - m x 100, then m / 5 and o / 5. p2 must not be 100.
struct SensorLineFit {
  double faktor, offset;
};
SensorLineFit fit_sensor_line(double u100, double p2, double u2);

inline constexpr const char* kSameP2Text =
    "P2 must differ from 100 kPa: two points at one pressure give no sensor line.";
inline constexpr const char* kNoVoltageText =
    "No sensor voltage measured yet: connect and tick \"Realtimedata\" first.";

class SensorWizard {
 public:
  SensorWizard(Form3Controls& c, const ProgramState& vars, Platform& platform)
      : c_(c), vars_(vars), p_(platform) {}

  // "Wizzard": the wizard takes the list's place.
  void Command4_Click();
  // Measure: the main window's current sensor voltage into the field Option2 chooses.
  void Command5_Click();
  // "Calc": "Faktor:" and "Offset" from the two points, in the system's decimal form.
  void Command7_Click();

 private:
  Form3Controls& c_;
  const ProgramState& vars_;
  Platform& p_;
};

}  // namespace nerit
