#include "maps/surface_data.h"

#include "shell/numbers.h"

namespace nerit {

SurfaceData surface_from_grid(const Grid& g) {
  SurfaceData s;
  for (int i = 0; i < kMapSize; ++i) {
    const auto k = static_cast<std::size_t>(i);
    s.rpm_labels[k] = g.text(0, i + 1);
    s.load_labels[k] = g.text(i + 1, 0);
    for (int c = 0; c < kMapSize; ++c)
      s.values[k][static_cast<std::size_t>(c)] = val(g.text(i + 1, c + 1));
  }
  return s;
}

}  // namespace nerit
