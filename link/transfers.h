#pragma once
// Bulk transfers to the controller: everything into working memory, the settings only, the
// reduced EEPROM image, reloading it and making the working memory permanent. Each frame is
// acknowledged before the next one goes.
#include <functional>
#include <string>

#include "link/frames.h"
#include "link/wire.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

// True when a load type is chosen; otherwise "Keine Lastgröße gewählt!" / "Fehler". Whatever
// sends or saves the whole tune asks this first.
bool load_type_chosen(const Form1Controls& c, Dialogs& dialogs);

class Transfers {
 public:
  Transfers(Form1Controls& c, ProgramState& vars, Platform& platform, Wire& wire)
      : c_(c), vars_(vars), p_(platform), wire_(wire) {}

  void Command9_Click();           // Write Data to Unit
  void Command15_Click();          // Update Settings
  void Command4_Click(int index);  // Write to EEProm
  void Command2_Click();           // Reload EEProm
  void Command5_Click();           // Make Permanent
  void Schreiben_Click();          // menu Write Data: EEPROM write, then reload

  static constexpr const char* kNoLoadType = "Keine Lastgröße gewählt!";

  // Runs when a write to the controller is about to start, with the button's caption.
  std::function<void(const std::string& action)> before_write;

 private:
  void write_settings();
  void write_axes();
  void write_maps();

  Form1Controls& c_;
  ProgramState& vars_;
  Platform& p_;
  Wire& wire_;
};

}  // namespace nerit
