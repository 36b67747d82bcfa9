#include "live/acceleration_fuel.h"

#include <string>

#include "link/memory_map.h"
#include "link/settings_blocks.h"
#include "shell/numbers.h"

namespace nerit {

void AccelerationFuel::HScroll1_Scroll(std::size_t i) {
  pc_.Label8.at(i).caption = std::to_string(pc_.HScroll1.at(i).value);
  for (std::size_t k = 0; k < 5; ++k) c_.accel_param[k] = val(pc_.Label8[k].caption);
  c_.accel_param[5] = to_byte(val(pc_.Label8[5].caption));
}

void AccelerationFuel::HScroll1_Change(std::size_t i) {
  HScroll1_Scroll(i);
  if (vars_.connected != 1) return;
  wire_.send_block(kCmdSramWrite, kSettingsBlockB, settings_block_b(c_, vars_));
}

}  // namespace nerit
