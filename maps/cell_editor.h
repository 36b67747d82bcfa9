#pragma once
// The floating cell editors: Text2 over the correction map, Text5 over the airflow map. A
// mouse press places the box over a cell; keys in the box move it, nudge the value and on
// Enter write the value into the selected block and send the touched rows when online.
#include "maps/edit_history.h"
#include "maps/map_controls.h"
#include "maps/map_row_writer.h"
#include "maps/map_state.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

// Mouse buttons and key codes as the grid and box events report them.
enum MouseButton : int { kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };
enum KeyCode : int {
  kKeyBack = 8,
  kKeyReturn = 13,
  kKeyLeft = 37,
  kKeyUp = 38,
  kKeyRight = 39,
  kKeyDown = 40,
  kKeyA = 65,
  kKeyD = 68,
};

class CellEditor {
 public:
  CellEditor(Form1Controls& c, MapControls& mc, ProgramState& vars, MapState& state,
             MapRowWriter& writer, EditHistory& history)
      : c_(c), mc_(mc), vars_(vars), state_(state), writer_(writer), history_(history) {}

  // Before a press the grid's row_sel/col_sel name the cell under the mouse; row/col are
  // still the cell the box was editing.
  void MSFlexGrid2_MouseDown(int button) { mouse_down(MapId::Correction, button); }
  void MSFlexGrid3_MouseDown(int button) { mouse_down(MapId::Airflow, button); }
  // The selection's far corner, wherever the button came up.
  void MSFlexGrid2_MouseUp(int button) { mouse_up(MapId::Correction, button); }
  void MSFlexGrid3_MouseUp(int button) { mouse_up(MapId::Airflow, button); }

  void Text2_GotFocus() { got_focus(MapId::Correction); }
  void Text5_GotFocus() { got_focus(MapId::Airflow); }
  // Sets key_ascii to 0 for a character the box does not take.
  void Text2_KeyPress(int& key_ascii) { key_press(MapId::Correction, key_ascii); }
  void Text5_KeyPress(int& key_ascii) { key_press(MapId::Airflow, key_ascii); }
  void Text2_KeyDown(int key_code) { key_down(MapId::Correction, key_code); }
  void Text5_KeyDown(int key_code) { key_down(MapId::Airflow, key_code); }

  // One key as the box receives it: key down, then its character (0 for none) if the box
  // still has the focus and takes it.
  void type_key(MapId map, int key_code, char ch);

  // Hides the box without writing it, as a commit leaves it.
  void close_box(MapId map);

  Grid& grid(MapId map);
  TextBox& box(MapId map);
  // Clamps a value typed into a body cell to the map's range.
  static double clamp_body(MapId map, double value);

 private:
  void mouse_down(MapId map, int button);
  void mouse_up(MapId map, int button);
  void got_focus(MapId map);
  void key_press(MapId map, int& key_ascii);
  void key_down(MapId map, int key_code);
  const Frame& frame(MapId map) const;
  // Writes the box's text into the cell it edits, as an undoable edit that sends nothing.
  void keep_box_text(MapId map);
  void clamp_correction(int key_code);
  void move(MapId map, int key_code);
  // Placing the box as a left press does: command frame hidden, the open box's text kept in
  // the current cell, the cell under the mouse (row_sel, col_sel) current and the block's start.
  void press_place(MapId map);
  void place(MapId map);
  void commit(MapId map);

  Form1Controls& c_;
  MapControls& mc_;
  ProgramState& vars_;
  MapState& state_;
  MapRowWriter& writer_;
  EditHistory& history_;
};

}  // namespace nerit
