#pragma once
// What a fresh controller holds: a four-cylinder MAP tune with a neutral correction map, or the
// demo tune, the same with a shaped correction map and boost control on.
#include <string>

#include "sim/controller_memory.h"

namespace nerit::sim {

inline constexpr const char* kDefaultFirmware = "Nerit SIM V1.00 ";  // 16 characters

ControllerMemory default_tune();
// Richer at high load and speed, a little lean at light-load cruise (-15..+25 %, smooth from
// cell to cell); boost control enabled in working memory.
ControllerMemory demo_tune();

// The manifold pressure of load point k (0-15) of the default axis, 20..250 kPa.
double default_load_kpa(int k);
// The speed of column c (1-16) of the default axis, 500..8000 rpm.
int default_column_rpm(int column);

}  // namespace nerit::sim
