#include "cli/controller_tune.h"

#include <QDateTime>
#include <ostream>

#include "cli/command.h"
#include "files/restore_points.h"
#include "files/tune_file.h"
#include "files/tune_memory.h"
#include "shell/errors.h"
#include "shell/numbers.h"
#include "shell/pressure_tables.h"
#include "ui/qt_date_time.h"

namespace nerit::cli {

LoadAxisInputs load_axis_inputs(const std::filesystem::path& data_folder) {
  LoadAxisInputs in;
  if (auto table = PressureFiles(data_folder).sensor()) in.pressure = std::move(*table);
  return in;
}

Tune read_controller_tune(ControllerLine& line, const LoadAxisInputs& in) {
  const MemoryImage memory = read_memory(line);
  const Tune tune = tune_from_memory(memory, 0, in);
  if (tune.rpmfaktor == 0)
    throw CliFailure(kRefused, "the controller reports " + std::to_string(tune.zylinder) +
                                   " cylinders; only 4, 6 and 8 give its speed axis");
  return tune;
}

void keep_restore_point(ControllerLine& line, const LoadAxisInputs& in,
                        const std::filesystem::path& data_folder, const std::string& action,
                        std::ostream& err) {
  const Tune held = read_controller_tune(line, in);
  try {
    const auto file = save_restore_point(
        data_folder / "backups", held,
        restore_point_stamp(ui::date_time_of(QDateTime::currentDateTime())), action, "read");
    err << "restore point: " << file.string() << "\n";
  } catch (const std::exception& e) {
    throw CliFailure(kBadFile, std::string("the controller's tune cannot be kept as a restore "
                                           "point (") +
                                   e.what() + "); --no-backup goes on without one");
  }
}

Tune tune_to_send(const std::filesystem::path& file, const LoadAxisInputs& in) {
  Tune tune = read_tune_file(file);
  if (tune.load_type == kLoadMap && in.pressure.empty())
    throw ProgramError(
        "the MAP load points come from the pressure-sensor table, and the data folder has no "
        "PressureSensor.dat (save a calibration in the window's Basesettings, or name the "
        "window's folder with --data-dir)");
  tune.axes = axes_from_headings(tune, in);
  if (tune.injneu == 0) throw ProgramError(file.string() + ": Injsize neu is 0.");
  tune.injsizecorr = to_byte(floor_part(tune.injalt * 128.0 / tune.injneu));
  return tune;
}

}  // namespace nerit::cli
