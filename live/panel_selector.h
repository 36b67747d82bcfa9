#pragma once
// The tuning-panel list: choosing an entry shows that panel and hides the others.
#include "live/panel_controls.h"

namespace nerit {

class PanelSelector {
 public:
  explicit PanelSelector(PanelControls& pc) : pc_(pc) {}
  void List2_Click();

 private:
  PanelControls& pc_;
};

}  // namespace nerit
