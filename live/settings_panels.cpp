#include "live/settings_panels.h"

#include <algorithm>
#include <string>

#include "live/airflow_clamp.h"
#include "live/airflow_output.h"
#include "live/boost_control.h"

namespace nerit {

namespace {

constexpr int kAccelStart[6] = {2, 50, 10, 2, 50, 0};  // Filter, Menge, Dauer, Filter, Menge, Red.

}  // namespace

void SettingsPanels::load_panels() {
  pc_.List2.clear();
  for (const char* entry :
       {"Injektoradjust", "Airflow Fuelcut", "Boostcontrol", "Airflow Output", "Acceleration Fuel"})
    pc_.List2.add_item(entry);
  for (std::size_t i = 0; i < 6; ++i) {
    pc_.HScroll1[i].value = kAccelStart[i];
    pc_.Label8[i].caption = std::to_string(kAccelStart[i]);
    c_.accel_param[i] = kAccelStart[i];
  }
  show_all(false);
}

void SettingsPanels::load_airflow_input() {
  enable_voltage_fields(pc_, false);
  // The panel starts as frequency output, as its caption says, until the controller tells.
  pc_.OptionFrequency.value = true;
  pc_.OptionAnalog.value = false;
  pc_.Combo3.clear();
  for (const char* entry : {"Deaktiviert", "Analog #1 / TPS", "Analog #2 / Map", "Analog #3",
                            "Analog #4", "Analog #5", "Analog #6", "Analog #7", "Analog #8"})
    pc_.Combo3.add_item(entry);
}

void SettingsPanels::show_all(bool visible) {
  for (auto& frame : pc_.Frame1) frame.visible = visible;
}

void SettingsPanels::show_block_a(const SettingsBlockA& a) {
  vars_.drucksensor = a.drucksensor;
  vars_.tps_min = a.tps_min;
  vars_.tps_max = a.tps_max;
  vars_.injoffset_in = a.injoffset_in;
  vars_.injoffset_out = a.injoffset_out;
  vars_.injalt = a.injalt;
  vars_.injneu = a.injneu;
  vars_.injsizecorr = a.injsizecorr;
  vars_.airflowtype = a.airflowtype;
  vars_.aoutmax = a.aoutmax;

  show_airflow_output(pc_, a.airflowtype, a.aoutmax);

  const bool boost = a.boost_enable == 1;
  pc_.Check3.value = boost ? 1 : 0;
  c_.boost_enable = pc_.Check3.value;
  pc_.Frame1[kPanelBoostcontrol].enabled = boost;
  enable_boost_fields(pc_, boost);
}

void SettingsPanels::show_block_b(const SettingsBlockB& b) {
  c_.boost_start = b.boost_start;
  c_.boost_set = b.boost_set;
  vars_.zylinder = b.zylinder;
  if (const int faktor = rpmfaktor_of_cylinders(b.zylinder)) vars_.rpmfaktor = faktor;
  vars_.injchannels = b.injchannels;
  c_.Check6.value = b.map_flags & 1;
  c_.Check4.value = (b.map_flags >> 1) & 1;
  for (std::size_t k = 0; k < b.accel.size(); ++k) {
    const auto i = static_cast<std::size_t>(kAccelParamsInBlockB[k]);
    c_.accel_param[i] = b.accel[k];
    ScrollBar& bar = pc_.HScroll1[i];
    bar.value = std::clamp(b.accel[k], bar.min, bar.max);
    pc_.Label8[i].caption = std::to_string(b.accel[k]);
  }
  show_boost_fields(pc_, c_);
}

}  // namespace nerit
