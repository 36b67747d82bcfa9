#pragma once
// The correction map as the 3-D graph draws it.
#include <array>
#include <string>

#include "shell/controls.h"
#include "shell/form1_controls.h"

namespace nerit {

struct SurfaceData {
  std::array<std::string, kMapSize> rpm_labels;   // heading texts of columns 1..16
  std::array<std::string, kMapSize> load_labels;  // heading texts of rows 1..16
  // [load row][rpm column]; the graph places point [r][c] at load r + 1, rpm c + 1, so headings
  // that are "--" or out of order never fold the surface.
  std::array<std::array<double, kMapSize>, kMapSize> values{};
};

// Reads a 17x17 map grid: row 0 and column 0 hold the headings, the body the values as text.
SurfaceData surface_from_grid(const Grid& g);

}  // namespace nerit
