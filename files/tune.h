#pragma once
// A whole tune as the settings file holds it: the settings, both axes and both maps as numbers.
#include <array>
#include <cstdint>

namespace nerit {

inline constexpr int kTuneMapSize = 16;

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
  TuneMap<std::int16_t> airflow{};

  bool operator==(const Tune&) const = default;
};

}  // namespace nerit
