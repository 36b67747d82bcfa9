#pragma once
// The program-wide variables every window reads and writes. Numbers start at 0, texts empty.
#include <cstdint>
#include <filesystem>
#include <string>

namespace nerit {

struct ProgramState {
  std::filesystem::path pfad;  // program folder; data files are pfad + "\Name"
  int connected = 0;           // 1 while a controller has answered
  int port = 0;                // scan loop variable / the port that answered
  double comport = 0;          // port handed over to the firmware window
  int debugmode = 0;           // 1 while a port is open by hand for debug text

  double drucksensor = 0;   // MAP sensor choice
  std::string map_volt;     // measured MAP sensor voltage, "0.00"
  double tps_min = 0;       // raw throttle closed
  double tps_max = 0;       // raw throttle fully open
  double tps_raw = 0;       // live raw throttle
  double tps_in = 0;        // live throttle %
  std::string tps_in_volt;  // live throttle voltage, "0.00"

  double drehzahl = 0;   // engine speed, rpm
  double rpmfaktor = 0;  // rpmfaktor / rpm = the controller's speed period

  double injsizecorr = 0;
  double injchannels = 0;
  double zylinder = 0;
  std::uint8_t seq_faktor = 0;
  double injin_alt = 0;
  double injout_alt = 0;
  double injoffset_in = 0;
  double injoffset_out = 0;
  double injalt = 0;
  double injneu = 0;

  double airflowtype = 0;  // 0 frequency output, otherwise voltage
  double aoutmax = 0;      // airflow output clamp
  int fokus = 0;           // which input field edits from the keyboard
};

}  // namespace nerit
