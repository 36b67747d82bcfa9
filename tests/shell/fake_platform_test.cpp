// The fake platform the other tests lean on: waits that cannot end fail, timers keep time.
#include <vector>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "shell/controls.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

TEST(FakePlatform, WaitThatCanNeverEndFailsLoudly) {
  testing::FakePlatform fp;
  bool threw = false;
  EXPECT_NONFATAL_FAILURE(
      {
        try {
          fp.pump.process_events();
        } catch (const testing::WaitNeverEnds&) {
          threw = true;
        }
      },
      "would never end");
  EXPECT_TRUE(threw);

  Timer busy{10};  // something always due, yet the wait spins too long
  busy.attach(&fp.timers);
  busy.set_enabled(true);
  fp.pump.max_steps = 3;
  threw = false;
  EXPECT_NONFATAL_FAILURE(
      {
        try {
          for (;;) fp.pump.process_events();
        } catch (const testing::WaitNeverEnds&) {
          threw = true;
        }
      },
      "without ending");
  EXPECT_TRUE(threw);
  EXPECT_EQ(fp.timers.ticks(busy), 2);
}

TEST(FakePlatform, TimersTickAtTheirIntervalAndKeepARunningCountdown) {
  testing::FakePlatform fp;
  std::vector<long long> ticks;
  Timer timer{250};
  timer.on_tick = [&] { ticks.push_back(fp.clock.now_ms()); };
  timer.attach(&fp.timers);
  timer.set_enabled(true);
  fp.clock.advance(1000);
  EXPECT_EQ(ticks, (std::vector<long long>{250, 500, 750, 1000}));

  fp.clock.advance(100);
  timer.set_enabled(true);  // already running: the countdown goes on
  fp.clock.advance(149);
  EXPECT_EQ(ticks.size(), 4u);
  fp.pump.process_events();
  EXPECT_EQ(ticks.back(), 1250);

  timer.set_enabled(false);
  fp.clock.advance(100);
  timer.set_enabled(true);  // switched on again: a fresh countdown from now
  fp.pump.process_events();
  EXPECT_EQ(ticks.back(), 1600);
  EXPECT_EQ(fp.timers.ticks(timer), 6);
}

}  // namespace
}  // namespace nerit
