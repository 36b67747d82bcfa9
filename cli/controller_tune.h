#pragma once
// The tune in the controller and the tune a file sends, as the window would have them.
#include <filesystem>
#include <iosfwd>
#include <string>

#include "cli/controller_line.h"
#include "files/tune.h"
#include "maps/load_axis.h"

namespace nerit::cli {

// The pressure-sensor table of the data folder ("\PressureSensor.dat"), for the MAP load axis.
LoadAxisInputs load_axis_inputs(const std::filesystem::path& data_folder);

// The 54 blocks read as the window reads them, as a tune. CliFailure kRefused when the
// cylinder count gives no speed factor (only 4, 6 and 8 do).
Tune read_controller_tune(ControllerLine& line, const LoadAxisInputs& in);

// Reads the controller's tune and keeps it as a restore point "STAMP_ACTION_read.inj" in the
// data folder's backups; its path goes to `err`. A tune that cannot be kept is a CliFailure
// (kBadFile) that names --no-backup.
void keep_restore_point(ControllerLine& line, const LoadAxisInputs& in,
                        const std::filesystem::path& data_folder, const std::string& action,
                        std::ostream& err);

// A tune file as "Write Data to Unit" sends it after a load: the axes from its headings and
// injsizecorr = floor(injalt x 128 / injneu). A MAP tune needs the pressure-sensor table:
// without it every load point would be 0.
Tune tune_to_send(const std::filesystem::path& file, const LoadAxisInputs& in);

}  // namespace nerit::cli
