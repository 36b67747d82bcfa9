#pragma once
// The load axis of a load type: the heading each load row shows and the point the controller
// gets for it. Pure: the pressure-sensor table comes in as bytes.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nerit {

enum LoadType : int {
  kLoadTps = 0,      // "TPS / %"
  kLoadMap = 1,      // "MAP / kPa abs."
  kLoadAnalog = 2,   // "Analog #3 / mVolt"
  kLoadAirflow = 3,  // "Airflow Karmann Vortex / Hz"
};

struct LoadAxisInputs {
  double tps_min = 0;                  // raw throttle closed
  double tps_max = 0;                  // raw throttle fully open
  std::vector<std::uint8_t> pressure;  // "\PressureSensor.dat": raw sensor byte per kPa
};

// Heading of load row k + 1 (k = 0..15) when the load type is chosen.
//  TPS: Int(k x 100 / 15) %; mV: Int(k x 5000 / 15); Hz: 50 + Int(k x 2950 / 15).
//  MAP: k x Int(L / 12) kPa over a table of L bytes (kPa 0..L-1); a heading past the table's
//  last kPa becomes that last kPa, so the top rows of a short step share the sensor's top.
double default_load_heading(int load_type, int k, const LoadAxisInputs& in);

// The controller's point for load row k + 1 showing `heading`. TPS and mV points follow the
// row (even steps between the TPS end points, Int(k x 255 / 15)); MAP and airflow points
// follow the heading: the sensor byte at that kPa (past the table: its last byte, no table:
// 0), and 32762 - Int(250000 / Hz).
std::int16_t load_point(int load_type, int k, std::string_view heading, const LoadAxisInputs& in);

}  // namespace nerit
