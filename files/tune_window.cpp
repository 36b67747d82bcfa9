#include "files/tune_window.h"

#include <cmath>
#include <string>

#include "link/settings_blocks.h"
#include "live/airflow_output.h"
#include "live/boost_control.h"
#include "shell/errors.h"
#include "shell/numbers.h"

namespace nerit {

namespace {

// Converts with `convert`, turning an overflow into a message that names what did not fit.
template <class Convert>
auto fitted(Convert convert, double value, const std::string& what, const std::string& range) {
  try {
    return convert(value);
  } catch (const OverflowError&) {
    throw ProgramError(what + ": " + number_text(value) + " cannot be stored (the file takes " +
                       range + ").");
  }
}

std::uint8_t byte_of(double value, const std::string& what) {
  return fitted(to_byte, value, what, "0 to 255");
}

std::int16_t word_of(double value, const std::string& what) {
  return fitted(to_int16, value, what, "-32768 to 32767");
}

std::string cell_name(const char* map, int row, int col) {
  return std::string(map) + " row " + std::to_string(row) + ", column " + std::to_string(col);
}

}  // namespace

Tune tune_from_window(const Form1Controls& c, const ProgramState& vars) {
  if (c.Combo1.list_index < 0) throw InvalidPropertyError();
  Tune t;
  t.rpmfaktor = fitted(to_int32, vars.rpmfaktor, "rpmfaktor", "a signed 32-bit number");
  t.load_type = byte_of(c.Combo1.list_index, "Load type");
  t.drucksensor = byte_of(vars.drucksensor, "Pressure sensor");
  t.tps_min = byte_of(vars.tps_min, "TPS min");
  t.tps_max = byte_of(vars.tps_max, "TPS max");
  t.injoffset_in = word_of(vars.injoffset_in, "Injoffset in");
  t.injoffset_out = word_of(vars.injoffset_out, "Injoffset out");
  t.injalt = word_of(vars.injalt, "Injsize alt");
  t.injneu = word_of(vars.injneu, "Injsize neu");
  t.injsizecorr = byte_of(vars.injsizecorr, "injsizecorr");
  t.airflowtype = byte_of(vars.airflowtype, "Airflow type");
  t.aoutmax = byte_of(vars.aoutmax, "Airflow clamp");
  t.boost_enable = byte_of(c.boost_enable, "Boostcontroll");
  t.boost_start = byte_of(c.boost_start, "Boost start");
  t.boost_set = byte_of(c.boost_set, "Boost set");
  t.zylinder = byte_of(vars.zylinder, "Zylinder");
  t.injchannels = byte_of(vars.injchannels, "Injchannels");
  t.map_flags = static_cast<std::uint8_t>(map_flags(c));
  for (std::size_t i = 0; i < t.accel_param.size(); ++i)
    t.accel_param[i] = byte_of(c.accel_param[i], "Acceleration parameter " + std::to_string(i));
  t.seq_faktor = vars.seq_faktor;

  const Grid& g2 = c.MSFlexGrid2;
  const Grid& g3 = c.MSFlexGrid3;
  for (int i = 1; i <= kTuneMapSize; ++i) {
    const auto k = static_cast<std::size_t>(i - 1);
    t.rpm_headings[k] = word_of(val(g2.text(0, i)), "RPM heading of column " + std::to_string(i));
    // A heading of 0 divides rpmfaktor when the file is loaded: such a file could not be read.
    if (t.rpm_headings[k] == 0)
      throw ProgramError("RPM heading of column " + std::to_string(i) +
                         ": 0 cannot be stored (the speed points divide by it).");
    t.load_headings[k] = word_of(val(g2.text(i, 0)), "Load heading of row " + std::to_string(i));
  }
  for (int r = 1; r <= kTuneMapSize; ++r)
    for (int col = 1; col <= kTuneMapSize; ++col) {
      const auto row_i = static_cast<std::size_t>(r - 1);
      const auto col_i = static_cast<std::size_t>(col - 1);
      const double cell = val(g2.text(r, col));
      std::uint8_t stored = 0;
      try {
        stored = to_byte(cell + 100);
      } catch (const OverflowError&) {
        throw ProgramError(cell_name("Correction map", r, col) + ": " + number_text(cell) +
                           " cannot be stored (the file takes -100 to 155).");
      }
      t.correction[row_i][col_i] = static_cast<std::int16_t>(stored - 100);
      t.airflow[row_i][col_i] = word_of(val(g3.text(r, col)), cell_name("Airflow map", r, col));
    }
  for (std::size_t k = 0; k < t.axes.rpm_points.size(); ++k) {
    t.axes.rpm_points[k] = c.rpm_points[k + 1];
    t.axes.load_points[k] = c.load_points[k + 1];
  }
  return t;
}

void apply_tune(const Tune& t, Form1Controls& c, PanelControls& pc, ProgramState& vars) {
  vars.rpmfaktor = t.rpmfaktor;
  c.Combo1.select(t.load_type);
  vars.drucksensor = t.drucksensor;
  vars.tps_min = t.tps_min;
  vars.tps_max = t.tps_max;
  vars.injoffset_in = t.injoffset_in;
  vars.injoffset_out = t.injoffset_out;
  vars.injalt = t.injalt;
  vars.injneu = t.injneu;
  vars.injsizecorr = t.injsizecorr;
  vars.airflowtype = t.airflowtype;
  vars.aoutmax = t.aoutmax;
  show_airflow_output(pc, t.airflowtype, t.aoutmax);
  pc.Text1.text = number_text(std::floor(t.aoutmax * 5000.0 / 255));  // the clamp rounds down

  c.boost_enable = t.boost_enable;
  c.boost_start = t.boost_start;
  c.boost_set = t.boost_set;
  pc.Check3.value = t.boost_enable == 1 ? 1 : 0;
  enable_boost_fields(pc, pc.Check3.value == 1);
  // A start value past the pressure table leaves the "Start / kPa:" field as it is.
  if (t.boost_start < c.pressure_table.size())
    pc.boost_start_text.text = number_text(c.pressure_table[t.boost_start]);
  // Whole percent of set / 2.55, computed exactly so that 255 gives 100.
  pc.boost_set_text.text = number_text(std::floor(t.boost_set * 100.0 / 255));

  vars.zylinder = t.zylinder;
  vars.injchannels = t.injchannels;
  c.Check6.value = (t.map_flags & 1) ? 1 : 0;
  c.Check4.value = (t.map_flags & 2) ? 1 : 0;
  for (std::size_t i = 0; i < t.accel_param.size(); ++i) {
    pc.HScroll1[i].value = t.accel_param[i];
    pc.Label8[i].caption = std::to_string(t.accel_param[i]);
    c.accel_param[i] = t.accel_param[i];
  }
  vars.seq_faktor = t.seq_faktor;

  Grid& g2 = c.MSFlexGrid2;
  Grid& g3 = c.MSFlexGrid3;
  for (int i = 1; i <= kTuneMapSize; ++i) {
    const auto k = static_cast<std::size_t>(i - 1);
    for (Grid* g : {&g2, &g3}) {
      g->set_text(0, i, number_text(t.rpm_headings[k]));
      g->set_text(i, 0, number_text(t.load_headings[k]));
    }
    c.rpm_points[k + 1] = t.axes.rpm_points[k];
    c.load_points[k + 1] = t.axes.load_points[k];
  }
  for (int r = 1; r <= kTuneMapSize; ++r)
    for (int col = 1; col <= kTuneMapSize; ++col) {
      const auto row_i = static_cast<std::size_t>(r - 1);
      const auto col_i = static_cast<std::size_t>(col - 1);
      g2.set_text(r, col, number_text(t.correction[row_i][col_i]));
      g3.set_text(r, col, number_text(t.airflow[row_i][col_i]));
    }
}

}  // namespace nerit
