// A list with a limit, as the log keeps one: the oldest lines go, a tenth at a time.
#include <gtest/gtest.h>

#include "shell/controls.h"

namespace nerit {
namespace {

TEST(ListBox, PastItsLimitAndATenthTheOldestLinesGo) {
  ListBox log;
  log.max_items = 10;
  for (int i = 1; i <= 11; ++i) log.add_item(std::to_string(i));
  EXPECT_EQ(log.list_count(), 11);  // within the tenth over the limit
  EXPECT_EQ(log.dropped, 0);
  log.list_index = 4;  // "5"
  log.add_item("12");
  EXPECT_EQ(log.items,
            (std::vector<std::string>{"3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}));
  EXPECT_EQ(log.dropped, 2);
  EXPECT_EQ(log.list_index, 2);  // still "5"
}

TEST(ListBox, ASelectedLineThatGoesLeavesNoSelection) {
  ListBox log;
  log.max_items = 10;
  for (int i = 1; i <= 11; ++i) log.add_item(std::to_string(i));
  log.list_index = 1;
  log.add_item("12");
  EXPECT_EQ(log.list_index, -1);
}

}  // namespace
}  // namespace nerit
