#include "link/settings_blocks.h"

#include "shell/numbers.h"

namespace nerit {

int map_flags(const Form1Controls& c) {
  return (c.Check6.value == 1 ? 1 : 0) | (c.Check4.value == 1 ? 2 : 0);
}

FrameData settings_block_a(const Form1Controls& c, ProgramState& vars) {
  vars.injsizecorr = floor_part(divide(vars.injalt * 128, vars.injneu));
  FrameData d{};
  d[0] = to_byte(c.Combo1.list_index);
  d[1] = to_byte(vars.drucksensor);
  d[2] = to_byte(vars.tps_min);
  d[3] = to_byte(vars.tps_max);
  const double words[4] = {vars.injoffset_in, vars.injoffset_out, vars.injalt, vars.injneu};
  for (int i = 0; i < 4; ++i) {
    const auto w = word_bytes(words[i]);
    d[static_cast<std::size_t>(4 + 2 * i)] = w[0];
    d[static_cast<std::size_t>(5 + 2 * i)] = w[1];
  }
  d[12] = to_byte(vars.injsizecorr);
  d[13] = to_byte(vars.airflowtype);
  d[14] = to_byte(vars.aoutmax);
  d[15] = to_byte(c.boost_enable);
  return d;
}

FrameData settings_block_b(const Form1Controls& c, const ProgramState& vars) {
  FrameData d{};
  d[0] = to_byte(c.boost_start);
  d[1] = to_byte(c.boost_set);
  d[2] = to_byte(vars.zylinder);
  d[3] = to_byte(vars.injchannels);
  d[4] = to_byte(map_flags(c));
  // Throttle "Dauer" (accel_param 2) is kept in files only; the controller has no place for it.
  d[5] = to_byte(c.accel_param[0]);
  d[6] = to_byte(c.accel_param[1]);
  d[7] = to_byte(c.accel_param[3]);
  d[8] = to_byte(c.accel_param[4]);
  d[9] = to_byte(c.accel_param[5]);
  d[10] = vars.seq_faktor;
  return d;
}

int rpmfaktor_of_cylinders(int zylinder) {
  switch (zylinder) {
    case 4:
      return 30000000;
    case 6:
      return 20000000;
    case 8:
      return 15000000;
    default:
      return 0;
  }
}

double speed_heading(double rpmfaktor, int period) {
  return round_half_even(rpmfaktor / period / 100) * 100;
}

SettingsBlockA read_settings_block_a(const FrameData& d) {
  auto word = [&d](std::size_t i) { return d[i] + 256 * d[i + 1]; };
  SettingsBlockA a;
  a.load_type = d[0];
  a.drucksensor = d[1];
  a.tps_min = d[2];
  a.tps_max = d[3];
  a.injoffset_in = word(4);
  a.injoffset_out = word(6);
  a.injalt = word(8);
  a.injneu = word(10);
  a.injsizecorr = d[12];
  a.airflowtype = d[13];
  a.aoutmax = d[14];
  a.boost_enable = d[15];
  return a;
}

SettingsBlockB read_settings_block_b(const FrameData& d) {
  SettingsBlockB b;
  b.boost_start = d[0];
  b.boost_set = d[1];
  b.zylinder = d[2];
  b.injchannels = d[3];
  b.map_flags = d[4];
  for (std::size_t k = 0; k < b.accel.size(); ++k) b.accel[k] = d[5 + k];
  return b;
}

}  // namespace nerit
