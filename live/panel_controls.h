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

// Shown after each "Apply": what the panels send lives in working memory only.
inline constexpr const char* kMakePermanentReminder =
    "Einstellungen werden erst mit 'Make Permanent' dauerhaft übernommen";

struct PanelControls {
  PanelControls();

  ListBox List2;
  std::array<Frame, kPanelCount> Frame1;

  // Manual injector adjust
  Slider Slider1;
  Label Label6{"0%"};  // the slider as a percentage

  // Airflow fuel cut: shown, nothing to set
  Label fuelcut_note;

  // Boost control
  CheckBox Check3{"Boostcontroll enabled"};
  Label boost_start_label{"Start / kPa:"};
  TextBox boost_start_text;  // absolute kPa
  Label boost_set_label{"Set / %"};
  TextBox boost_set_text;
  CommandButton Command7{"Apply"};
  Label analog_in_label{"Analog In Channel"};
  ComboBox Combo4;
  Frame solenoid_frame{"Solenoid out"};
  OptionButton solenoid_isc{"ISC #1"};
  OptionButton solenoid_injector6{"Injektor #6"};

  // Airflow output
  OptionButton OptionFrequency{"Karman Vortex"};  // airflow output as a frequency
  OptionButton OptionAnalog{"Analog MAF / MAP"};  // airflow output as a voltage
  Label Label1{"Input:"};                         // airflow input
  ComboBox Combo3;                                // airflow input
  Label clamp_label{"Clamp / mV:"};
  TextBox Text1;  // airflow clamp, mV
  CommandButton Command6{"Apply"};

  // Acceleration fuel: inner frames, bar captions, bars and their values
  Frame throttle_frame{"Throttle"};
  Frame map_frame{"Map"};
  std::array<Label, 6> accel_captions;
  std::array<ScrollBar, 6> HScroll1;
  std::array<Label, 6> Label8;
};

}  // namespace nerit
