#pragma once
// The tuning panels beside the live table, chosen in List2.
#include <array>

#include "shell/controls.h"

namespace nerit {

// Index of each tuning panel in Frame1, the same as its entry in List2.
enum PanelIndex : int {
  kPanelInjektoradjust = 0,
  kPanelAirflowFuelcut = 1,
  kPanelBoostcontrol = 2,
  kPanelAirflowOutput = 3,
  kPanelAccelerationFuel = 4,
  kPanelCount = 5,
};

inline constexpr const char* kFrequencyOutputCaption = "Airflow Out: Karman Vortex 20-3000 Hz";
inline constexpr const char* kVoltageOutputCaption = "Airflow Out: Voltage 0-5000 mV";

struct PanelControls {
  PanelControls();

  ListBox List2;
  std::array<Frame, kPanelCount> Frame1;
  std::array<ScrollBar, 6> HScroll1;  // acceleration fuel
  std::array<Label, 6> Label8;        // their values
  CheckBox Check3{"Boostcontroll enabled"};
  OptionButton OptionFrequency{"Karman Vortex"};  // airflow output as a frequency
  OptionButton OptionAnalog{"Analog MAF / MAP"};  // airflow output as a voltage
  Label Label1{"Input:"};                         // airflow input
  ComboBox Combo3;                                // airflow input
  Label clamp_label{"Clamp / mV:"};
  TextBox Text1;  // airflow clamp, mV
};

}  // namespace nerit
