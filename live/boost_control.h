#pragma once
// The boost-control panel: enable, start pressure and set value, sent with 0x0A.
#include "link/wire.h"
#include "live/panel_controls.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

// The panel's fields are usable while "Boostcontroll enabled" is ticked; the box itself and
// "Apply" stay usable with the panel, so the control can be switched off again.
void enable_boost_fields(PanelControls& pc, bool on);
// The fields as settings block B holds the values: start as absolute kPa through the pressure
// table (empty while the table is empty), set as whole percent.
void show_boost_fields(PanelControls& pc, const Form1Controls& c);

class BoostControl {
 public:
  BoostControl(PanelControls& pc, Form1Controls& c, ProgramState& vars, Platform& platform,
               Wire& wire)
      : pc_(pc), c_(c), vars_(vars), p_(platform), wire_(wire) {}

  // Start-up: the analog input list and the solenoid output.
  void load();
  // The box's value becomes boost_enable; the panel's fields follow it.
  void Check3_MouseUp();
  // "Apply": the start pressure's raw byte from the pressure-sensor file, the set value in
  // controller units, the reminder, then 0x0A when connected. A pressure the file does not
  // cover or a set value that is no byte ends it with a message before anything changes.
  void Command7_Click();

 private:
  PanelControls& pc_;
  Form1Controls& c_;
  ProgramState& vars_;
  Platform& p_;
  Wire& wire_;
};

}  // namespace nerit
