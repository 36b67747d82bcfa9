#include "setup/pressure_calibration.h"

#include <cmath>
#include <string>

#include "setup/field_number.h"
#include "setup/sensor_calibration.h"
#include "shell/errors.h"
#include "shell/numbers.h"
#include "shell/pressure_tables.h"

namespace nerit {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;
// "\Pressure.raw" holds 16-bit kPa values.
constexpr double kHighestMaxP = 32767;

}  // namespace

void set_sensor_field(Form3Controls& c, int index, std::string text) {
  TextBox& box = c.Text1[static_cast<std::size_t>(index)];
  if (box.text == text) return;
  box.text = std::move(text);
  c.Command2.enabled = false;
}

void PressureCalibration::load() {
  c_.Combo1.clear();
  for (const SensorPreset& preset : kSensorPresets) c_.Combo1.add_item(preset.name);
  c_.Combo1.text = kSensorTypeText;
  const double chosen = vars_.drucksensor;
  if (chosen >= 0 && chosen < c_.Combo1.list_count() && chosen == whole_part(chosen)) {
    c_.Combo1.select(static_cast<int>(chosen));
    Combo1_Click();
  }
  c_.Command2.enabled = false;
}

void PressureCalibration::Combo1_Click() {
  if (c_.Combo1.list_index < 0) return;
  const SensorPreset& preset = kSensorPresets.at(static_cast<std::size_t>(c_.Combo1.list_index));
  if (std::isnan(preset.faktor)) return;  // "Manuell": the boxes stay
  const char sep = p_.decimal_separator();
  set_sensor_field(c_, kFaktor, number_text(preset.faktor, sep));
  set_sensor_field(c_, kOffset, number_text(preset.offset, sep));
  set_sensor_field(c_, kMaxP, number_text(preset.max_p, sep));
}

int PressureCalibration::Text1_KeyPress(int, int key_ascii) {
  const bool passes = (key_ascii >= '0' && key_ascii <= '9') || key_ascii == ',' ||
                      key_ascii == kBackspace || key_ascii == kEnter;
  return passes ? key_ascii : 0;
}

void PressureCalibration::Text1_Change(int) {
  c_.Command2.enabled = false;
}

PressureCalibration::SensorLine PressureCalibration::read_line() const {
  SensorLine line{field_number_or_throw(c_.Text1[kFaktor].text, "Faktor"),
                  field_number_or_throw(c_.Text1[kOffset].text, "Offset"),
                  field_number_or_throw(c_.Text1[kMaxP].text, "max P")};
  if (line.max_p < 0 || line.max_p > kHighestMaxP)
    throw ProgramError("max P: " + c_.Text1[kMaxP].text + " lies outside 0-32767 kPa.");
  return line;
}

void PressureCalibration::Command1_Click() {
  const SensorLine line = read_line();
  const char sep = p_.decimal_separator();
  c_.List1.visible = true;
  c_.wizard_frame.visible = false;
  c_.List1.clear();
  c_.List1.add_item("kPa\tVoltage\tRAW");
  for (int p = 0; p <= line.max_p; ++p) {
    double volts = sensor_volts(line.faktor, line.offset, p);
    if (volts > 5) {
      p_.dialogs.message_box(kSensorVoltageFailure, MsgButtons::Ok, MsgIcon::Critical);
      return;
    }
    if (volts < 0) volts = 0;
    c_.List1.add_item(std::to_string(p) + "\t" + format_0_00(volts, sep) + "\t" +
                      std::to_string(sensor_raw(line.faktor, line.offset, p)));
  }
  c_.Command2.enabled = true;
}

void PressureCalibration::Command2_Click() {
  const SensorLine line = read_line();
  PressureFiles(vars_.pfad).save(calibration_raws(line.faktor, line.offset, line.max_p));
  // Values typed without choosing an entry are a manual sensor.
  vars_.drucksensor = c_.Combo1.list_index < 0 ? 0 : c_.Combo1.list_index;
  shell_.reload_pressure();
}

}  // namespace nerit
