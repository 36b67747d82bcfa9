#include "files/tune_memory.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "link/cell_codec.h"
#include "link/settings_blocks.h"
#include "shell/errors.h"
#include "shell/numbers.h"

namespace nerit {

namespace {

constexpr int kSettingsBlocks = 2, kAxisBlocks = 4;
constexpr int kFirstCorrectionBlock = kSettingsBlocks + kAxisBlocks;
constexpr int kFirstAirflowBlock = kFirstCorrectionBlock + kTuneMapSize;

std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}

std::string cell_name(const char* map, int row, int col) {
  return std::string(map) + " row " + std::to_string(row + 1) + ", column " +
         std::to_string(col + 1);
}

// A 16-bit field, low byte first; negative values as their two's complement.
void put_word(FrameData& d, int i, int value) {
  const auto w = static_cast<std::uint16_t>(value);
  d[at(i)] = static_cast<std::uint8_t>(w & 255);
  d[at(i + 1)] = static_cast<std::uint8_t>(w >> 8);
}

int word_at(const FrameData& d, int i) {
  return d[at(i)] + 256 * d[at(i + 1)];
}

FrameData block_a(const Tune& t) {
  FrameData d{};
  d[0] = t.load_type;
  d[1] = t.drucksensor;
  d[2] = t.tps_min;
  d[3] = t.tps_max;
  put_word(d, 4, t.injoffset_in);
  put_word(d, 6, t.injoffset_out);
  put_word(d, 8, t.injalt);
  put_word(d, 10, t.injneu);
  d[12] = t.injsizecorr;
  d[13] = t.airflowtype;
  d[14] = t.aoutmax;
  d[15] = t.boost_enable;
  return d;
}

FrameData block_b(const Tune& t) {
  FrameData d{};
  d[0] = t.boost_start;
  d[1] = t.boost_set;
  d[2] = t.zylinder;
  d[3] = t.injchannels;
  d[4] = t.map_flags;
  for (std::size_t k = 0; k < kAccelParamsInBlockB.size(); ++k)
    d[5 + k] = t.accel_param[at(kAccelParamsInBlockB[k])];
  d[10] = t.seq_faktor;
  return d;
}

void read_block_a(const FrameData& d, Tune& t) {
  const SettingsBlockA a = read_settings_block_a(d);
  t.load_type = static_cast<std::uint8_t>(a.load_type);
  t.drucksensor = static_cast<std::uint8_t>(a.drucksensor);
  t.tps_min = static_cast<std::uint8_t>(a.tps_min);
  t.tps_max = static_cast<std::uint8_t>(a.tps_max);
  t.injoffset_in = static_cast<std::int16_t>(a.injoffset_in);
  t.injoffset_out = static_cast<std::int16_t>(a.injoffset_out);
  t.injalt = static_cast<std::int16_t>(a.injalt);
  t.injneu = static_cast<std::int16_t>(a.injneu);
  t.injsizecorr = static_cast<std::uint8_t>(a.injsizecorr);
  t.airflowtype = static_cast<std::uint8_t>(a.airflowtype);
  t.aoutmax = static_cast<std::uint8_t>(a.aoutmax);
}

std::uint8_t correction_to_byte(int percent, int row, int col) {
  try {
    return correction_byte(percent);
  } catch (const OverflowError&) {
    throw ProgramError(cell_name("Correction map", row, col) + ": " + std::to_string(percent) +
                       " cannot be sent (the controller takes -100 to 100).");
  }
}

// The largest whole Hz that writes back as `word`, or the nearest when none does.
int hz_of_period(int word) {
  if (word == 0) return 0;  // no period: no frequency
  const int largest = kVortexTicks / word;
  if (largest > 0 && kVortexTicks / largest == word) return largest;
  return static_cast<int>(std::lround(static_cast<double>(kVortexTicks) / word));
}

// The smallest whole mV that writes back as `n`.
int millivolts_of(int n) {
  return (n * 5000 + 254) / 255;
}

std::int16_t airflow_cell(const FrameData& d, int j, int airflowtype, int row, int col) {
  const int value =
      airflowtype == 0 ? hz_of_period(word_at(d, 2 * j)) : millivolts_of(d[at(2 * j)]);
  if (value > 32767)
    throw ProgramError(cell_name("Airflow map", row, col) + ": " + std::to_string(value) +
                       " Hz is more than a tune holds (32767).");
  return static_cast<std::int16_t>(value);
}

// A period as the speed heading shows it, in whole hundreds of rpm. No period shows 0; a
// period too short for any engine shows the largest heading a tune holds.
std::int16_t rpm_heading(std::int32_t rpmfaktor, int period) {
  if (period == 0) return 0;
  return static_cast<std::int16_t>(std::clamp(speed_heading(rpmfaktor, period), -32768.0, 32767.0));
}

}  // namespace

