#pragma once
// The two 16-byte settings blocks as the controller keeps them (working memory 0x0240 and
// 0x0250; block A also at EEPROM 0x0010).
#include "link/frames.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

// Recomputes injsizecorr = floor(injalt x 128 / injneu) first, as every bulk write does.
FrameData settings_block_a(const Form1Controls& c, ProgramState& vars);
FrameData settings_block_b(const Form1Controls& c, const ProgramState& vars);
int map_flags(const Form1Controls& c);

}  // namespace nerit
