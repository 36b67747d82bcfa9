#include "files/settings_file.h"

#include <cmath>
#include <string>

#include "files/inj_format.h"
#include "files/tune_file.h"
#include "files/tune_window.h"
#include "link/transfers.h"
#include "live/airflow_output.h"
#include "live/boost_control.h"
#include "shell/errors.h"
#include "shell/numbers.h"

namespace nerit {

namespace {

std::string num(double x) {
  return number_text(x);
}

FileDialogRequest inj_dialog(FileDialogRequest::Kind kind, const std::filesystem::path& pfad) {
  return {kind, kind == FileDialogRequest::Kind::Save ? "Save" : "Open", pfad, kInjFilter};
}

// The "Start / kPa:" field after a load: the pressure the table gives for the raw start
// value; a value past the table's 401 entries leaves the field as it is.
void show_boost_start(TextBox& field, const PressureTable& table, int raw) {
  if (raw < static_cast<int>(table.size())) field.text = num(table[static_cast<std::size_t>(raw)]);
}

}  // namespace

void SettingsFile::Speichern_Click() {
  if (!load_type_chosen(c_, p_.dialogs)) return;
  const auto file = p_.dialogs.file_dialog(inj_dialog(FileDialogRequest::Kind::Save, vars_.pfad));
  if (file.empty()) return;
  save(file);
}

void SettingsFile::save(const std::filesystem::path& file) {
  // Every field is checked here and in the encoding, before the file is touched.
  write_tune_file(file, tune_from_window(c_, vars_));
  c_.caption = c_.caption_prefix + file.string();
  if (used) used(file);
}

void SettingsFile::Laden_Click() {
  const auto file = p_.dialogs.file_dialog(inj_dialog(FileDialogRequest::Kind::Open, vars_.pfad));
  if (file.empty()) return;
  load(file);
}

void SettingsFile::load(const std::filesystem::path& file) {
  const Tune tune = read_tune_file(file);
  check_fits_window(tune);
  apply(tune, file);
  if (used) used(file);
}

void SettingsFile::check_fits_window(const Tune& t) const {
  const auto name = [](std::size_t i) { return "Acceleration parameter " + std::to_string(i); };
  for (std::size_t i = 0; i < t.accel_param.size(); ++i) {
    const ScrollBar& bar = pc_.HScroll1[i];
    if (t.accel_param[i] < bar.min || t.accel_param[i] > bar.max)
      throw InjFormatError(name(i) + " is " + std::to_string(t.accel_param[i]) +
                           "; its bar takes " + std::to_string(bar.min) + " to " +
                           std::to_string(bar.max) + ".");
  }
  for (std::size_t i = 0; i < t.rpm_headings.size(); ++i) {
    const double point = round_half_even(static_cast<double>(t.rpmfaktor) / t.rpm_headings[i]);
    if (!(point >= -2147483648.0 && point <= 2147483647.0))
      throw InjFormatError("RPM column " + std::to_string(i + 1) + ": rpmfaktor / heading " +
                           "does not fit a speed point.");
  }
}

void SettingsFile::apply(const Tune& t, const std::filesystem::path& file) {
  ListBox& log = c_.List1;
  log.clear();
  c_.caption = c_.caption_prefix + file.string();
  log.add_item("Load File: " + file.string());

  vars_.rpmfaktor = t.rpmfaktor;
  c_.Combo1.select(t.load_type);
  log.add_item("Input: " + c_.Combo1.text);

  vars_.drucksensor = t.drucksensor;
  if (t.drucksensor == 1) log.add_item("Pressure Sensor: MPX4250");

  vars_.tps_min = t.tps_min;
  vars_.tps_max = t.tps_max;
  log.add_item("TPS min / max: " + num(t.tps_min) + " / " + num(t.tps_max));

  vars_.injoffset_in = t.injoffset_in;
  vars_.injoffset_out = t.injoffset_out;
  log.add_item("Injoffset in / out: " + num(t.injoffset_in) + " / " + num(t.injoffset_out));

  apply_panels(t);

  vars_.seq_faktor = t.seq_faktor;
  apply_axes_and_maps(t);
}

void SettingsFile::apply_panels(const Tune& t) {
  ListBox& log = c_.List1;
  vars_.injalt = t.injalt;
  vars_.injneu = t.injneu;
  vars_.injsizecorr = t.injsizecorr;
  vars_.airflowtype = t.airflowtype;
  vars_.aoutmax = t.aoutmax;
  show_airflow_output(pc_, t.airflowtype, t.aoutmax);
  pc_.Text1.text = num(std::floor(t.aoutmax * 5000.0 / 255));  // a load rounds the clamp down
  log.add_item("Injsize alt / neu: " + num(t.injalt) + " / " + num(t.injneu));

  c_.boost_enable = t.boost_enable;
  c_.boost_start = t.boost_start;
  c_.boost_set = t.boost_set;
  pc_.Check3.value = t.boost_enable == 1 ? 1 : 0;
  enable_boost_fields(pc_, pc_.Check3.value == 1);
  show_boost_start(pc_.boost_start_text, c_.pressure_table, t.boost_start);
  // Whole percent of set / 2.55, computed exactly so that 255 gives 100.
  pc_.boost_set_text.text = num(std::floor(t.boost_set * 100.0 / 255));
  log.add_item("Boostcontroll: " + num(t.boost_enable));
  log.add_item("Boost Start: " + pc_.boost_start_text.text + " kPa");
  log.add_item("Boost Set: " + pc_.boost_set_text.text + " %");

  vars_.zylinder = t.zylinder;
  log.add_item("Anzahl Zylinder : #" + num(t.zylinder));
  vars_.injchannels = t.injchannels;
  log.add_item("Injchannels : #" + num(t.injchannels));

  c_.Check6.value = (t.map_flags & 1) ? 1 : 0;
  c_.Check4.value = (t.map_flags & 2) ? 1 : 0;
  if (map_boxes_changed) map_boxes_changed();

  for (std::size_t i = 0; i < t.accel_param.size(); ++i) {
    ScrollBar& bar = pc_.HScroll1[i];
    if (bar.value == t.accel_param[i]) continue;  // an unchanged bar runs no handler
    bar.value = t.accel_param[i];
    if (accel_changed) accel_changed(i);
  }
}

void SettingsFile::apply_axes_and_maps(const Tune& t) {
  Grid& g2 = c_.MSFlexGrid2;
  Grid& g3 = c_.MSFlexGrid3;
  for (int i = 1; i <= kTuneMapSize; ++i) {
    const auto k = static_cast<std::size_t>(i - 1);
    const std::string heading = num(t.rpm_headings[k]);
    g2.set_text(0, i, heading);
    g3.set_text(0, i, heading);
    c_.rpm_points[static_cast<std::size_t>(i)] =
        to_int32(static_cast<double>(t.rpmfaktor) / t.rpm_headings[k]);
  }
  for (int i = 1; i <= kTuneMapSize; ++i) {
    const std::string heading = num(t.load_headings[static_cast<std::size_t>(i - 1)]);
    g2.set_text(i, 0, heading);
    g3.set_text(i, 0, heading);
  }
  if (run_load_type) run_load_type();
  for (int r = 1; r <= kTuneMapSize; ++r)
    for (int col = 1; col <= kTuneMapSize; ++col) {
      const auto row_i = static_cast<std::size_t>(r - 1);
      const auto col_i = static_cast<std::size_t>(col - 1);
      g2.set_text(r, col, num(t.correction[row_i][col_i]));
      g3.set_text(r, col, num(t.airflow[row_i][col_i]));
    }
}

}  // namespace nerit
