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
using test::times;
using test::word_at;

TEST(SimStream, StatusFramesKeepTheirBeatUntilSwitchedOff) {
  Controller c;
  c.receive(1000, stream_on(1));
  EXPECT_EQ(c.next_due(), 1050);
  const auto first = c.poll(1199);
  EXPECT_EQ(times(first), (std::vector<double>{1050, 1100, 1150}));
  for (const Emission& e : first) {
    ASSERT_EQ(e.bytes.size(), 22u);
    EXPECT_EQ(e.bytes.substr(0, 2), "\x55\xFF");
    EXPECT_EQ(e.bytes.substr(20), "\r\n");
  }
  c.receive(1120, stream_on(1));  // the program sends each mode frame twice
  EXPECT_EQ(times(c.poll(1200)), std::vector<double>{1200});
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
  double low = 1e9, high = 0, previous = 30000000.0 / word_at(frames[0].bytes, 10);
  int map_low = 255, map_high = 0;
  for (const auto& f : frames) {
    const double rpm = 30000000.0 / word_at(f.bytes, 10);
    low = std::min(low, rpm);
    high = std::max(high, rpm);
    EXPECT_LT(std::abs(rpm - previous), 100) << f.at_ms;
    previous = rpm;
    map_low = std::min(map_low, byte_at(f.bytes, 5));
    map_high = std::max(map_high, byte_at(f.bytes, 5));
    EXPECT_TRUE(byte_at(f.bytes, 4) >= 20 && byte_at(f.bytes, 4) <= 230) << f.at_ms;
    EXPECT_GT(word_at(f.bytes, 6), 0);
  }
  EXPECT_LT(low, 850);
  EXPECT_GT(high, 6400);
  EXPECT_LE(high, 6510);
  EXPECT_GT(map_high - map_low, 100);
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

// The engine held still, so consecutive frames differ only by what the program changed.
class SimOperatingPoint : public ::testing::Test {
 protected:
  SimOperatingPoint() { c_.receive(0, stream_on(1)); }

  // The next status frame after writing `frames`.
  std::string after(const std::string& frames) {
    t_ += 50;
    c_.receive(t_ - 25, frames);
    std::string last;
    for (const Emission& e : c_.poll(t_))
      if (byte_at(e.bytes, 1) == 0xFF) last = e.bytes;
    return last;
  }
  static std::string write_words(std::uint16_t address, std::vector<int> words) {
    Block b{};
    for (std::size_t i = 0; i < words.size(); ++i) {
      b[2 * i] = static_cast<std::uint8_t>(words[i] & 0xFF);
      b[2 * i + 1] = static_cast<std::uint8_t>(words[i] >> 8);
    }
    return command(0x0B, address, b);
  }
  // A block written back with one byte changed.
  std::string changed(std::uint16_t address, std::size_t index, std::uint8_t value) {
    Block b = c_.working_memory().block(address);
    b[index] = value;
    return command(0x0B, address, b);
  }
  // The map cell of a status frame: row 0-15, column 1-16.
  static std::pair<int, int> cell_of(const std::string& frame) {
    const int cell = byte_at(frame, 13);
    return {cell / 16, (cell & 15) == 0 ? 16 : cell & 15};
  }

  Controller c_{test::with([](Options& o) { o.hold_engine_at_ms = 6000; })};
  double t_ = 0;
};

TEST_F(SimOperatingPoint, CellIndexComesFromTheAxesInWorkingMemory) {
  const std::string before = after("");
  const int map_raw = byte_at(before, 5), tps_raw = byte_at(before, 4);
  const int period = word_at(before, 10), far = 0xFFFF;
  // Only load point 7 and speed point 11 lie near the engine.
  const std::string far_speed = write_words(0x0280, std::vector<int>(8, far));
  EXPECT_EQ(byte_at(after(write_words(0x0260, {1000, 1000, 1000, 1000, 1000, 1000, map_raw, 1000}) +
                          write_words(0x0270, std::vector<int>(8, 1000)) + far_speed +
                          write_words(0x0290, {far, far, period, far, far, far, far, far})),
                    13),
            6 * 16 + 11);
  // Column 16 shows as 0 in the low four bits.
  EXPECT_EQ(byte_at(after(write_words(0x0290, {far, far, far, far, far, far, far, period})), 13),
            6 * 16 + 0);
  // Load type TPS: the load axis is matched against the throttle reading.
  EXPECT_EQ(byte_at(after(changed(0x0240, 0, 0) +
                          write_words(0x0260, {1000, 1000, 1000, tps_raw, 1000, 1000, 1000, 1000})),
                    13),
            3 * 16 + 0);
}

TEST_F(SimOperatingPoint, InjectorOutputFollowsTheCorrectionCellAndTheSlider) {
  const std::string neutral = after("");
  EXPECT_EQ(byte_at(neutral, 12), 128);
  const auto [row, column] = cell_of(neutral);
  const int in_ticks = word_at(neutral, 6);
  const std::string richer = after(changed(0x02A0 + 16 * row, column - 1, 192));  // +50.4 %
  EXPECT_EQ(byte_at(richer, 13), byte_at(neutral, 13));
  EXPECT_EQ(word_at(richer, 6), in_ticks);
  EXPECT_EQ(byte_at(richer, 12), 193);
  // Offsets 336 us in, 288 us out, injector sizes equal.
  EXPECT_NEAR(word_at(richer, 8), ((4.0 * in_ticks - 336) * (1 + 64 / 127.0) + 288) / 4, 1);
  const std::string unmapped = after(changed(0x0250, 4, 0x02));  // "Map Aktiv" cleared
  EXPECT_EQ(word_at(unmapped, 8), word_at(neutral, 8));
  EXPECT_EQ(byte_at(unmapped, 12), 128);
  // Manual adjust slider at 160 is +25 %.
  const std::string adjusted = after(command(0x03, 0, Block{160, 0x01, 0x50, 0x01, 0x20, 128, 15}));
  EXPECT_EQ(byte_at(adjusted, 12), 160);
  EXPECT_NEAR(word_at(adjusted, 8), ((4.0 * in_ticks - 336) * 1.25 + 288) / 4, 1);
}

TEST_F(SimOperatingPoint, AirflowOutputIsTheMapCellOrThePassedThroughInput) {
  const std::string first = after("");
  const auto [row, column] = cell_of(first);
  const int word_address = 0x03A0 + 32 * row + 2 * (column - 1);
  EXPECT_EQ(word_at(first, 14), c_.working_memory().word(word_address));
  const auto block = static_cast<std::uint16_t>(word_address & ~0xF);
  Block cells = c_.working_memory().block(block);
  cells[word_address & 0xF] = 0x34;
  cells[(word_address & 0xF) + 1] = 0x12;
  EXPECT_EQ(word_at(after(command(0x0B, block, cells)), 14), 0x1234);
  const std::string passed = after(changed(0x0250, 4, 0x01));  // the airflow map inactive
  EXPECT_EQ(word_at(passed, 14), word_at(passed, 18));
  EXPECT_GT(250000 / word_at(passed, 18), 20);
  EXPECT_LT(250000 / word_at(passed, 18), 3000);
}

}  // namespace
}  // namespace nerit::sim
