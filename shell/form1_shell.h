#pragma once
// The main window's start-up, activation, shutdown and the base-settings menu.
#include <filesystem>
#include <functional>

#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

class Form1Shell {
 public:
  Form1Shell(Form1Controls& c, ProgramState& vars, Platform& platform,
             std::filesystem::path program_folder)
      : c_(c), vars_(vars), platform_(platform), program_folder_(std::move(program_folder)) {}

  // The main window's start-up steps that are the shell's; the window runs them in order with
  // those of the other parts.
  void load_map_grids();        // every map cell "0"
  void load_window();           // pfad, caption, load type and debug port lists
  void load_menus();            // logging entries off until realtime data runs
  void load_axes_and_labels();  // map grid layout and default axes, link labels offline
  void Form_Activate();
  void Form_Unload();
  void Grundeinstellungen_Click();

  // Runs first when the main window unloads (an open data log is closed).
  std::function<void()> on_unload;

  // Rebuilds the pressure table from "\PressureSensor.dat"; run after that file is rewritten.
  void reload_pressure();
  // rpm_points from the speed headings and rpmfaktor; run after rpmfaktor changes.
  void fill_rpm_points();

  static constexpr const char* kOfflineNote =
      "Änderungen werden nicht automatisch übernommen,\n"
      "da der Nerit offline ist. Werte müssen mit 'Write Data to Unit' manuell übertragen werden!";

 private:
  void load_pressure_raw();

  Form1Controls& c_;
  ProgramState& vars_;
  Platform& platform_;
  std::filesystem::path program_folder_;
};

}  // namespace nerit
