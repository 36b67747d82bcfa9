#pragma once
// The main window's tune as numbers: what a settings file, a restore point or a comparison
// takes from the window.
#include "files/tune.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

// Every field converted as the file stores it (ties to even). A value that does not fit its
// field is a ProgramError naming the field or the cell and its text; nothing is clamped.
// A load type must be chosen (InvalidPropertyError otherwise).
Tune tune_from_window(const Form1Controls& c, const ProgramState& vars);

}  // namespace nerit
