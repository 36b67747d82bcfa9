#include "ui/cell_editor_box.h"

#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>

#include "ui/map_keys.h"

namespace nerit::ui {

CellEditorBox::CellEditorBox(TextBox& model, const Frame& frame, GridView* view, HandlerRunner run,
                             CellEditorEvents events, const MapEditKeys& edit_keys)
    // A sibling of the grid rather than a child of its viewport: a table's accessible children
    // are its cells, so there the box would be out of reach of assistive technology.
    : QLineEdit(view->parentWidget()),
      m_(model),
      frame_(frame),
      view_(view),
      run_(std::move(run)),
      events_(std::move(events)),
      edit_keys_(edit_keys) {
  setFrame(false);
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  setStyleSheet("QLineEdit { border: 1px solid palette(highlight); padding: 0 2px; }");
  // Text only changes through the keys the core sees.
  setAttribute(Qt::WA_InputMethodEnabled, false);
  setContextMenuPolicy(Qt::NoContextMenu);
  setAcceptDrops(false);
  connect(this, &QLineEdit::textEdited, this, [this] { take_text(); });
  for (QHeaderView* h : {view->horizontalHeader(), view->verticalHeader()})
    connect(h, &QHeaderView::sectionResized, this, [this] { place(); });
  hide();
}

void CellEditorBox::take_text() {
  m_.text = text().toStdString();
  m_.sel_start = hasSelectedText() ? selectionStart() : cursorPosition();
  m_.sel_length = hasSelectedText() ? selectionLength() : 0;
  text_ = m_.text;
  sel_start_ = m_.sel_start;
  sel_length_ = m_.sel_length;
}

void CellEditorBox::place() {
  const Grid& g = view_->grid();
  const std::array<int, 4> at{m_.left, m_.top, m_.width, m_.height};
  if (at != placed_at_) {
    // The cell whose corner the model's twips name; the current cell if none does.
    placed_at_ = at;
    placed_row_ = g.row;
    placed_col_ = g.col;
    for (int r = 0; r < g.rows(); ++r)
      if (g.top + g.cell_top(r) == m_.top) placed_row_ = r;
    for (int c = 0; c < g.cols(); ++c)
      if (frame_.left + g.left + g.cell_left(c) == m_.left) placed_col_ = c;
  }
  const QRect cell = view_->visualRect(view_->model()->index(placed_row_, placed_col_));
  if (!cell.isValid()) return;
  const QRect over(view_->viewport()->mapTo(parentWidget(), cell.topLeft()), cell.size());
  if (geometry() != over) setGeometry(over);
}

void CellEditorBox::refresh() {
  if (m_.text != text_ || m_.sel_start != sel_start_ || m_.sel_length != sel_length_) {
    text_ = m_.text;
    sel_start_ = m_.sel_start;
    sel_length_ = m_.sel_length;
    const QSignalBlocker block(this);
    const QString t = QString::fromStdString(m_.text);
    if (text() != t) setText(t);
    if (m_.sel_length > 0)
      setSelection(m_.sel_start, m_.sel_length);
    else
      setCursorPosition(m_.sel_start);
  }
  if (!m_.visible) {
    if (hasFocus()) view_->setFocus(Qt::OtherFocusReason);
    if (!isHidden()) hide();
    focus_ = false;
    return;
  }
  place();
  if (isHidden()) {
    show();
    raise();
  }
  // Only a handler giving the box the focus takes it: the user may have clicked elsewhere.
  if (m_.has_focus && !focus_ && !hasFocus()) setFocus(Qt::OtherFocusReason);
  focus_ = m_.has_focus;
}

void CellEditorBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  m_.has_focus = true;
  focus_ = true;
  switch (event->reason()) {
    case Qt::MouseFocusReason:
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
      run_([this] { events_.GotFocus(); });
      break;
    default:
      break;  // the core placed the box and gave it the focus itself
  }
}

void CellEditorBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  m_.has_focus = false;
  focus_ = false;
}

void CellEditorBox::keyPressEvent(QKeyEvent* event) {
  take_text();
  const int code = key_code(*event);
  event->accept();
  if (const EditKey edit = edit_key(*event); edit != EditKey::None) {
    run_([this, code] { events_.KeyDown(code); });
    edit_keys_.run(edit);
    return;
  }
  if (caret_key(*event)) {
    run_([this, code] { events_.KeyDown(code); });
    if (!m_.visible) return;
    QLineEdit::keyPressEvent(event);
    take_text();
    return;
  }
  const char ch = key_char(*event);
  run_([this, code, ch] { events_.type_key(code, ch); });
}

}  // namespace nerit::ui
