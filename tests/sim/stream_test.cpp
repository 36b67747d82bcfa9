// The status and debug streams: their beat, their layout and how they follow the tune.
#include <algorithm>
#include <cmath>
#include <regex>
#include <string>

#include <gtest/gtest.h>

#include "sim/controller.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::byte_at;
using test::command;
using test::stream_on;
using test::word_at;

TEST(SimStream, StatusFramesKeepTheirBeatUntilSwitchedOff) {
  Controller c;
  c.receive(1000, stream_on(1));
  EXPECT_EQ(c.next_due(), 1050);
  const auto first = c.poll(1199);
  ASSERT_EQ(first.size(), 3u);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(first[i].at_ms, 1050 + 50 * i);
    ASSERT_EQ(first[i].bytes.size(), 22u);
    EXPECT_EQ(byte_at(first[i].bytes, 0), 0x55);
    EXPECT_EQ(byte_at(first[i].bytes, 1), 0xFF);
    EXPECT_EQ(first[i].bytes.substr(20), "\r\n");
  }
  c.receive(1120, stream_on(1));  // the program sends each mode frame twice
  const auto next = c.poll(1200);
  ASSERT_EQ(next.size(), 1u);
  EXPECT_EQ(next[0].at_ms, 1200);
  c.receive(1210, stream_on(0));
  EXPECT_EQ(c.stream_mode(), StreamMode::kOff);
  EXPECT_TRUE(c.poll(5000).empty());
  EXPECT_EQ(c.next_due(), -1);
}

TEST(SimStream, TheEngineSweepsSmoothlyBetweenIdleAndHighSpeed) {
  Controller c;
  c.receive(0, stream_on(1));
  const auto frames = c.poll(20000);
  ASSERT_EQ(frames.size(), 400u);
  double low = 1e9, high = 0, previous = -1;
  int map_low = 255, map_high = 0;
  for (const auto& f : frames) {
    const double rpm = 30000000.0 / word_at(f.bytes, 10);
    low = std::min(low, rpm);
    high = std::max(high, rpm);
    if (previous > 0) {
      EXPECT_LT(std::abs(rpm - previous), 100) << f.at_ms;
    }
    previous = rpm;
    map_low = std::min(map_low, byte_at(f.bytes, 5));
    map_high = std::max(map_high, byte_at(f.bytes, 5));
    EXPECT_GE(byte_at(f.bytes, 4), 20);
    EXPECT_LE(byte_at(f.bytes, 4), 230);
    EXPECT_GT(word_at(f.bytes, 6), 0);
  }
  EXPECT_LT(low, 850);
  EXPECT_GT(high, 6400);
  EXPECT_LE(high, 6510);
  EXPECT_GT(map_high - map_low, 100);
}

// The engine held still, so consecutive frames differ only by what the program changed.
class SimOperatingPoint : public ::testing::Test {
 protected:
  SimOperatingPoint() : c_(held()) { c_.receive(0, stream_on(1)); }

  static Options held() {
    Options o;
    o.hold_engine_at_ms = 6000;
    return o;
  }

  // The next status frame after writing `frames`.
  std::string after(const std::string& frames) {
    t_ += 50;
    c_.receive(t_ - 25, frames);
    std::string last;
    for (const Emission& e : c_.poll(t_)) {
      if (byte_at(e.bytes, 1) == 0xFF) last = e.bytes;
    }
    return last;
  }

  static std::string write_words(std::uint16_t address, std::initializer_list<int> words) {
    Block b{};
    int i = 0;
    for (int w : words) {
      b[i++] = static_cast<std::uint8_t>(w & 0xFF);
      b[i++] = static_cast<std::uint8_t>(w >> 8);
    }
    return command(0x0B, address, b);
  }

  Controller c_;
  double t_ = 0;
};

TEST_F(SimOperatingPoint, CellIndexComesFromTheAxesInWorkingMemory) {
  const std::string before = after("");
  const int map_raw = byte_at(before, 5);
  const int tps_raw = byte_at(before, 4);
  const int period = word_at(before, 10);
  // Only load point 7 and speed point 11 lie near the engine.
  const std::string far_load =
      write_words(0x0260, {1000, 1000, 1000, 1000, 1000, 1000, map_raw, 1000}) +
      write_words(0x0270, {1000, 1000, 1000, 1000, 1000, 1000, 1000, 1000});
  const std::string far_speed =
      write_words(0x0280, {0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF}) +
      write_words(0x0290, {0xFFFF, 0xFFFF, period, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF});
  EXPECT_EQ(byte_at(after(far_load + far_speed), 13), 6 * 16 + 11);
  // Column 16 shows as 0 in the low four bits.
  EXPECT_EQ(byte_at(after(write_words(
                        0x0290, {0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, period})),
                    13),
            6 * 16 + 0);
  // Load type TPS: the load axis is matched against the throttle reading.
  Block block_a = c_.working_memory().block(0x0240);
  block_a[0] = 0;
  EXPECT_EQ(byte_at(after(command(0x0B, 0x0240, block_a) +
                          write_words(0x0260, {1000, 1000, 1000, tps_raw, 1000, 1000, 1000, 1000})),
                    13),
            3 * 16 + 0);
}

