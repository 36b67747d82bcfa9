#pragma once
// A settings file built field by field at the offsets of its layout, as a program writing
// each field with a positioned write produces it. Load type TPS with its default load axis,
// so that a load and a save reproduce it byte for byte.
#include <cstdint>
#include <vector>

namespace nerit::testing {

struct InjGolden {
  std::vector<std::uint8_t> bytes = std::vector<std::uint8_t>(880, 0);

  void put(std::size_t offset, std::size_t size, long value) {
    for (std::size_t i = 0; i < size; ++i)
      bytes.at(offset + i) =
          static_cast<std::uint8_t>((static_cast<unsigned long>(value) >> (8 * i)) & 0xFF);
  }

  static constexpr int kRpm[16] = {500,  1000, 1500, 2000, 2500, 3000, 3500, 4000,
                                   4500, 5000, 5500, 6000, 6500, 7000, 7500, 8000};
  static constexpr int kTpsLoad[16] = {0,  6,  13, 20, 26, 33, 40, 46,
                                       53, 60, 66, 73, 80, 86, 93, 100};
  static int correction(int r, int c) { return (r * 7 + c * 3) % 60 - 20; }  // -20..39
  static int airflow(int r, int c) { return 20 + 100 * r + 3 * c; }

  InjGolden() {
    put(0, 4, 7500000);  // rpmfaktor
    put(16, 1, 0);       // load type TPS
    put(17, 1, 1);       // drucksensor: MPX4250
    put(18, 1, 25);      // tps_min
    put(19, 1, 230);     // tps_max
    put(20, 2, 1000);    // injoffset_in
    put(22, 2, 750);     // injoffset_out
    put(24, 2, 440);     // injalt
    put(26, 2, 550);     // injneu
    put(28, 1, 102);     // injsizecorr
    put(29, 1, 2);       // airflowtype: voltage, input 2
    put(30, 1, 204);     // aoutmax
    put(31, 1, 1);       // boost_enable
    put(32, 1, 100);     // boost_start
    put(33, 1, 128);     // boost_set
    put(34, 1, 4);       // zylinder
    put(35, 1, 15);      // injchannels
    put(36, 1, 3);       // map_flags
    const int accel[6] = {3, 120, 40, 5, 90, 17};
    for (std::size_t i = 0; i < 6; ++i) put(37 + i, 1, accel[i]);
    put(43, 1, 8);  // seq_faktor
    for (std::size_t i = 0; i < 16; ++i) {
      put(48 + 2 * i, 2, kRpm[i]);
      put(80 + 2 * i, 2, kTpsLoad[i]);
    }
    for (int r = 0; r < 16; ++r)
      for (int c = 0; c < 16; ++c) {
        const auto cell = static_cast<std::size_t>(r * 16 + c);
        put(112 + cell, 1, correction(r, c) + 100);
        put(368 + 2 * cell, 2, airflow(r, c));
      }
  }
};

}  // namespace nerit::testing
