#include "ui/map_grid_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "maps/cell_editor.h"

namespace nerit::ui {

namespace {

int button_code(Qt::MouseButton b) {
  switch (b) {
    case Qt::LeftButton:
      return kLeftButton;
    case Qt::RightButton:
      return kRightButton;
    case Qt::MiddleButton:
      return kMiddleButton;
    default:
      return 0;
  }
}

}  // namespace

MapGridView::MapGridView(Grid& grid, HandlerRunner run, MapGridEvents events,
                         const MapEditKeys& edit_keys, QWidget* parent)
    : GridView(grid, Fit::Stretch, parent),
      grid_(grid),
      run_(std::move(run)),
      events_(std::move(events)),
      edit_keys_(edit_keys) {
  grid_model()->set_show_selection(true);
  grid_model()->set_tool_tip(
      "Drag to select a block, right-click for the block commands\n"
      "Ctrl+C copy, Ctrl+V paste, Ctrl+Z undo, Ctrl+Y redo");
  setAutoScroll(false);
}

void MapGridView::mousePressEvent(QMouseEvent* event) {
  event->accept();
  const int button = button_code(event->button());
  const QModelIndex cell = indexAt(event->position().toPoint());
  if (event->buttons() == event->button()) pressed_.clear();  // a release we never saw
  if (button == 0 || !cell.isValid()) return;
  // The right button only calls up the block commands, on headings too: the selection stays.
  const bool heading = cell.row() < grid_.fixed_rows || cell.column() < grid_.fixed_cols;
  if (heading && button != kRightButton) return;
  pressed_.insert(button);
  if (button != kRightButton) {
    // Only the far corner: the handler still needs the cell the box was editing.
    grid_.row_sel = cell.row();
    grid_.col_sel = cell.column();
  }
  run_([this, button] { events_.MouseDown(button); });
}

void MapGridView::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

void MapGridView::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  if (!pressed_.contains(kLeftButton) || !(event->buttons() & Qt::LeftButton)) return;
  const auto [r, c] = body_cell_at(event->position().toPoint());
  if (r == grid_.row_sel && c == grid_.col_sel) return;
  grid_.row_sel = r;
  grid_.col_sel = c;
  refresh();
}

void MapGridView::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  const int button = button_code(event->button());
  if (pressed_.erase(button) == 0) return;
  run_([this, button] { events_.MouseUp(button); });
}

std::pair<int, int> MapGridView::body_cell_at(QPoint pos) const {
  const QRect area = viewport()->rect();
  pos.setX(std::clamp(pos.x(), area.left(), area.right()));
  pos.setY(std::clamp(pos.y(), area.top(), area.bottom()));
  const int last_row = grid_.rows() - 1, last_col = grid_.cols() - 1;
  int r = rowAt(pos.y()), c = columnAt(pos.x());
  if (r < 0) r = last_row;  // below the last row
  if (c < 0) c = last_col;
  return {std::clamp(r, std::min(grid_.fixed_rows, last_row), last_row),
          std::clamp(c, std::min(grid_.fixed_cols, last_col), last_col)};
}

void MapGridView::keyPressEvent(QKeyEvent* event) {
  const EditKey key = edit_key(*event);
  if (key == EditKey::None) {
    event->ignore();  // the grid has no keys of its own
    return;
  }
  event->accept();
  edit_keys_.run(key);
}

}  // namespace nerit::ui