MemoryImage memory_from_tune(const Tune& t) {
  MemoryImage m{};
  m[0] = block_a(t);
  m[1] = block_b(t);
  for (int k = 0; k < kTuneMapSize; ++k) {
    put_word(m[at(2 + k / 8)], 2 * (k % 8), t.axes.load_points[at(k)]);
    const std::int32_t period = t.axes.rpm_points[at(k)];
    if (period < 0 || period > 65535)
      throw ProgramError("Speed point of column " + std::to_string(k + 1) + ": " +
                         std::to_string(period) +
                         " cannot be sent (the controller takes 0 to 65535).");
    put_word(m[at(4 + k / 8)], 2 * (k % 8), period);
  }
  for (int r = 0; r < kTuneMapSize; ++r)
    for (int col = 0; col < kTuneMapSize; ++col) {
      m[at(kFirstCorrectionBlock + r)][at(col)] =
          correction_to_byte(t.correction[at(r)][at(col)], r, col);
      const int value = t.airflow[at(r)][at(col)];
      std::array<std::uint8_t, 2> bytes{};
      try {
        bytes = airflow_bytes(value, t.airflowtype);
      } catch (const ProgramError&) {
        throw ProgramError(cell_name("Airflow map", r, col) + ": " + std::to_string(value) +
                           " Hz cannot be sent (the period needs 1 to 65535 ticks).");
      }
      FrameData& half = m[at(kFirstAirflowBlock + 2 * r + col / 8)];
      half[at(2 * (col % 8))] = bytes[0];
      half[at(2 * (col % 8) + 1)] = bytes[1];
    }
  return m;
}

Tune tune_from_memory(const MemoryImage& m, std::int32_t rpmfaktor, const LoadAxisInputs& in) {
  Tune t;
  read_block_a(m[0], t);
  t.boost_enable = m[0][15];
  const SettingsBlockB b = read_settings_block_b(m[1]);
  t.boost_start = static_cast<std::uint8_t>(b.boost_start);
  t.boost_set = static_cast<std::uint8_t>(b.boost_set);
  t.zylinder = static_cast<std::uint8_t>(b.zylinder);
  t.injchannels = static_cast<std::uint8_t>(b.injchannels);
  t.map_flags = static_cast<std::uint8_t>(b.map_flags);
  for (std::size_t k = 0; k < kAccelParamsInBlockB.size(); ++k)
    t.accel_param[at(kAccelParamsInBlockB[k])] = static_cast<std::uint8_t>(b.accel[k]);
  t.seq_faktor = m[1][10];
  t.rpmfaktor = rpmfaktor_of_cylinders(t.zylinder);
  if (t.rpmfaktor == 0) t.rpmfaktor = rpmfaktor;

  LoadAxisInputs axis = in;
  axis.tps_min = t.tps_min;
  axis.tps_max = t.tps_max;
  for (int k = 0; k < kTuneMapSize; ++k) {
    t.axes.load_points[at(k)] = static_cast<std::int16_t>(word_at(m[at(2 + k / 8)], 2 * (k % 8)));
    const int period = word_at(m[at(4 + k / 8)], 2 * (k % 8));
    t.axes.rpm_points[at(k)] = period;
    t.rpm_headings[at(k)] = rpm_heading(t.rpmfaktor, period);
    t.load_headings[at(k)] = static_cast<std::int16_t>(default_load_heading(t.load_type, k, axis));
  }
  for (int r = 0; r < kTuneMapSize; ++r)
    for (int col = 0; col < kTuneMapSize; ++col) {
      const std::uint8_t stored = m[at(kFirstCorrectionBlock + r)][at(col)];
      t.correction[at(r)][at(col)] = static_cast<std::int16_t>(correction_percent(stored));
      t.airflow[at(r)][at(col)] =
          airflow_cell(m[at(kFirstAirflowBlock + 2 * r + col / 8)], col % 8, t.airflowtype, r, col);
    }
  return t;
}

ControllerAxes axes_from_headings(const Tune& t, const LoadAxisInputs& in) {
  LoadAxisInputs axis = in;
  axis.tps_min = t.tps_min;
  axis.tps_max = t.tps_max;
  ControllerAxes a;
  for (int k = 0; k < kTuneMapSize; ++k) {
    a.rpm_points[at(k)] = to_int32(divide(t.rpmfaktor, t.rpm_headings[at(k)]));
    a.load_points[at(k)] = load_point(t.load_type, k, std::to_string(t.load_headings[at(k)]), axis);
  }
  return a;
}

EepromImage eeprom_from_tune(const Tune& t) {
  EepromImage e{};
  e[0] = block_a(t);
  e[0][15] = 0;
  for (int k = 0; k < 12; ++k) put_word(e[at(1 + k / 8)], 2 * (k % 8), t.axes.load_points[at(k)]);
  for (int r = 0; r < 12; ++r)
    for (int col = 0; col < 8; ++col)
      e[at(3 + r / 2)][at(8 * (r % 2) + col)] =
          correction_to_byte(t.correction[at(r)][at(col)], r, col);
  return e;
}

Tune with_eeprom(Tune t, const EepromImage& e) {
  read_block_a(e[0], t);
  for (int k = 0; k < 12; ++k)
    t.axes.load_points[at(k)] = static_cast<std::int16_t>(word_at(e[at(1 + k / 8)], 2 * (k % 8)));
  for (int r = 0; r < 12; ++r)
    for (int col = 0; col < 8; ++col)
      t.correction[at(r)][at(col)] =
          static_cast<std::int16_t>(correction_percent(e[at(3 + r / 2)][at(8 * (r % 2) + col)]));
  return t;
}

}  // namespace nerit
