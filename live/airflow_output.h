#pragma once
// The airflow output panel: frequency or voltage output, the input it follows, the voltage
// clamp, sent with 0x09.
#include <filesystem>

#include "link/wire.h"
#include "live/panel_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

// The input list, its label and the clamp field: usable for voltage output only.
void enable_voltage_fields(PanelControls& pc, bool on);

// The panel as the settings hold it: the output kind's option and caption, the input entry and
// the clamp in mV. The values themselves are not re-read from the panel.
void show_airflow_output(PanelControls& pc, int airflowtype, int aoutmax);

class AirflowOutput {
 public:
  AirflowOutput(PanelControls& pc, ProgramState& vars, Platform& platform, Wire& wire)
      : pc_(pc), vars_(vars), p_(platform), wire_(wire) {}

  // Setup menu "Airflowsettings": shows or hides the panel.
  void airflowsettings_Click();
  // Voltage output: input list and clamp usable, airflowtype and aoutmax from them.
  void OptionAnalog_Click();
  // Frequency output: first input entry, list and clamp locked, airflowtype 0.
  void OptionFrequency_Click();
  void Combo3_Click();
  // Keys typed into the clamp field: digits, "-" and backspace pass; Enter writes the field's
  // number to the diagnostic file; anything else is dropped. Returns the key to insert, 0 for
  // none.
  int Text1_KeyPress(int key_ascii);
  // "Apply": the voltage settings re-read, the reminder, then 0x09 when connected.
  void Command6_Click();

  // Where Enter in the clamp field writes: d:\test.bin where a drive d: exists, otherwise
  // test.bin in the program folder.
  std::filesystem::path diagnostic_file() const;

 private:
  void read_voltage_settings();
  PanelControls& pc_;
  ProgramState& vars_;
  Platform& p_;
  Wire& wire_;
};

}  // namespace nerit
