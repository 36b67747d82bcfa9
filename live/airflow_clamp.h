#pragma once
// The airflow output clamp: millivolts in the "Clamp / mV:" field, a byte in the controller.
#include <cstdint>
#include <string>

namespace nerit {

// floor(mV x 255 / 5000); OverflowError outside 0..255.
std::uint8_t aoutmax_from_clamp(double millivolts);
// The smallest whole millivolt value that converts back to the byte.
std::string clamp_text(int aoutmax);

}  // namespace nerit
