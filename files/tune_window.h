#pragma once
// The main window's tune as numbers: what a settings file, a restore point or a comparison
// takes from the window, and the window showing a tune.
#include "files/tune.h"
#include "live/panel_controls.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

// Every field converted as the file stores it (ties to even). A value that does not fit its
// field is a ProgramError naming the field or the cell and its text; nothing is clamped.
// A load type must be chosen (InvalidPropertyError otherwise).
// The controller axes are the window's rpm_points and load_points as they are.
Tune tune_from_window(const Form1Controls& c, const ProgramState& vars);

// The window showing `tune`: the variables, the load type, the panels' boxes, bars and fields,
// both grids' headings and cells, and the controller axes. Nothing is logged, sent or
// recomputed, and no handler runs.
void apply_tune(const Tune& tune, Form1Controls& c, PanelControls& pc, ProgramState& vars);

}  // namespace nerit
