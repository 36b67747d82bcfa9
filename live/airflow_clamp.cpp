#include "live/airflow_clamp.h"

#include <string>

#include "shell/numbers.h"

namespace nerit {

std::uint8_t aoutmax_from_clamp(double millivolts) {
  return to_byte(floor_part(millivolts * 255 / 5000));
}

std::string clamp_text(int aoutmax) {
  // Rounding up: floor(ceil(b x 5000 / 255) x 255 / 5000) is b again for every byte.
  return std::to_string((aoutmax * 5000 + 254) / 255);
}

}  // namespace nerit
