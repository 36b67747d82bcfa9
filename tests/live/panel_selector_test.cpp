// Choosing a tuning panel in List2.
#include <gtest/gtest.h>

#include "live/panel_selector.h"
#include "shell/form1_controls.h"

namespace nerit {
namespace {

void expect_only_visible(const Form1Controls& c, int shown) {
  for (int i = 0; i < kPanelCount; ++i) EXPECT_EQ(c.Frame1[i].visible, i == shown) << "panel " << i;
}

TEST(PanelSelector, EntryShowsItsPanelOnlyAndNoSelectionChangesNothing) {
  Form1Controls c;
  PanelSelector selector(c);
  for (int i : {2, 0, 4, 1, 3}) {
    SCOPED_TRACE(i);
    c.List2.list_index = i;
    selector.List2_Click();
    expect_only_visible(c, i);
  }
  c.List2.list_index = -1;
  selector.List2_Click();
  expect_only_visible(c, 3);
}

}  // namespace
}  // namespace nerit
