#pragma once
// The main window's controls and the form-level state that lives beside them. Handlers in
// every folder read and write these; the Qt layer shows them.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "shell/controls.h"

namespace nerit {

struct Form1Menus {
  MenuItem datei{"Datei"};
  MenuItem laden{"Laden"};
  MenuItem speichern{"Speichern"};

  MenuItem controller{"Controller"};
  MenuItem autoconnect{"Autoconnect"};
  MenuItem Lesen{"Read Data"};
  MenuItem Schreiben{"Write Data"};
  MenuItem firmwareupdate{"Firmwareupdate"};

  MenuItem setup{"Setup"};
  MenuItem Grundeinstellungen{"Basesettings"};
  MenuItem airflowsettings{"Airflowsettings"};
  MenuItem Drehzahlpunkte{"RPM Points"};
  MenuItem Lastpunke{"Load Points"};

  MenuItem logging{"Logging"};
  MenuItem echtzeit{"Realtimedata"};
  MenuItem lstart{"Start"};
  MenuItem lstop{"Stop"};
};

// Index of each tuning panel in Frame1, the same as its entry in List2.
enum PanelIndex : int {
  kPanelInjektoradjust = 0,
  kPanelAirflowFuelcut = 1,
  kPanelBoostcontrol = 2,
  kPanelAirflowOutput = 3,
  kPanelAccelerationFuel = 4,
  kPanelCount = 5,
};

inline constexpr int kMapSize = 16;  // rows and columns of each map

struct Form1Controls {
  Form1Controls();

  std::string caption;         // window caption
  std::string caption_prefix;  // "Nerit: ", kept for the file name that follows it

  Form1Menus menus;

  // Link
  CommandButton Command1{"Connect"};
  CommandButton Command12{"Read Data from Unit"};
  CommandButton Command9{"Write Data to Unit"};
  CommandButton Command15{"Update Settings"};
  std::vector<CommandButton> Command4{CommandButton{"Write to EEProm"}};
  CommandButton Command2{"Reload EEProm"};
  CommandButton Command5{"Make Permanent"};
  CommandButton Command11{"Command11"};
  std::array<Label, 3> Label4;  // link word, port, firmware
  ComboBox Combo2;              // debug port
  ListBox List1;                // log

  // Maps
  Frame correction_frame{"Injektorcorrection (RPM x Load)"};
  Frame airflow_map_frame{"Airflow Output"};
  Grid MSFlexGrid2{17, 17};  // injector correction
  Grid MSFlexGrid3{17, 17};  // airflow output
  CheckBox Check6{"Map Aktiv"};
  CheckBox Check4{"Aktiv"};
  CheckBox Check5{"Automap"};
  CheckBox Check2{"Highlight"};
  Label load_type_label{"Loadtype"};
  ComboBox Combo1;  // load type
  TextBox Text2;    // floating cell editor of MSFlexGrid2
  TextBox Text5;    // floating cell editor of MSFlexGrid3
  // Map command frame, shown at a grid on a right-button press.
  Frame Frame6;
  CommandButton Command13{"interpolate rows"};
  CommandButton Command14{"Interpolate cols"};
  CommandButton Command16{"clear"};
  CommandButton Command8{"Command8"};
  CommandButton Command10{"Command10"};
  CommandButton GraphButton{"Graph"};  // opens the 3-D graph of the correction map

  // Live values
  Grid MSFlexGrid1{10, 2};
  CheckBox Check1{"Realtimedata"};
  CheckBox Check7{"Debugdata"};

  // Tuning panels, chosen in List2
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

  Timer Timer1{250};
  Timer Timer2{250};
  Timer Timer3{500};
  Timer Timer4{0};
  Timer Timer5{2500};

  // Form-level state
  std::array<std::int16_t, 401> pressure_table{};  // raw sensor byte -> kPa
  std::array<std::int32_t, 17> rpm_points{};       // 1..16: rpmfaktor / rpm of each column
  std::array<std::string, 3> boost_captions;       // units of the live boost row
  std::array<std::string, 3> tps_captions;         // units of the live TPS row
  int logging = 0;                                 // 1 while a data log records
  std::array<std::int16_t, 17> load_points{};      // 1..16: load axis in controller units
  int boost_display = 1;                           // live boost row: 1 kPa, 2 volts, 3 raw
  double boost_enable = 0;
  double boost_start = 0;  // raw sensor byte
  double boost_set = 0;
  std::array<double, 6> accel_param{};
};

}  // namespace nerit
