#include "maps/cell_editor.h"

#include <algorithm>
#include <string_view>

#include "shell/numbers.h"

namespace nerit {

namespace {

// The box's text after the program set it: caret at the end.
void set_box_text(TextBox& box, std::string text) {
  box.text = std::move(text);
  box.sel_start = static_cast<int>(box.text.size());
  box.sel_length = 0;
}

void clamp_text(TextBox& box, double low, double high) {
  if (val(box.text) > high) set_box_text(box, number_text(high));
  if (val(box.text) < low) set_box_text(box, number_text(low));
}

struct Range {
  double low, high;
};

// What a body cell of each map takes.
constexpr Range body_range(MapId map) {
  return map == MapId::Correction ? Range{-50, 100} : Range{20, 5000};
}

void clamp_body_text(TextBox& box, MapId map) {
  clamp_text(box, body_range(map).low, body_range(map).high);
}

}  // namespace

Grid& CellEditor::grid(MapId map) {
  return map == MapId::Correction ? c_.MSFlexGrid2 : c_.MSFlexGrid3;
}

TextBox& CellEditor::box(MapId map) {
  return map == MapId::Correction ? mc_.Text2 : mc_.Text5;
}

const Frame& CellEditor::frame(MapId map) const {
  return map == MapId::Correction ? mc_.correction_frame : mc_.airflow_map_frame;
}

double CellEditor::clamp_body(MapId map, double value) {
  const Range r = body_range(map);
  return std::clamp(value, r.low, r.high);
}

void CellEditor::keep_box_text(MapId map) {
  Grid& g = grid(map);
  MapEdit edit{map, {}};
  edit.set(g, g.row, g.col, box(map).text);
  history_.record(std::move(edit));
}

void CellEditor::mouse_down(MapId map, int button) {
  state_.active_map = static_cast<int>(map);
  Grid& g = grid(map);
  if (button == kRightButton) {
    mc_.Frame6.left = frame(map).left + g.left;
    mc_.Frame6.top = frame(map).top + g.top;
    mc_.Frame6.visible = true;
    return;
  }
  press_place(map);
}

void CellEditor::press_place(MapId map) {
  Grid& g = grid(map);
  mc_.Frame6.visible = false;
  // The open box's text goes into the grid's current cell first (nothing is sent).
  if (box(map).visible) keep_box_text(map);
  g.set_current(g.row_sel, g.col_sel);
  state_.block.start_row = g.row;
  state_.block.start_col = g.col;
  place(map);
}

void CellEditor::mouse_up(MapId map, int) {
  const Grid& g = grid(map);
  state_.block.end_row = g.row_sel;
  state_.block.end_col = g.col_sel;
}

void CellEditor::place(MapId map) {
  Grid& g = grid(map);
  TextBox& b = box(map);
  b.width = g.col_width(g.col);
  b.height = g.row_height(g.row);
  b.top = g.top + g.cell_top(g.row);
  b.left = frame(map).left + g.left + g.cell_left(g.col);
  b.text = number_text(val(g.text(g.row, g.col)));
  b.visible = true;
  box(map == MapId::Correction ? MapId::Airflow : MapId::Correction).has_focus = false;
  got_focus(map);
}

void CellEditor::got_focus(MapId map) {
  TextBox& b = box(map);
  b.has_focus = true;
  b.sel_start = 0;
  b.sel_length = static_cast<int>(b.text.size());
}

void CellEditor::close_box(MapId map) {
  TextBox& b = box(map);
  b.text = "0";
  b.visible = false;
  b.has_focus = false;
}

void CellEditor::key_press(MapId map, int& key_ascii) {
  const std::string_view accepted = map == MapId::Correction ? "1234567890-," : "1234567890";
  if (key_ascii == kKeyBack) return;
  if (key_ascii <= 0 || key_ascii > 127 ||
      accepted.find(static_cast<char>(key_ascii)) == std::string_view::npos)
    key_ascii = 0;
}

void CellEditor::clamp_correction(int key_code) {
  const Grid& g = c_.MSFlexGrid2;
  TextBox& b = mc_.Text2;
  if (g.row >= 1 && g.col >= 1) {
    clamp_body_text(b, MapId::Correction);
  } else if (g.row == 0 && g.col >= 1) {
    if (key_code == kKeyReturn) clamp_text(b, 500, 8000);
  } else if (g.col == 0 && key_code == kKeyReturn) {
    switch (c_.Combo1.list_index) {
      case 0:
        clamp_text(b, 0, 100);
        break;
      case 1:
        clamp_text(b, 0, 300);
        break;
      case 2:
        clamp_text(b, 0, 5000);
        break;
      case 3:
        clamp_text(b, 50, 3000);
        break;
      default:
        break;  // no load type: no range
    }
  }
}

void CellEditor::key_down(MapId map, int key_code) {
  if (map == MapId::Correction) clamp_correction(key_code);
  Grid& g = grid(map);
  // Back to the cell the box was placed on; the selection's far corner stays on show.
  g.row = state_.block.start_row;
  g.col = state_.block.start_col;
  TextBox& b = box(map);
  switch (key_code) {
    case kKeyRight:
    case kKeyLeft:
    case kKeyUp:
    case kKeyDown:
      move(map, key_code);
      break;
    case kKeyD:
      set_box_text(b, number_text(val(b.text) + 1));
      break;
    case kKeyA:
      set_box_text(b, number_text(val(b.text) - 1));
      break;
    case kKeyReturn:
      if (map == MapId::Airflow) clamp_body_text(b, map);
      commit(map);
      break;
    default:
      break;
  }
}

void CellEditor::move(MapId map, int key_code) {
  keep_box_text(map);
  Grid& g = grid(map);
  int row = g.row, col = g.col;
  switch (key_code) {
    case kKeyRight:
      col = col < kMapSize ? col + 1 : 1;
      break;
    case kKeyLeft:
      col = col >= 2 ? col - 1 : kMapSize;
      break;
    case kKeyUp:
      row = row >= 2 ? row - 1 : kMapSize;
      break;
    default:
      row = row < kMapSize ? row + 1 : 1;
      break;
  }
  // Placed again as a press places it: the new cell takes the box's text too and becomes the
  // block's start; the block's end stays where the mouse left it.
  g.set_current(row, col);
  press_place(map);
}

void CellEditor::commit(MapId map) {
  Grid& g = grid(map);
  TextBox& b = box(map);
  SelectedBlock& block = state_.block;
  const std::string text = number_text(val(b.text));
  MapEdit edit{map, {}};
  for (int col = block.start_col; col <= block.end_col; ++col)
    for (int row = block.start_row; row <= block.end_row; ++row) edit.set(g, row, col, text);
  // A block dragged left wrote nothing but still sends its rows; one dragged up sends none.
  const int first_row = block.start_row, last_row = block.end_row;
  block.end_row = block.start_row;
  block.end_col = block.start_col;
  g.set_current(block.start_row, block.start_col);
  close_box(map);
  history_.record(std::move(edit));
  if (g.row >= 1 && g.col >= 1 && vars_.connected == 1) writer_.send_rows(map, first_row, last_row);
}

void CellEditor::type_key(MapId map, int key_code, char ch) {
  key_down(map, key_code);
  TextBox& b = box(map);
  if (ch == 0 || !b.visible || !b.has_focus) return;
  int key_ascii = static_cast<unsigned char>(ch);
  key_press(map, key_ascii);
  if (key_ascii == 0) return;
  std::string& s = b.text;
  const auto start =
      static_cast<std::size_t>(std::clamp(b.sel_start, 0, static_cast<int>(s.size())));
  const auto length =
      std::min(static_cast<std::size_t>(std::max(b.sel_length, 0)), s.size() - start);
  if (key_ascii == kKeyBack) {
    if (length > 0) {
      s.erase(start, length);
      b.sel_start = static_cast<int>(start);
    } else if (start > 0) {
      s.erase(start - 1, 1);
      b.sel_start = static_cast<int>(start - 1);
    }
  } else {
    s.replace(start, length, 1, static_cast<char>(key_ascii));
    b.sel_start = static_cast<int>(start + 1);
  }
  b.sel_length = 0;
}

}  // namespace nerit
