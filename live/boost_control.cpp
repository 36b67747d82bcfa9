#include "live/boost_control.h"

#include <algorithm>

#include "link/panel_frames.h"
#include "shell/errors.h"
#include "shell/numbers.h"
#include "shell/pressure_tables.h"

namespace nerit {

void BoostControl::load() {
  pc_.Combo4.clear();
  for (const char* entry : {"Analog #1", "Analog #2", "Analog #3", "Analog #4", "Analog #5",
                            "Analog #6", "Analog #7", "Analog #8"})
    pc_.Combo4.add_item(entry);
  pc_.Combo4.select(0);
  pc_.solenoid_isc.value = true;
  pc_.solenoid_injector6.value = false;
}

void enable_boost_fields(PanelControls& pc, bool on) {
  for (Label* l : {&pc.boost_start_label, &pc.boost_set_label, &pc.analog_in_label})
    l->enabled = on;
  pc.boost_start_text.enabled = pc.boost_set_text.enabled = on;
  pc.Combo4.enabled = on;
  pc.solenoid_frame.enabled = pc.solenoid_isc.enabled = pc.solenoid_injector6.enabled = on;
}

void show_boost_fields(PanelControls& pc, const Form1Controls& c) {
  const auto& table = c.pressure_table;
  const bool have_table = std::any_of(table.begin(), table.end(), [](auto kpa) { return kpa; });
  const auto raw = static_cast<std::size_t>(c.boost_start);
  pc.boost_start_text.text = have_table && raw < table.size() ? number_text(table[raw]) : "";
  pc.boost_set_text.text = number_text(round_half_even(c.boost_set * 100 / 255));
}

void BoostControl::Check3_MouseUp() {
  c_.boost_enable = pc_.Check3.value;
  enable_boost_fields(pc_, pc_.Check3.value == 1);
}

void BoostControl::Command7_Click() {
  const double kpa = val(pc_.boost_start_text.text);
  const auto table = PressureFiles(vars_.pfad).sensor();
  if (!table || table->empty())
    throw FileError("No pressure-sensor table (PressureSensor.dat) in " + vars_.pfad.string() +
                    ": calibrate the MAP sensor in Basesettings first.");
  const auto start = sensor_raw_at(*table, round_half_even(kpa));
  if (!start)
    throw ProgramError("Start / kPa: " + number_text(kpa) +
                       " kPa lies outside the pressure-sensor table (0-" +
                       std::to_string(table->size() - 1) + " kPa).");
  // Percent x 2.55, computed so that 50 % gives exactly 127.5.
  const double set = val(pc_.boost_set_text.text) * 255 / 100;
  if (!(round_half_even(set) >= 0 && round_half_even(set) <= 255))
    throw ProgramError("Set / %: " + pc_.boost_set_text.text + " % gives " + number_text(set) +
                       "; the controller takes 0-100 %.");
  c_.boost_start = *start;
  c_.boost_set = set;
  p_.dialogs.message_box(kMakePermanentReminder, MsgButtons::Ok, MsgIcon::None);
  if (vars_.connected != 1) return;
  wire_.send(command_frame(kCmdBoost, 0, 0,
                           boost_control_data(c_.boost_enable, c_.boost_start, c_.boost_set)));
}

}  // namespace nerit
