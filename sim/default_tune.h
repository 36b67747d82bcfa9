#pragma once
// What a fresh controller holds: a four-cylinder MAP tune with a neutral correction map.
#include <string>

#include "sim/controller_memory.h"

namespace nerit::sim {

inline constexpr const char* kDefaultFirmware = "Nerit SIM V1.00 ";  // 16 characters

ControllerMemory default_tune();

// The manifold pressure of load point k (0-15) of the default axis, 20..250 kPa.
double default_load_kpa(int k);
// The speed of column c (1-16) of the default axis, 500..8000 rpm.
int default_column_rpm(int column);

}  // namespace nerit::sim
