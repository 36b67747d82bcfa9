// The fault boundary every handler runs through, and the timer model's countdown.
#include "shell/fault_boundary.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <vector>

#include "shell/controls.h"
#include "shell/errors.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

using Strings = std::vector<std::string>;

TEST(FaultBoundary, EachFailureEndsTheActionWithOneErrorBox) {
  const struct {
    std::function<void()> handler;
    const char* text;
  } cases[] = {
      {[] { throw OverflowError(); }, "Overflow"},
      {[] { throw DivisionByZeroError(); }, "Division by zero"},
      {[] { throw FileError("Cannot open x"); }, "Cannot open x"},
      {[] { Grid(3, 3).text(3, 0); }, "Subscript out of range"},
      {[] { ComboBox().select(0); }, "Invalid property value"},
  };
  for (const auto& k : cases) {
    testing::FakeDialogs dialogs;
    dialogs.expect(std::string("Error|Critical|Ok|") + k.text);
    EXPECT_FALSE(run_handler(dialogs, k.handler));
    EXPECT_EQ(dialogs.boxes(), Strings{std::string("Error|Critical|Ok|") + k.text});
  }
  testing::FakeDialogs dialogs;
  EXPECT_THROW(run_handler(dialogs, [] { throw ProgramClosing{}; }), ProgramClosing);
  bool ran = false;
  EXPECT_TRUE(run_handler(dialogs, [&] { ran = true; }));
  EXPECT_TRUE(ran);
  EXPECT_TRUE(dialogs.shown.empty());
}

// The tests' dialogs take only what a test expects, in order; anything else fails the test.
TEST(FakeDialogs, AnythingNotExpectedFailsTheTest) {
  EXPECT_NONFATAL_FAILURE(
      {
        testing::FakeDialogs dialogs;
        dialogs.message_box("x", MsgButtons::YesNo, MsgIcon::Question, "T");
      },
      "unexpected box: T|Question|YesNo|x");
  EXPECT_NONFATAL_FAILURE(
      {
        testing::FakeDialogs dialogs;
        dialogs.expect("T|None|Ok|y");
        dialogs.notify({"z", MsgButtons::Ok, MsgIcon::None, "T"});
      },
      "expected:  T|None|Ok|y");
  EXPECT_NONFATAL_FAILURE({ testing::FakeDialogs().expect_file("a.inj"); },
                          "expected file dialog never shown");
  EXPECT_NONFATAL_FAILURE({ testing::FakeDialogs().file_dialog({}); }, "unexpected file dialog");
  EXPECT_NONFATAL_FAILURE({ testing::FakeDialogs().input_box("Start / kPa", "", ""); },
                          "unexpected input box: Start / kPa");

  testing::FakeDialogs dialogs;
  dialogs.expect("Online|None|YesNo|q", MsgAnswer::Yes);
  dialogs.expect_file("/tmp/a.inj");
  dialogs.expect_input("250");
  EXPECT_EQ(dialogs.message_box("q", MsgButtons::YesNo, MsgIcon::None, "Online"), MsgAnswer::Yes);
  EXPECT_EQ(dialogs.file_dialog({}), "/tmp/a.inj");
  EXPECT_EQ(dialogs.input_box("Start / kPa", "Boost", "100"), "250");
}

// A timer switched on again while it runs keeps its countdown; switched off and on, it starts anew.
TEST(Timer, TicksAtItsIntervalAndKeepsARunningCountdown) {
  testing::FakePlatform fp;
  std::vector<long long> ticks;
  Timer timer{250};
  timer.on_tick = [&] { ticks.push_back(fp.clock.now_ms()); };
  timer.attach(&fp.timers);
  timer.set_enabled(true);
  fp.clock.advance(1100);
  timer.set_enabled(true);
  fp.clock.advance(150);
  timer.set_enabled(false);
  fp.clock.advance(100);
  timer.set_enabled(true);
  fp.clock.advance(250);
  EXPECT_EQ(ticks, (std::vector<long long>{250, 500, 750, 1000, 1250, 1600}));
}

}  // namespace
}  // namespace nerit
