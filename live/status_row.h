#pragma once
// The values one status frame gives, in the order the data log writes them. Pure: the window
// and the command-line log compute them alike.
#include "link/replies.h"
#include "shell/pressure_tables.h"

namespace nerit {

struct LiveRow {
  double drehzahl = 0;
  double inj_in_us = 0;
  double inj_out_us = 0;
  double adjust_percent = 0;
  double boost_kpa = 0;
  double tps_in = 0;
  double airflow_out_hz = 0;
};

// What turns the frame's raw values into the program's units.
struct StatusScales {
  double rpmfaktor = 0;
  double tps_min = 0, tps_max = 0;
  const PressureTable* pressure = nullptr;  // raw MAP byte -> kPa
};

// A speed that cannot be computed, or one of 9000 rpm and more, keeps the previous row's; so
// does the throttle when its range is zero (then clamped to 0..100 all the same).
LiveRow status_row(const StatusReply& frame, const StatusScales& scales, const LiveRow& previous);

// The frequency of a vortex period in 4 µs ticks; no period, no frequency.
double vortex_hz(long period);

}  // namespace nerit
