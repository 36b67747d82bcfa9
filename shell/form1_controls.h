#pragma once
// The main window's controls and the form-level state that lives beside them. Handlers in
// every folder read and write these; the Qt layer shows them.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "shell/controls.h"
#include "shell/pressure_tables.h"

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

  // Maps: the grids and what the transfers and files read beside them. The editor's own
  // controls are the map editor's.
  Grid MSFlexGrid2{17, 17};  // injector correction
  Grid MSFlexGrid3{17, 17};  // airflow output
  CheckBox Check6{"Map Aktiv"};
  CheckBox Check4{"Aktiv"};
  ComboBox Combo1;  // load type

  // Enabled once a controller answers; the live data owns what it does.
  CheckBox Check1{"Realtimedata"};

  Timer Timer1{250};
  Timer Timer2{250};
  Timer Timer3{500};
  Timer Timer4{0};
  Timer Timer5{2500};

  // Form-level state
  PressureTable pressure_table{};              // raw sensor byte -> kPa
  std::array<std::int32_t, 17> rpm_points{};   // 1..16: rpmfaktor / rpm of each column
  int logging = 0;                             // 1 while a data log records
  std::array<std::int16_t, 17> load_points{};  // 1..16: load axis in controller units
  // Tuning values the settings blocks carry (the panels show them).
  double boost_enable = 0;
  double boost_start = 0;  // raw sensor byte
  double boost_set = 0;
  std::array<double, 6> accel_param{};
};

}  // namespace nerit
