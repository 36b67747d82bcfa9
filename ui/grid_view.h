#pragma once
// A Grid model shown in a QTableView: heading rows and columns in the button face, body cells
// in their own back colours, sizes from the model's twips.
#include <QAbstractTableModel>
#include <QTableView>

#include "shell/controls.h"

namespace nerit::ui {

class GridModel : public QAbstractTableModel {
 public:
  explicit GridModel(const Grid& grid, QObject* parent = nullptr)
      : QAbstractTableModel(parent), grid_(grid) {}
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  // Tells the view about changes since the last call; cheap when nothing changed.
  void refresh();

 private:
  const Grid& grid_;
  int rows_ = 0, cols_ = 0;
  unsigned revision_ = ~0u;
};

class GridView : public QTableView {
 public:
  enum class Fit { Stretch, ModelWidths };
  GridView(const Grid& grid, Fit fit, QWidget* parent = nullptr);
  void refresh();
  const Grid& grid() const { return grid_; }
  QSize sizeHint() const override;

 private:
  const Grid& grid_;
  GridModel* model_;
  Fit fit_;
  QSize hinted_;  // the size hint the layout last heard of
};

}  // namespace nerit::ui
