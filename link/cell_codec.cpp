#include "link/cell_codec.h"

#include <cmath>

#include "link/frames.h"
#include "shell/numbers.h"

namespace nerit {

namespace {

// What writing the text back computes, exactly as the encoder does it.
double word_written_back(const std::string& text) {
  const double v = val(text);
  return v > 0 ? floor_part(static_cast<double>(kVortexTicks) / v) : -1;
}

}  // namespace

std::uint8_t correction_byte(double percent) {
  return to_byte(through_text(percent * 1.27 + 128));
}

double correction_percent(std::uint8_t stored) {
  return round_half_even((stored - 128) / 1.27);
}

std::string correction_cell_text(std::uint8_t stored) {
  return number_text(correction_percent(stored));
}

std::array<std::uint8_t, 2> airflow_bytes(double value, double airflowtype) {
  if (airflowtype == 0) return word_bytes(floor_part(divide(kVortexTicks, value)));
  double n = floor_part(value * 255 / 5000);
  if (n > 255) n = 255;
  return {to_byte(n), 0};
}

std::string airflow_cell_text(std::uint8_t low, std::uint8_t high, double airflowtype) {
  if (airflowtype != 0) return number_text(round_half_even(low * 5000.0 / 255));
  const int word = high * 256 + low;
  if (word == 0) return "0";  // no period: no frequency to show
  // Every Hz in (250000 / (word + 1), 250000 / word] writes back as this word; show the one
  // with the fewest decimals, rounded down from the upper end (rounding up leaves the range).
  const double upper = static_cast<double>(kVortexTicks) / word;
  for (int decimals = 0; decimals <= 12; ++decimals) {
    const double scale = std::pow(10.0, decimals);
    const std::string text = number_text(std::floor(upper * scale) / scale);
    if (word_written_back(text) == word) return text;
  }
  return number_text(upper);
}

}  // namespace nerit
