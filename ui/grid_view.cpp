#include "ui/grid_view.h"

#include <QHeaderView>
#include <algorithm>

#include "ui/qt_colors.h"
#include "ui/text_cache_delegate.h"

namespace nerit::ui {

namespace {

// Past this many changed cells one update of the whole grid is cheaper than one per cell.
constexpr std::size_t kCellUpdates = 24;

bool between(int v, int a, int b) {
  return v >= std::min(a, b) && v <= std::max(a, b);
}

}  // namespace

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : cols_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_ || index.column() >= cols_) return {};
  const Cell& cell = shown_[static_cast<std::size_t>(index.row() * cols_ + index.column())];
  const QPalette palette;
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromStdString(cell.text);
    case Qt::BackgroundRole:
      if (cell.fixed) return QBrush(to_qcolor(kButtonFace, palette));
      if (cell.selected) return QBrush(palette.color(QPalette::Active, QPalette::Highlight));
      return QBrush(to_qcolor(cell.back, palette));
    case Qt::ForegroundRole:
      if (cell.selected) return QBrush(palette.color(QPalette::Active, QPalette::HighlightedText));
      if (!look_.enabled && !cell.fixed)
        return QBrush(palette.color(QPalette::Disabled, QPalette::Text));
      return QBrush(QColor(Qt::black));
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(cell.fixed ? Qt::AlignCenter
                                            : (Qt::AlignRight | Qt::AlignVCenter));
    case Qt::ToolTipRole:
      return tool_tip_.isEmpty() ? QVariant() : QVariant(tool_tip_);
    default:
      return {};
  }
}

GridModel::Look GridModel::look_now() const {
  return {grid_.revision(), grid_.row,        grid_.col,        grid_.row_sel,
          grid_.col_sel,    grid_.fixed_rows, grid_.fixed_cols, grid_.enabled};
}

GridModel::Cell GridModel::cell_now(int r, int c) const {
  Cell cell{grid_.text(r, c), grid_.back_color(r, c), false, false};
  cell.fixed = r < grid_.fixed_rows || c < grid_.fixed_cols;
  // The current cell itself keeps its colours, as in a spreadsheet.
  cell.selected = show_selection_ && !cell.fixed && !(r == grid_.row && c == grid_.col) &&
                  between(r, grid_.row, grid_.row_sel) && between(c, grid_.col, grid_.col_sel);
  return cell;
}

void GridModel::refresh() {
  const Look now = look_now();
  if (grid_.rows() != rows_ || grid_.cols() != cols_) {
    beginResetModel();
    rows_ = grid_.rows();
    cols_ = grid_.cols();
    look_ = now;
    shown_.clear();
    for (int r = 0; r < rows_; ++r)
      for (int c = 0; c < cols_; ++c) shown_.push_back(cell_now(r, c));
    endResetModel();
    return;
  }
  if (now == look_) return;
  const bool enabled_changed = now.enabled != look_.enabled;
  look_ = now;
  std::vector<QModelIndex> changed;
  for (int r = 0; r < rows_; ++r) {
    for (int c = 0; c < cols_; ++c) {
      Cell& shown = shown_[static_cast<std::size_t>(r * cols_ + c)];
      Cell cell = cell_now(r, c);
      if (cell == shown) continue;
      shown = std::move(cell);
      changed.push_back(index(r, c));
    }
  }
  if (enabled_changed || changed.size() > kCellUpdates) {
    if (rows_ > 0 && cols_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, cols_ - 1));
    return;
  }
  for (const QModelIndex& i : changed) emit dataChanged(i, i);
}

GridView::GridView(const Grid& grid, Fit fit, QWidget* parent)
    : QTableView(parent), grid_(grid), model_(new GridModel(grid, this)), fit_(fit) {
  setModel(model_);
  setItemDelegate(new TextCacheDelegate(this));
  horizontalHeader()->hide();
  verticalHeader()->hide();
  setSelectionMode(QAbstractItemView::NoSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setFocusPolicy(Qt::StrongFocus);
  setWordWrap(false);
  setTextElideMode(Qt::ElideNone);
  QFont small = font();
  small.setPointSizeF(small.pointSizeF() * 0.9);
  setFont(small);
  const int row_px = fontMetrics().height() + 6;
  verticalHeader()->setMinimumSectionSize(row_px);
  verticalHeader()->setDefaultSectionSize(row_px);
  if (fit_ == Fit::Stretch) {
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  } else {
    horizontalHeader()->setStretchLastSection(true);
  }
  refresh();
}

void GridView::refresh() {
  const bool resized = model_->rowCount() != grid_.rows() || model_->columnCount() != grid_.cols();
  model_->refresh();
  if (isEnabled() != grid_.enabled) setEnabled(grid_.enabled);
  if (isHidden() == grid_.visible) setVisible(grid_.visible);
  if (resized || fit_ == Fit::ModelWidths) {
    for (int c = 0; c < grid_.cols(); ++c) {
      const int px = grid_.col_width(c) / kTwipsPerPixel;
      if (fit_ == Fit::Stretch)
        horizontalHeader()->setMinimumSectionSize(
            std::min(horizontalHeader()->minimumSectionSize(), px));
      else if (columnWidth(c) != px && c + 1 < grid_.cols())
        setColumnWidth(c, px);
    }
  }
  // A layout pass only when the hint changed: one on every refresh would keep the event loop
  // busy for as long as a handler waits.
  if (resized || sizeHint() != hinted_) {
    hinted_ = sizeHint();
    updateGeometry();
  }
  const QModelIndex current = model_->index(grid_.row, grid_.col);
  if (current.isValid() && currentIndex() != current) setCurrentIndex(current);
}

QSize GridView::sizeHint() const {
  int w = 2 * frameWidth(), h = 2 * frameWidth();
  for (int c = 0; c < grid_.cols(); ++c) w += grid_.col_width(c) / kTwipsPerPixel;
  h += grid_.rows() * verticalHeader()->defaultSectionSize();
  return {w, h};
}

}  // namespace nerit::ui
