#include "files/settings_file.h"

#include <array>
#include <string>

#include "files/inj_format.h"
#include "files/tune_file.h"
#include "files/tune_window.h"
#include "link/transfers.h"
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

void SettingsFile::apply(Tune t, const std::filesystem::path& file) {
  std::array<int, 6> bars_before{};
  for (std::size_t i = 0; i < bars_before.size(); ++i) bars_before[i] = pc_.HScroll1[i].value;
  for (std::size_t k = 0; k < t.rpm_headings.size(); ++k) {
    t.axes.rpm_points[k] = to_int32(static_cast<double>(t.rpmfaktor) / t.rpm_headings[k]);
    t.axes.load_points[k] = c_.load_points[k + 1];  // the load-type routine below sets them
  }
  apply_tune(t, c_, pc_, vars_);

  ListBox& log = c_.List1;
  log.clear();
  c_.caption = c_.caption_prefix + file.string();
  log.add_item("Load File: " + file.string());
  log.add_item("Input: " + c_.Combo1.text);
  if (t.drucksensor == 1) log.add_item("Pressure Sensor: MPX4250");
  log.add_item("TPS min / max: " + num(t.tps_min) + " / " + num(t.tps_max));
  log.add_item("Injoffset in / out: " + num(t.injoffset_in) + " / " + num(t.injoffset_out));
  log.add_item("Injsize alt / neu: " + num(t.injalt) + " / " + num(t.injneu));
  log.add_item("Boostcontroll: " + num(t.boost_enable));
  log.add_item("Boost Start: " + pc_.boost_start_text.text + " kPa");
  log.add_item("Boost Set: " + pc_.boost_set_text.text + " %");
  log.add_item("Anzahl Zylinder : #" + num(t.zylinder));
  log.add_item("Injchannels : #" + num(t.injchannels));

  if (map_boxes_changed) map_boxes_changed();
  for (std::size_t i = 0; i < bars_before.size(); ++i)
    if (accel_changed && bars_before[i] != t.accel_param[i]) accel_changed(i);  // moved bars only
  if (run_load_type) run_load_type();
}

}  // namespace nerit
