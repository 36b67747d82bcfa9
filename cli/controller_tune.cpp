#include "cli/controller_tune.h"

#include "cli/command.h"
#include "files/tune_file.h"
#include "files/tune_memory.h"
#include "shell/errors.h"
#include "shell/numbers.h"
#include "shell/pressure_tables.h"

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
