#pragma once
// The main window with its maps, mouse and keyboard as the grids and the editor boxes see them.
#include <string_view>

#include "tests/link/link_fixture.h"

namespace nerit::testing {

constexpr MapId kCorr = MapId::Correction;
constexpr MapId kAir = MapId::Airflow;

class MapFixture : public LinkFixture {
 protected:
  Grid& grid(MapId m) { return f.editor.grid(m); }
  TextBox& box(MapId m) { return f.editor.box(m); }

  // The grid names the cell under the mouse, then its handler runs.
  void press(MapId m, int r, int c, int button = kLeftButton, bool up = false) {
    grid(m).row_sel = r;
    grid(m).col_sel = c;
    if (m == kCorr)
      up ? f.editor.MSFlexGrid2_MouseUp(button) : f.editor.MSFlexGrid2_MouseDown(button);
    else
      up ? f.editor.MSFlexGrid3_MouseUp(button) : f.editor.MSFlexGrid3_MouseDown(button);
  }
  void drag(MapId m, int r0, int c0, int r1, int c1) {
    press(m, r0, c0);
    press(m, r1, c1, kLeftButton, true);
  }
  void click(MapId m, int r, int c) { drag(m, r, c, r, c); }

  // Characters as themselves ("\r" is Enter, "\b" Backspace), '<' '>' '^' 'v' the arrow keys.
  void type(MapId m, std::string_view keys) {
    for (char ch : keys) {
      const std::size_t arrow = std::string_view("<^>v").find(ch);
      if (arrow != std::string_view::npos) {
        f.editor.type_key(m, kKeyLeft + static_cast<int>(arrow), 0);
        continue;
      }
      const int code = ch >= 'a' && ch <= 'z' ? ch - 'a' + 'A' : static_cast<unsigned char>(ch);
      f.editor.type_key(m, code == ',' ? 188 : code == '-' ? 189 : code, ch);
    }
  }

  // The texts of cells r0..r1 x c0..c1, rows joined by "|", cells by " ".
  std::string cells(MapId m, int r0, int c0, int r1, int c1) {
    std::string out;
    for (int r = r0; r <= r1; ++r)
      for (int c = c0; c <= c1; ++c) out += (c > c0 ? " " : r > r0 ? "|" : "") + grid(m).text(r, c);
    return out;
  }
};

}  // namespace nerit::testing
