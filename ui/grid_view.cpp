#include "ui/grid_view.h"

#include <QHeaderView>

#include "ui/qt_colors.h"

namespace nerit::ui {

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : cols_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= grid_.rows() || index.column() >= grid_.cols()) return {};
  const int r = index.row(), c = index.column();
  const bool fixed = r < grid_.fixed_rows || c < grid_.fixed_cols;
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromStdString(grid_.text(r, c));
    case Qt::BackgroundRole:
      return QBrush(fixed ? QPalette().color(QPalette::Button)
                          : to_qcolor(grid_.back_color(r, c), QPalette()));
    case Qt::ForegroundRole:
      return QBrush(QColor(Qt::black));
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(fixed ? Qt::AlignCenter : (Qt::AlignRight | Qt::AlignVCenter));
    default:
      return {};
  }
}

void GridModel::refresh() {
  if (grid_.rows() != rows_ || grid_.cols() != cols_) {
    beginResetModel();
    rows_ = grid_.rows();
    cols_ = grid_.cols();
    revision_ = grid_.revision();
    endResetModel();
    return;
  }
  if (grid_.revision() == revision_) return;
  revision_ = grid_.revision();
  if (rows_ > 0 && cols_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, cols_ - 1));
}

GridView::GridView(const Grid& grid, Fit fit, QWidget* parent)
    : QTableView(parent), grid_(grid), model_(new GridModel(grid, this)), fit_(fit) {
  setModel(model_);
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
  setEnabled(grid_.enabled);
  setVisible(grid_.visible);
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
