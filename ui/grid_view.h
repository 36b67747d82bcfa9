#pragma once
// A Grid model shown in a QTableView: heading rows and columns in the button face, body cells
// in their own back colours, sizes from the model's twips.
#include <QAbstractTableModel>
#include <QTableView>
#include <string>
#include <vector>

#include "shell/controls.h"

namespace nerit::ui {

class GridModel : public QAbstractTableModel {
 public:
  explicit GridModel(const Grid& grid, QObject* parent = nullptr)
      : QAbstractTableModel(parent), grid_(grid) {}
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  // Tells the view about the cells that changed since the last call; cheap when none did.
  void refresh();
  // Draws the cells between the current cell and the selection's far corner as selected.
  void set_show_selection(bool on) { show_selection_ = on; }
  void set_tool_tip(QString tip) { tool_tip_ = std::move(tip); }

 private:
  struct Cell {
    std::string text;
    Color back = kWhite;
    bool fixed = false;
    bool selected = false;
    bool operator==(const Cell&) const = default;
  };
  struct Look {
    unsigned revision = ~0u;
    int row = -1, col = -1, row_sel = -1, col_sel = -1, fixed_rows = -1, fixed_cols = -1;
    bool enabled = true;
    bool operator==(const Look&) const = default;
  };
  Look look_now() const;
  Cell cell_now(int r, int c) const;

  const Grid& grid_;
  int rows_ = 0, cols_ = 0;
  Look look_;
  std::vector<Cell> shown_;  // what the view was last told, row by row
  bool show_selection_ = false;
  QString tool_tip_;
};

class GridView : public QTableView {
 public:
  enum class Fit { Stretch, ModelWidths };
  GridView(const Grid& grid, Fit fit, QWidget* parent = nullptr);
  void refresh();
  const Grid& grid() const { return grid_; }
  QSize sizeHint() const override;

 protected:
  GridModel* grid_model() const { return model_; }

 private:
  const Grid& grid_;
  GridModel* model_;
  Fit fit_;
  QSize hinted_;  // the size hint the layout last heard of
};

}  // namespace nerit::ui
