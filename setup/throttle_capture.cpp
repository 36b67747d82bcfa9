#include "setup/throttle_capture.h"

#include "shell/numbers.h"

namespace nerit {

std::string throttle_percent_text(double raw, double tps_min, double tps_max) {
  if (tps_max == tps_min) return "-- %";
  return number_text(whole_part((raw - tps_min) * (100 / (tps_max - tps_min))) + 0.0) + " %";
}

std::string ThrottleCapture::volts(double raw) const {
  return format_0_00(raw * 5 / 255, p_.decimal_separator());
}

void ThrottleCapture::show_end(int index, double raw) {
  const auto i = static_cast<std::size_t>(index);
  c_.end_value[i].caption = number_text(raw);
  c_.end_volt[i].caption = volts(raw);
}

void ThrottleCapture::load() {
  c_.throttle_frame.enabled = vars_.connected == 1;
  show_end(kOpen, vars_.tps_max);
  show_end(kClosed, vars_.tps_min);
  for (Label* l : {&c_.live_value, &c_.live_volt, &c_.live_percent}) l->caption = "--";
}

void ThrottleCapture::Timer1_Timer() {
  c_.live_value.caption = number_text(vars_.tps_raw);
  c_.live_volt.caption = volts(vars_.tps_raw);
  c_.live_percent.caption = throttle_percent_text(vars_.tps_raw, vars_.tps_min, vars_.tps_max);
}

void ThrottleCapture::Command6_Click(int index) {
  (index == kOpen ? vars_.tps_max : vars_.tps_min) = vars_.tps_raw;
  show_end(index, vars_.tps_raw);
}

}  // namespace nerit
