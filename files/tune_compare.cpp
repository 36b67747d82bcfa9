#include "files/tune_compare.h"

#include <cstdlib>

namespace nerit {

namespace {

void compare_setting(std::vector<SettingDifference>& out, const std::string& name, long ours,
                     long theirs) {
  if (ours != theirs) out.push_back({name, std::to_string(ours), std::to_string(theirs)});
}

MapComparison compare_map(const TuneMap<std::int16_t>& ours, const TuneMap<std::int16_t>& theirs) {
  MapComparison m;
  for (std::size_t r = 0; r < ours.size(); ++r)
    for (std::size_t c = 0; c < ours[r].size(); ++c) {
      const int change = std::abs(ours[r][c] - theirs[r][c]);
      if (change == 0) continue;
      m.differs[r][c] = true;
      ++m.changed;
      if (change > m.largest) {
        m.largest = change;
        m.largest_row = static_cast<int>(r) + 1;
        m.largest_col = static_cast<int>(c) + 1;
      }
    }
  return m;
}

std::string map_line(const char* name, const MapComparison& m) {
  if (m.changed == 0) return std::string(name) + ": no cell differs";
  return std::string(name) + ": " + std::to_string(m.changed) +
         (m.changed == 1 ? " cell differs" : " cells differ") + ", largest change " +
         std::to_string(m.largest) + " (row " + std::to_string(m.largest_row) + ", column " +
         std::to_string(m.largest_col) + ")";
}

}  // namespace

TuneComparison compare_tunes(const Tune& a, const Tune& b) {
  TuneComparison out;
  auto& s = out.settings;
  compare_setting(s, "rpmfaktor", a.rpmfaktor, b.rpmfaktor);
  compare_setting(s, "Load type", a.load_type, b.load_type);
  compare_setting(s, "Pressure sensor", a.drucksensor, b.drucksensor);
  compare_setting(s, "TPS min", a.tps_min, b.tps_min);
  compare_setting(s, "TPS max", a.tps_max, b.tps_max);
  compare_setting(s, "Injoffset in", a.injoffset_in, b.injoffset_in);
  compare_setting(s, "Injoffset out", a.injoffset_out, b.injoffset_out);
  compare_setting(s, "Injsize alt", a.injalt, b.injalt);
  compare_setting(s, "Injsize neu", a.injneu, b.injneu);
  compare_setting(s, "injsizecorr", a.injsizecorr, b.injsizecorr);
  compare_setting(s, "Airflow type", a.airflowtype, b.airflowtype);
  compare_setting(s, "Airflow clamp", a.aoutmax, b.aoutmax);
  compare_setting(s, "Boostcontroll", a.boost_enable, b.boost_enable);
  compare_setting(s, "Boost start", a.boost_start, b.boost_start);
  compare_setting(s, "Boost set", a.boost_set, b.boost_set);
  compare_setting(s, "Zylinder", a.zylinder, b.zylinder);
  compare_setting(s, "Injchannels", a.injchannels, b.injchannels);
  compare_setting(s, "Map flags", a.map_flags, b.map_flags);
  for (std::size_t i = 0; i < a.accel_param.size(); ++i)
    compare_setting(s, "Acceleration parameter " + std::to_string(i), a.accel_param[i],
                    b.accel_param[i]);
  compare_setting(s, "Sequential divisor", a.seq_faktor, b.seq_faktor);
  for (std::size_t i = 0; i < a.rpm_headings.size(); ++i)
    compare_setting(s, "RPM heading " + std::to_string(i + 1), a.rpm_headings[i],
                    b.rpm_headings[i]);
  for (std::size_t i = 0; i < a.load_headings.size(); ++i)
    compare_setting(s, "Load heading " + std::to_string(i + 1), a.load_headings[i],
                    b.load_headings[i]);
  out.correction = compare_map(a.correction, b.correction);
  out.airflow = compare_map(a.airflow, b.airflow);
  return out;
}

std::vector<std::string> comparison_summary(const TuneComparison& c) {
  std::vector<std::string> lines{map_line("Correction map", c.correction),
                                 map_line("Airflow map", c.airflow)};
  if (c.settings.empty())
    lines.push_back("Settings: none differs");
  else
    for (const auto& d : c.settings)
      lines.push_back(d.name + ": " + d.ours + " here, " + d.theirs + " in the file");
  return lines;
}

}  // namespace nerit
