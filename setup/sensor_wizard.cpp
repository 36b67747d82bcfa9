#include "setup/sensor_wizard.h"

#include "setup/field_number.h"
#include "setup/pressure_calibration.h"
#include "shell/numbers.h"

namespace nerit {

SensorLineFit fit_sensor_line(double u100, double p2, double u2) {
  const double m = (u100 - u2) / (100 - p2);
  const double o = u100 - m * 100;
  return {m / 5, o / 5};
}

void SensorWizard::Command4_Click() {
  c_.List1.visible = false;
  c_.wizard_frame.visible = true;
}

void SensorWizard::Command5_Click() {
  if (vars_.map_volt.empty()) {
    p_.dialogs.message_box(kNoVoltageText, MsgButtons::Ok, MsgIcon::Exclamation);
    return;
  }
  const int target = c_.Option2[kAtP2].value ? kAtP2 : kAt100kPa;
  c_.Text4[static_cast<std::size_t>(target)].text = vars_.map_volt;
}

void SensorWizard::Command7_Click() {
  const double u100 = field_number_or_throw(c_.Text4[kAt100kPa].text, "Volt at 100 kPa");
  const double p2 = field_number_or_throw(c_.Text3.text, "P2");
  const double u2 = field_number_or_throw(c_.Text4[kAtP2].text, "Volt at P2");
  if (p2 == 100) {
    p_.dialogs.message_box(kSameP2Text, MsgButtons::Ok, MsgIcon::Exclamation, "Error");
    return;
  }
  const SensorLineFit fit = fit_sensor_line(u100, p2, u2);
  const char sep = p_.decimal_separator();
  set_sensor_field(c_, kFaktor, number_text(fit.faktor, sep));
  set_sensor_field(c_, kOffset, number_text(fit.offset, sep));
}

}  // namespace nerit
