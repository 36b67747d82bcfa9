// Choosing a tuning panel in List2.
#include <gtest/gtest.h>

#include "live/panel_controls.h"
#include "live/panel_selector.h"

namespace nerit {
namespace {

TEST(PanelSelector, EntryShowsItsPanelOnlyAndNoSelectionChangesNothing) {
  PanelControls pc;
  PanelSelector selector(pc);
  for (int chosen : {2, 0, 4, 1, 3, -1}) {
    pc.List2.list_index = chosen;
    selector.List2_Click();
    const int shown = chosen < 0 ? 3 : chosen;  // no selection: the panel before stays
    for (int i = 0; i < kPanelCount; ++i)
      EXPECT_EQ(pc.Frame1[i].visible, i == shown) << chosen << i;
  }
}

}  // namespace
}  // namespace nerit
