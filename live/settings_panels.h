#pragma once
// The tuning panels' share of the controller's settings: what the settings blocks read from
// the controller fill in, the panels' start-up state, and showing or hiding all of them.
#include "link/settings_blocks.h"
#include "live/panel_controls.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

class SettingsPanels {
 public:
  SettingsPanels(PanelControls& pc, Form1Controls& c, ProgramState& vars)
      : pc_(pc), c_(c), vars_(vars) {}

  // Start-up: the panel list, the acceleration-fuel bars and every panel hidden.
  void load_panels();
  // Start-up: the airflow input list, disabled with its label and the clamp field.
  void load_airflow_input();
  // Every panel shown or hidden at once (the axis edits hide them).
  void show_all(bool visible);

  // Block 0x240 without its load type, which the maps take.
  void show_block_a(const SettingsBlockA& a);
  // Block 0x250: boost values, cylinders (and with them rpmfaktor), injector channels, the map
  // enable boxes and the acceleration-fuel bars.
  void show_block_b(const SettingsBlockB& b);

 private:
  PanelControls& pc_;
  Form1Controls& c_;
  ProgramState& vars_;
};

}  // namespace nerit
