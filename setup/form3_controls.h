#pragma once
// The base-settings window's controls: the pressure sensor with its wizard, the throttle end
// points, the cylinders, the injector channels and the injectors.
#include <array>

#include "shell/controls.h"

namespace nerit {

// Combo1's text while no sensor is chosen.
inline constexpr const char* kSensorTypeText = "MAP-Sensor Type";
// Combo2's text while no channel count is chosen.
inline constexpr const char* kInjectorsText = "#Injectors";
inline constexpr const char* kSensorVoltageFailure = "Settings failure Sensorvoltage > 5 Volt";

// Text1 and Text2 by index.
enum SensorField : int { kFaktor = 0, kOffset = 1, kMaxP = 2 };
enum InjectorField : int { kOffsetIn = 0, kOffsetOut = 1, kSizeOld = 2, kSizeNew = 3 };
// The wizard's two points: Option2 and Text4 by index.
enum WizardPoint : int { kAt100kPa = 0, kAtP2 = 1 };

struct Form3Controls {
  // Pressure sensor
  Frame pressure_frame{"Pressuresensor"};
  ComboBox Combo1;  // sensor presets
  std::array<Label, 3> sensor_labels{Label{"Faktor:"}, Label{"Offset"}, Label{"max P"}};
  std::array<TextBox, 3> Text1;  // Faktor, Offset, max P
  CommandButton Command1{"Calculate"};
  CommandButton Command2{"Save"};
  CommandButton Command4{"Wizzard"};
  ListBox List1;  // the calculated table

  // Two-point wizard, shown in place of List1
  Frame wizard_frame{"Wizzard", 0, 0, false};
  Label pressure_heading{"kPa"};
  Label voltage_heading{"Volt"};
  std::array<OptionButton, 2> Option2{OptionButton{"100 kPa", true}, OptionButton{"P2"}};
  Label fixed_100kpa{"100"};
  TextBox Text3;                 // P2 in kPa
  std::array<TextBox, 2> Text4;  // sensor voltage at 100 kPa and at P2
  CommandButton Command5{"Measure"};
  CommandButton Command7{"Calc"};

  // Throttle
  Frame throttle_frame{"Drosselklappe"};
  Label value_heading{"Wert"};
  Label volt_heading{"Volt"};
  std::array<CommandButton, 2> Command6{CommandButton{"Set 100%"}, CommandButton{"Set 0%"}};
  std::array<Label, 2> end_value;  // tps_max, tps_min
  std::array<Label, 2> end_volt;
  Label live_heading{"Live"};
  Label live_value{"--"};
  Label live_volt{"--"};
  Label live_percent{"--"};

  // Cylinders
  Frame cylinder_frame{"Zyliner"};
  std::array<OptionButton, 3> Option1{OptionButton{"4"}, OptionButton{"6"}, OptionButton{"8"}};

  // Injector channels
  Frame channel_frame{"Injector channels"};
  ComboBox Combo2;  // "#1".."#6"
  Label divisor_label{"Divisor Sequentille Zündung"};
  ComboBox Combo3;  // "/1".."/6", "/8"

  // Injectors
  Frame injector_frame{"Injektoren"};
  Label size_label{"Injectorsize old / new"};
  Label offset_in_label{"Injectoroffset in / µs"};
  Label offset_out_label{"Injectoroffset out / µs"};
  std::array<TextBox, 4> Text2;  // offset in, offset out, size old, size new

  CommandButton Command3{"Close"};
};

}  // namespace nerit
