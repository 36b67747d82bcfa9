// The fault boundary every handler runs through.
#include <functional>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "shell/controls.h"
#include "shell/errors.h"
#include "shell/fault_boundary.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

void expect_error_box(const MessageBoxRequest& box, const std::string& text) {
  EXPECT_EQ(box.text, text);
  EXPECT_EQ(box.buttons, MsgButtons::Ok);
  EXPECT_EQ(box.icon, MsgIcon::Critical);
  EXPECT_EQ(box.title, "Error");
}

TEST(FaultBoundary, EachFailureEndsTheActionWithOneErrorBox) {
  struct Case {
    const char* name;
    std::function<void()> handler;
    const char* text;
  };
  const Case cases[] = {
      {"overflow", [] { throw OverflowError(); }, "Overflow"},
      {"division", [] { throw DivisionByZeroError(); }, "Division by zero"},
      {"file", [] { throw FileError("Cannot open x"); }, "Cannot open x"},
      {"range", [] { throw std::out_of_range("vector::at"); }, "Subscript out of range"},
      {"grid cell", [] { Grid(3, 3).text(3, 0); }, "Subscript out of range"},
      {"list index", [] { ComboBox().select(0); }, "Invalid property value"},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(k.name);
    testing::FakeDialogs dialogs;
    EXPECT_FALSE(run_handler(dialogs, k.handler));
    ASSERT_EQ(dialogs.shown.size(), 1u);
    expect_error_box(dialogs.shown[0], k.text);
  }
}

TEST(FaultBoundary, ClosingPassesThroughAndSuccessShowsNothing) {
  testing::FakeDialogs dialogs;
  EXPECT_THROW(run_handler(dialogs, [] { throw ProgramClosing{}; }), ProgramClosing);
  bool ran = false;
  EXPECT_TRUE(run_handler(dialogs, [&] { ran = true; }));
  EXPECT_TRUE(ran);
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST(FaultBoundary, FailingTimerShowsTheBoxAndKeepsTicking) {
  testing::FakePlatform fp;
  Timer timer{100};
  timer.on_tick = [] { throw OverflowError(); };
  timer.attach(&fp.timers);
  timer.set_enabled(true);

  fp.clock.advance(350);
  EXPECT_EQ(fp.timers.ticks(timer), 3);
  ASSERT_EQ(fp.dialogs.shown.size(), 3u);
  for (const MessageBoxRequest& box : fp.dialogs.shown) expect_error_box(box, "Overflow");
  EXPECT_TRUE(timer.enabled());
  EXPECT_EQ(fp.clock.next_due(), 400);
}

}  // namespace
}  // namespace nerit
