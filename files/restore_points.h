#pragma once
// Restore points: before the controller's tune is overwritten, the tune it held (as last read
// from it) and the tune about to be written are kept as .inj files in pfad/backups, the newest
// kKept of them. Each saved file gets a line in the log; loading one is an ordinary load.
#include <filesystem>
#include <optional>
#include <string>

#include "files/tune.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

// "2026-11-23_14-05-09": restore-point names start with it, so that they sort by time.
std::string restore_point_stamp(const DateTime& t);
// Saves `tune` as folder/STAMP_ACTION_WHICH.inj (a "-2", "-3"... when that name is taken),
// then keeps only the newest RestorePoints::kKept. The file's path; FileError, ProgramError
// or a filesystem_error when it cannot be saved.
std::filesystem::path save_restore_point(const std::filesystem::path& folder, const Tune& tune,
                                         const std::string& stamp, const std::string& action,
                                         const std::string& which);

class RestorePoints {
 public:
  RestorePoints(Form1Controls& c, ProgramState& vars, Platform& platform)
      : c_(c), vars_(vars), p_(platform) {}

  static constexpr std::size_t kKept = 50;

  // A read of the controller's tune has ended: the window holds what the controller holds.
  void remember_read();
  // Before a write to the controller (`action` names it in the file names): the tune read last,
  // if any, and the window's tune. A restore point that cannot be saved is logged and stops
  // nothing.
  void before_write(const std::string& action);
  // Before a firmware update: the tune read last, if any.
  void before_firmware();

  std::filesystem::path folder() const { return vars_.pfad / "backups"; }
  const std::optional<Tune>& last_read() const { return last_read_; }

 private:
  void keep(const Tune& tune, const std::string& action, const char* which);

  Form1Controls& c_;
  ProgramState& vars_;
  Platform& p_;
  std::optional<Tune> last_read_;
  std::string unreadable_;  // why the tune read last cannot be kept
};

}  // namespace nerit
