// The status and debug streams: their beat, their layout and how they follow the tune.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>
#include <string>

#include "sim/controller.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::byte_at;
using test::command;
using test::stream_on;
using test::word_at;

TEST(SimStream, TheEngineSweepsSmoothlyBetweenIdleAndHighSpeed) {
  Controller c;
  c.receive(0, stream_on(1));
  const auto frames = c.poll(20000);
  ASSERT_EQ(frames.size(), 400u);
  double low = 1e9, high = 0, previous = 30000000.0 / word_at(frames[0].bytes, 10);
  for (const auto& f : frames) {
    const double rpm = 30000000.0 / word_at(f.bytes, 10);
    low = std::min(low, rpm);
    high = std::max(high, rpm);
    EXPECT_LT(std::abs(rpm - previous), 100) << f.at_ms;
    previous = rpm;
  }
  EXPECT_TRUE(low < 850 && high > 6400 && high <= 6510) << low << " " << high;
  EXPECT_EQ(frames[0].bytes.substr(0, 2) + frames[0].bytes.substr(20), "\x55\xFF\r\n");
  c.receive(20000, stream_on(2));
  EXPECT_TRUE(std::regex_match(c.poll(20250).back().bytes,
                               std::regex("RPM [0-9]+ TPS [0-9]+ MAP [0-9]+ INJ [0-9]+")));
}

// The engine held still, so consecutive frames differ only by what the program changed.
class SimOperatingPoint : public ::testing::Test {
 protected:
  SimOperatingPoint() { c_.receive(0, stream_on(1)); }

  // The next status frame after writing `frames`.
  std::string after(const std::string& frames) {
    t_ += 50;
    c_.receive(t_ - 25, frames);
    return c_.poll(t_).back().bytes;
  }
  // A block written back with bytes from `index` on changed (words low byte first).
  std::string changed(std::uint16_t address, std::size_t index, std::vector<int> values,
                      bool words = false) {
    Block b = c_.working_memory().block(address);
    for (int v : values) {
      b[index++] = static_cast<std::uint8_t>(v & 0xFF);
      if (words) b[index++] = static_cast<std::uint8_t>(v >> 8);
    }
    return command(0x0B, address, b);
  }

  Controller c_{test::with([](Options& o) { o.hold_engine_at_ms = 6000; })};
  double t_ = 0;
};

TEST_F(SimOperatingPoint, CellIndexComesFromTheAxesInWorkingMemory) {
  const std::string before = after("");
  const int map_raw = byte_at(before, 5), tps_raw = byte_at(before, 4);
  const int period = word_at(before, 10), far = 0xFFFF, k = 1000;
  // Only load point 7 and speed point 11 lie near the engine.
  EXPECT_EQ(byte_at(after(changed(0x0260, 0, {k, k, k, k, k, k, map_raw, k}, true) +
                          changed(0x0270, 0, std::vector<int>(8, k), true) +
                          changed(0x0280, 0, std::vector<int>(8, far), true) +
                          changed(0x0290, 0, {far, far, period, far, far, far, far, far}, true)),
                    13),
            6 * 16 + 11);
  // Column 16 shows as 0 in the low four bits.
  EXPECT_EQ(byte_at(after(changed(0x0290, 4, {far, far, far, far, far, period}, true)), 13),
            6 * 16 + 0);
  // Load type TPS: the load axis is matched against the throttle reading.
  EXPECT_EQ(byte_at(after(changed(0x0240, 0, {0}) + changed(0x0260, 6, {tps_raw}, true)), 13),
            3 * 16 + 0);
}

TEST_F(SimOperatingPoint, InjectorAndAirflowOutputsFollowTheMapCellsAndTheSlider) {
  const std::string neutral = after("");
  EXPECT_EQ(byte_at(neutral, 12), 128);
  const int row = byte_at(neutral, 13) / 16, column = (byte_at(neutral, 13) + 15) % 16 + 1;
  const int in_ticks = word_at(neutral, 6);
  const int air = 0x03A0 + 32 * row + 2 * (column - 1);
  EXPECT_EQ(word_at(neutral, 14), c_.working_memory().word(air));

  const std::string richer = after(changed(0x02A0 + 16 * row, column - 1, {192}) +  // +50.4 %
                                   changed(air & ~0xF, air & 0xF, {0x1234}, true));
  EXPECT_EQ(byte_at(richer, 13), byte_at(neutral, 13));
  EXPECT_EQ(word_at(richer, 6), in_ticks);
  EXPECT_EQ(byte_at(richer, 12), 193);
  // Offsets 336 us in, 288 us out, injector sizes equal.
  EXPECT_NEAR(word_at(richer, 8), ((4.0 * in_ticks - 336) * (1 + 64 / 127.0) + 288) / 4, 1);
  EXPECT_EQ(word_at(richer, 14), 0x1234);

  const std::string unmapped = after(changed(0x0250, 4, {0}));  // both maps inactive
  EXPECT_EQ(word_at(unmapped, 8), word_at(neutral, 8));
  EXPECT_EQ(byte_at(unmapped, 12), 128);
  EXPECT_EQ(word_at(unmapped, 14), word_at(unmapped, 18));  // the vortex input passed through
  EXPECT_TRUE(250000 / word_at(unmapped, 18) > 20 && 250000 / word_at(unmapped, 18) < 3000);
  // Manual adjust slider at 160 is +25 %.
  const std::string adjusted = after(command(0x03, 0, Block{160, 0x01, 0x50, 0x01, 0x20, 128, 15}));
  EXPECT_EQ(byte_at(adjusted, 12), 160);
  EXPECT_NEAR(word_at(adjusted, 8), ((4.0 * in_ticks - 336) * 1.25 + 288) / 4, 1);
}

}  // namespace
}  // namespace nerit::sim
