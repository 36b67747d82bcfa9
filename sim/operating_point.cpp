#include "sim/operating_point.h"

#include <cstdlib>

#include "sim/memory_map.h"

namespace nerit::sim {

namespace {

template <typename PointAt>
int nearest(int value, PointAt point_at) {
  int best = 0;
  long best_distance = -1;
  for (int k = 0; k < kAxisPoints; ++k) {
    const long distance = std::labs(static_cast<long>(point_at(k)) - value);
    if (best_distance < 0 || distance < best_distance) {
      best = k;
      best_distance = distance;
    }
  }
  return best;
}

}  // namespace

int nearest_load_row(const MemoryWindow& ram, int load_value) {
  // The program keeps load points as signed 16-bit values.
  return nearest(load_value,
                 [&](int k) { return static_cast<std::int16_t>(ram.word(kLoadAxis + 2 * k)); });
}

int nearest_speed_column(const MemoryWindow& ram, std::uint16_t period) {
  return 1 + nearest(period, [&](int k) { return ram.word(kSpeedAxis + 2 * k); });
}

}  // namespace nerit::sim
