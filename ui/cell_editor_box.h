#pragma once
// The floating cell editor of a map (Text2, Text5): a line edit over the grid's current cell.
// Every key goes to the core first; the box then shows the model's text and selection.
#include <QLineEdit>
#include <array>
#include <functional>
#include <string>

#include "shell/controls.h"
#include "ui/grid_view.h"
#include "ui/map_edit_keys.h"
#include "ui/qt_platform.h"

namespace nerit::ui {

struct CellEditorEvents {
  std::function<void()> GotFocus;
  std::function<void(int key_code)> KeyDown;
  std::function<void(int key_code, char ch)> type_key;  // key down, then the character
};

class CellEditorBox : public QLineEdit {
 public:
  // `frame` is the map frame the model's position counts from.
  CellEditorBox(TextBox& model, const Frame& frame, GridView* view, HandlerRunner run,
                CellEditorEvents events, const MapEditKeys& edit_keys);
  void refresh();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void take_text();  // what the widget shows into the model
  // Over the cell the model placed the box on: it stays there while the grid's current cell
  // moves on (a load type chosen, an Automap fill).
  void place();

  TextBox& m_;
  const Frame& frame_;
  GridView* view_;
  HandlerRunner run_;
  CellEditorEvents events_;
  const MapEditKeys& edit_keys_;
  // The model as last shown, so a refresh only overrides what a handler changed.
  std::string text_;
  int sel_start_ = -1, sel_length_ = -1;
  bool focus_ = false;
  std::array<int, 4> placed_at_{-1, -1, -1, -1};  // the model's left, top, width, height
  int placed_row_ = -1, placed_col_ = -1;
};

}  // namespace nerit::ui
