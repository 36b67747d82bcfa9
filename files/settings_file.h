#pragma once
// The Datei menu's "Speichern" and "Laden": the whole tune to and from a .inj file. Nothing is
// sent to the controller here, except what the acceleration bars send when they move.
#include <cstddef>
#include <filesystem>
#include <functional>

#include "files/tune.h"
#include "live/panel_controls.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

inline constexpr const char* kInjFilter = "Nerit Files (*.inj)|*.inj";

class SettingsFile {
 public:
  SettingsFile(Form1Controls& c, PanelControls& pc, ProgramState& vars, Platform& platform)
      : c_(c), pc_(pc), vars_(vars), p_(platform) {}

  void Speichern_Click();
  void Laden_Click();

  // Saves the window's tune into `file`. Every field is converted and checked before the file
  // is touched; the file is then replaced as a whole, keeping its bytes 4-15, 44-47 and past 879.
  void save(const std::filesystem::path& file);
  // Loads `file` into the window. The whole file is checked first: a file that is no tune
  // changes nothing in the window.
  void load(const std::filesystem::path& file);

  // The map editor's load-type routine (axes for the selected load type).
  std::function<void()> run_load_type;
  // An acceleration bar moved to a new value (its change handler).
  std::function<void(std::size_t bar)> accel_changed;
  // The map boxes were set: the grids follow them.
  std::function<void()> map_boxes_changed;
  // A file was saved or loaded (for the recent-files list).
  std::function<void(const std::filesystem::path&)> used;

 private:
  void check_fits_window(const Tune& t) const;
  void apply(Tune t, const std::filesystem::path& file);

  Form1Controls& c_;
  PanelControls& pc_;
  ProgramState& vars_;
  Platform& p_;
};

}  // namespace nerit
