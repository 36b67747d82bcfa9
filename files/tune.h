#pragma once
// A whole tune as numbers: the settings, both axes and both maps as the settings file holds
// them, and the axes as the controller keeps them.
#include <array>
#include <cstdint>

namespace nerit {

inline constexpr int kTuneMapSize = 16;

// The axes in controller units: speed periods (rpmfaktor / rpm) and load points. A settings
// file does not hold them; they come from the window, from the controller, or from the headings.
struct ControllerAxes {
  std::array<std::int32_t, 16> rpm_points{};
  std::array<std::int16_t, 16> load_points{};

  bool operator==(const ControllerAxes&) const = default;
};

template <class T>
using TuneMap = std::array<std::array<T, kTuneMapSize>, kTuneMapSize>;  // [row][col], 0-based

struct Tune {
  std::int32_t rpmfaktor = 0;
  std::uint8_t load_type = 0;  // index of the load type list, 0..3
  std::uint8_t drucksensor = 0;
  std::uint8_t tps_min = 0, tps_max = 0;
  std::int16_t injoffset_in = 0, injoffset_out = 0;
  std::int16_t injalt = 0, injneu = 0;
  std::uint8_t injsizecorr = 0;
  std::uint8_t airflowtype = 0;
  std::uint8_t aoutmax = 0;
  std::uint8_t boost_enable = 0, boost_start = 0, boost_set = 0;
  std::uint8_t zylinder = 0;
  std::uint8_t injchannels = 0;
  std::uint8_t map_flags = 0;  // bit 0 correction map on, bit 1 airflow map on
  std::array<std::uint8_t, 6> accel_param{};
  std::uint8_t seq_faktor = 0;
  std::array<std::int16_t, kTuneMapSize> rpm_headings{};   // columns 1..16
  std::array<std::int16_t, kTuneMapSize> load_headings{};  // rows 1..16
  TuneMap<std::int16_t> correction{};                      // percent, -100..155
  TuneMap<std::int16_t> airflow{};                         // Hz or mV by airflowtype
  ControllerAxes axes{};

  bool operator==(const Tune&) const = default;
};

}  // namespace nerit
