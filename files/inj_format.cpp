#include "files/inj_format.h"

#include <string>

namespace nerit {

namespace {

using Bytes = std::vector<std::uint8_t>;
using namespace inj_offset;

void put16(Bytes& b, std::size_t at, std::int16_t v) {
  const auto u = static_cast<std::uint16_t>(v);
  b[at] = static_cast<std::uint8_t>(u & 0xFF);
  b[at + 1] = static_cast<std::uint8_t>(u >> 8);
}

std::int16_t get16(const Bytes& b, std::size_t at) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(b[at] | (b[at + 1] << 8)));
}

// Offset of cell (row, col) of a map, both 0-based, counted in cells.
std::size_t cell_index(int row, int col) {
  return static_cast<std::size_t>(row * kTuneMapSize + col);
}

}  // namespace

Bytes encode_inj(const Tune& t, Bytes b) {
  if (b.size() < kInjSize) b.resize(kInjSize, 0);
  const auto faktor = static_cast<std::uint32_t>(t.rpmfaktor);
  for (std::size_t i = 0; i < 4; ++i)
    b[kRpmfaktor + i] = static_cast<std::uint8_t>(faktor >> (8 * i));

  b[16] = t.load_type;
  b[17] = t.drucksensor;
  b[18] = t.tps_min;
  b[19] = t.tps_max;
  put16(b, 20, t.injoffset_in);
  put16(b, 22, t.injoffset_out);
  put16(b, 24, t.injalt);
  put16(b, 26, t.injneu);
  b[28] = t.injsizecorr;
  b[29] = t.airflowtype;
  b[30] = t.aoutmax;
  b[31] = t.boost_enable;
  b[32] = t.boost_start;
  b[33] = t.boost_set;
  b[34] = t.zylinder;
  b[35] = t.injchannels;
  b[36] = t.map_flags;
  for (std::size_t i = 0; i < t.accel_param.size(); ++i) b[37 + i] = t.accel_param[i];
  b[43] = t.seq_faktor;

  for (std::size_t i = 0; i < kTuneMapSize; ++i) {
    put16(b, kRpmHeadings + 2 * i, t.rpm_headings[i]);
    put16(b, kLoadHeadings + 2 * i, t.load_headings[i]);
  }
  for (int r = 0; r < kTuneMapSize; ++r)
    for (int c = 0; c < kTuneMapSize; ++c) {
      const int cell = t.correction[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
      if (cell < -100 || cell > 155)
        throw InjFormatError("Correction map row " + std::to_string(r + 1) + ", column " +
                             std::to_string(c + 1) + ": " + std::to_string(cell) +
                             " cannot be stored (the file takes -100 to 155).");
      b[kCorrection + cell_index(r, c)] = static_cast<std::uint8_t>(cell + 100);
      put16(b, kAirflow + 2 * cell_index(r, c),
            t.airflow[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)]);
    }
  return b;
}

Tune decode_inj(const Bytes& b) {
  if (b.size() < kInjSize)
    throw InjFormatError("The file holds " + std::to_string(b.size()) +
                         " bytes; a settings file has " + std::to_string(kInjSize) + ".");
  Tune t;
  std::uint32_t faktor = 0;
  for (std::size_t i = 0; i < 4; ++i)
    faktor |= static_cast<std::uint32_t>(b[kRpmfaktor + i]) << (8 * i);
  t.rpmfaktor = static_cast<std::int32_t>(faktor);

  t.load_type = b[16];
  if (t.load_type > 3)
    throw InjFormatError("Load type " + std::to_string(t.load_type) +
                         " is unknown (the file must hold 0 to 3 at byte 16).");
  t.drucksensor = b[17];
  t.tps_min = b[18];
  t.tps_max = b[19];
  t.injoffset_in = get16(b, 20);
  t.injoffset_out = get16(b, 22);
  t.injalt = get16(b, 24);
  t.injneu = get16(b, 26);
  t.injsizecorr = b[28];
  t.airflowtype = b[29];
  t.aoutmax = b[30];
  t.boost_enable = b[31];
  t.boost_start = b[32];
  t.boost_set = b[33];
  t.zylinder = b[34];
  t.injchannels = b[35];
  t.map_flags = b[36];
  for (std::size_t i = 0; i < t.accel_param.size(); ++i) t.accel_param[i] = b[37 + i];
  t.seq_faktor = b[43];

  for (std::size_t i = 0; i < kTuneMapSize; ++i) {
    t.rpm_headings[i] = get16(b, kRpmHeadings + 2 * i);
    if (t.rpm_headings[i] == 0)
      throw InjFormatError("RPM column " + std::to_string(i + 1) +
                           " has the heading 0; the speed points divide by it.");
    t.load_headings[i] = get16(b, kLoadHeadings + 2 * i);
  }
  for (int r = 0; r < kTuneMapSize; ++r)
    for (int c = 0; c < kTuneMapSize; ++c) {
      const auto row = static_cast<std::size_t>(r);
      const auto col = static_cast<std::size_t>(c);
      t.correction[row][col] = static_cast<std::int16_t>(b[kCorrection + cell_index(r, c)] - 100);
      t.airflow[row][col] = get16(b, kAirflow + 2 * cell_index(r, c));
    }
  return t;
}

}  // namespace nerit
