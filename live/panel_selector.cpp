#include "live/panel_selector.h"

namespace nerit {

void PanelSelector::List2_Click() {
  const int chosen = pc_.List2.list_index;
  if (chosen < 0 || chosen >= kPanelCount) return;
  for (int i = 0; i < kPanelCount; ++i)
    pc_.Frame1[static_cast<std::size_t>(i)].visible = i == chosen;
}

}  // namespace nerit
