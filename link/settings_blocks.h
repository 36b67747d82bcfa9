#pragma once
// The two 16-byte settings blocks as the controller keeps them (working memory 0x0240 and
// 0x0250; block A also at EEPROM 0x0010): built from the window for writing, and read back
// into numbers.
#include <array>

#include "link/frames.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

// Recomputes injsizecorr = floor(injalt x 128 / injneu) first, as every bulk write does.
FrameData settings_block_a(const Form1Controls& c, ProgramState& vars);
FrameData settings_block_b(const Form1Controls& c, const ProgramState& vars);
int map_flags(const Form1Controls& c);

// Block A as read from the controller; 16-bit values are little-endian.
struct SettingsBlockA {
  int load_type = 0;
  int drucksensor = 0;
  int tps_min = 0, tps_max = 0;
  int injoffset_in = 0, injoffset_out = 0;
  int injalt = 0, injneu = 0;
  int injsizecorr = 0;
  int airflowtype = 0;
  int aoutmax = 0;
  int boost_enable = 0;  // 1: boost control on
};

// Block B as read from the controller. Acceleration fuel holds parameters 0, 1, 3, 4 and 5:
// parameter 2 never reaches the controller.
struct SettingsBlockB {
  int boost_start = 0, boost_set = 0;
  int zylinder = 0;
  int injchannels = 0;
  int map_flags = 0;  // bit 0 correction map on, bit 1 airflow map on
  std::array<int, 5> accel{};
};
inline constexpr std::array<int, 5> kAccelParamsInBlockB = {0, 1, 3, 4, 5};

// The speed factor block B's cylinder count gives (rpmfaktor / period = rpm): 4, 6 and 8
// cylinders give 30000000, 20000000 and 15000000; any other count 0 (the factor stays).
int rpmfaktor_of_cylinders(int zylinder);
// The speed a period shows as its heading: rpmfaktor / period in whole hundreds of rpm.
double speed_heading(double rpmfaktor, int period);

SettingsBlockA read_settings_block_a(const FrameData& d);
SettingsBlockB read_settings_block_b(const FrameData& d);

}  // namespace nerit
