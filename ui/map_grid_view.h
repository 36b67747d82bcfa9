#pragma once
// A map grid (MSFlexGrid2, MSFlexGrid3): mouse presses, drags and releases become the
// selection's far corner and the grid's MouseDown/MouseUp handlers; Ctrl+C/V/Z/Y the map's
// edit commands.
#include <functional>
#include <set>

#include "ui/grid_view.h"
#include "ui/map_edit_keys.h"
#include "ui/qt_platform.h"

namespace nerit::ui {

struct MapGridEvents {
  std::function<void(int button)> MouseDown;
  std::function<void(int button)> MouseUp;
};

class MapGridView : public GridView {
 public:
  MapGridView(Grid& grid, HandlerRunner run, MapGridEvents events, const MapEditKeys& edit_keys,
              QWidget* parent = nullptr);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // The body cell nearest to a point of the viewport.
  std::pair<int, int> body_cell_at(QPoint pos) const;

  Grid& grid_;
  HandlerRunner run_;
  MapGridEvents events_;
  const MapEditKeys& edit_keys_;
  std::set<int> pressed_;  // buttons whose press reached the handler
};

}  // namespace nerit::ui