TEST_F(SimOperatingPoint, InjectorOutputFollowsTheCorrectionCellAndTheSlider) {
  const std::string neutral = after("");
  EXPECT_EQ(byte_at(neutral, 12), 128);
  const int cell = byte_at(neutral, 13);
  const int row = cell / 16;
  const int column = (cell & 15) == 0 ? 16 : cell & 15;
  const int in_ticks = word_at(neutral, 6);

  Block map_row = c_.working_memory().block(0x02A0 + 16 * row);
  map_row[column - 1] = 192;  // +50.4 %
  const std::string richer = after(command(0x0B, 0x02A0 + 16 * row, map_row));
  EXPECT_EQ(byte_at(richer, 13), cell);
  EXPECT_EQ(word_at(richer, 6), in_ticks);
  EXPECT_EQ(byte_at(richer, 12), 193);
  // Offsets 336 us in, 288 us out, injector sizes equal.
  const double expected_us = (4.0 * in_ticks - 336) * (1 + 64 / 127.0) + 288;
  EXPECT_NEAR(word_at(richer, 8), expected_us / 4, 1);

  // With "Map Aktiv" cleared the cell no longer counts.
  Block block_b = c_.working_memory().block(0x0250);
  block_b[4] = 0x02;
  const std::string unmapped = after(command(0x0B, 0x0250, block_b));
  EXPECT_EQ(word_at(unmapped, 8), word_at(neutral, 8));
  EXPECT_EQ(byte_at(unmapped, 12), 128);

  // Manual adjust slider at 160 is +25 %.
  const std::string adjusted = after(command(0x03, 0, Block{160, 0x01, 0x50, 0x01, 0x20, 128, 15}));
  EXPECT_EQ(byte_at(adjusted, 12), 160);
  EXPECT_NEAR(word_at(adjusted, 8), ((4.0 * in_ticks - 336) * 1.25 + 288) / 4, 1);
}

TEST_F(SimOperatingPoint, AirflowOutputIsTheMapCellOrThePassedThroughInput) {
  const std::string first = after("");
  const int cell = byte_at(first, 13);
  const int row = cell / 16;
  const int column = (cell & 15) == 0 ? 16 : cell & 15;
  const std::uint16_t block = 0x03A0 + 32 * row + 16 * ((column - 1) / 8);
  EXPECT_EQ(word_at(first, 14), c_.working_memory().word(0x03A0 + 32 * row + 2 * (column - 1)));

  Block cells = c_.working_memory().block(block);
  cells[2 * ((column - 1) % 8)] = 0x34;
  cells[2 * ((column - 1) % 8) + 1] = 0x12;
  EXPECT_EQ(word_at(after(command(0x0B, block, cells)), 14), 0x1234);

  Block block_b = c_.working_memory().block(0x0250);
  block_b[4] = 0x01;
  const std::string passed = after(command(0x0B, 0x0250, block_b));
  EXPECT_EQ(word_at(passed, 14), word_at(passed, 18));
  EXPECT_GT(250000 / word_at(passed, 18), 20);
  EXPECT_LT(250000 / word_at(passed, 18), 3000);
}

TEST(SimStream, DebugLinesEndWithACarriageReturnOfTheirOwn) {
  Controller c;
  c.receive(0, stream_on(2));
  const auto out = c.poll(500);
  ASSERT_EQ(out.size(), 3u);
  EXPECT_EQ(out[0].at_ms, 250);
  EXPECT_TRUE(
      std::regex_match(out[0].bytes, std::regex("RPM [0-9]+ TPS [0-9]+ MAP [0-9]+ INJ [0-9]+")))
      << out[0].bytes;
  EXPECT_EQ(out[1], (Emission{255, "\r"}));
  EXPECT_EQ(out[2].at_ms, 500);
  c.receive(501, stream_on(0));
  EXPECT_EQ(c.poll(1000), (std::vector<Emission>{{505, "\r"}}));
}

}  // namespace
}  // namespace nerit::sim
