// The status and debug streams: their beat, their layout and how they follow the tune.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>
#include <string>
#include <vector>

#include "sim/controller.h"
#include "sim/engine_model.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::byte_at;
using test::command;
using test::stream_on;
using test::word_at;

// One status frame as the program reads it; the default tune has four cylinders.
struct Frame {
  double at_ms;
  double rpm;
  int throttle_raw;
  int map_raw;
};

// Two whole drive cycles of status frames, one every 50 ms from 50 ms on.
std::vector<Frame> two_cycles() {
  Controller c;
  c.receive(0, stream_on(1));
  std::vector<Frame> frames;
  for (const Emission& e : c.poll(2 * kDriveCycleMs)) {
    frames.push_back(
        {e.at_ms, 30000000.0 / word_at(e.bytes, 10), byte_at(e.bytes, 4), byte_at(e.bytes, 5)});
  }
  return frames;
}

// Raw readings by hand: throttle 20 + 2.1 per %, MAP whole part of (0.00315 kPa + 0.04) x 255.
constexpr int kIdleThrottleRaw = 26;    // 3 %
constexpr int kWideOpenRaw = 230;       // 100 %
constexpr int kCruiseThrottleRaw = 57;  // 18 %
constexpr int kMapRaw25Kpa = 30;
constexpr int kMapRaw30Kpa = 34;
constexpr int kMapRaw35Kpa = 38;
constexpr int kMapRaw180Kpa = 154;
constexpr int kMapRaw200Kpa = 170;

TEST(SimStream, TheDriveCycleIdlesRevsCruisesPullsIntoBoostAndOverruns) {
  const auto frames = two_cycles();
  ASSERT_EQ(frames.size(), 1440u);
  auto count = [&](auto condition) {
    return std::count_if(frames.begin(), frames.end(), condition);
  };
  // Idle: 800-900 rpm on the idle stop, 30-35 kPa.
  EXPECT_GT(count([](const Frame& f) {
              return f.rpm > 800 && f.rpm < 900 && f.throttle_raw == kIdleThrottleRaw &&
                     f.map_raw >= kMapRaw30Kpa && f.map_raw <= kMapRaw35Kpa;
            }),
            2 * 100);  // at least 5 s a cycle
  // Cruise: part throttle at 2300-2600 rpm for a few seconds.
  EXPECT_GT(count([](const Frame& f) {
              return f.throttle_raw == kCruiseThrottleRaw && f.rpm > 2300 && f.rpm < 2600;
            }),
            2 * 60);
  // The pull: wide open into boost (180 kPa or more, 200 at most) and up to 6400-6600 rpm.
  const auto top_map =
      std::max_element(frames.begin(), frames.end(),
                       [](const Frame& a, const Frame& b) { return a.map_raw < b.map_raw; });
  EXPECT_GE(top_map->map_raw, kMapRaw180Kpa);
  EXPECT_LE(top_map->map_raw, kMapRaw200Kpa);
  EXPECT_EQ(top_map->throttle_raw, kWideOpenRaw);
  const auto top_rpm = std::max_element(
      frames.begin(), frames.end(), [](const Frame& a, const Frame& b) { return a.rpm < b.rpm; });
  EXPECT_TRUE(top_rpm->rpm > 6400 && top_rpm->rpm < 6600) << top_rpm->rpm;
  EXPECT_EQ(top_rpm->throttle_raw, kWideOpenRaw);
  // Lift-off: throttle shut, above 3000 rpm, MAP at 25 kPa or less.
  EXPECT_GT(count([](const Frame& f) {
              return f.throttle_raw == kIdleThrottleRaw && f.rpm > 3000 &&
                     f.map_raw <= kMapRaw25Kpa;
            }),
            2 * 20);
  // Two free revs a cycle: 2800 rpm passed upwards without the throttle wide open.
  int free_revs = 0;
  for (std::size_t i = 1; i < frames.size(); ++i) {
    if (frames[i - 1].rpm < 2800 && frames[i].rpm >= 2800 && frames[i].throttle_raw < kWideOpenRaw)
      ++free_revs;
  }
  EXPECT_EQ(free_revs, 4);
}

// Within a cycle and across its end: at most 300 rpm, 20 MAP raw steps (~25 kPa) and 45
// throttle raw steps (~21 %) from one frame to the next.
TEST(SimStream, ConsecutiveFramesNeverJump) {
  const auto frames = two_cycles();
  for (std::size_t i = 1; i < frames.size(); ++i) {
    const Frame &a = frames[i - 1], &b = frames[i];
    EXPECT_LE(std::abs(b.rpm - a.rpm), 300) << b.at_ms;
    EXPECT_LE(std::abs(b.map_raw - a.map_raw), 20) << b.at_ms;
    EXPECT_LE(std::abs(b.throttle_raw - a.throttle_raw), 45) << b.at_ms;
  }
}

// A held engine sends, frame after frame, exactly what the running one sends at that moment.
TEST(SimStream, AHeldEngineRepeatsTheFrameOfItsMoment) {
  Controller running;
  running.receive(0, stream_on(1));
  const std::string at_19s = running.poll(19000).back().bytes;
  Controller held(test::with([](Options& o) { o.hold_engine_at_ms = 19000; }));
  held.receive(0, stream_on(1));
  const auto frames = held.poll(2000);
  ASSERT_EQ(frames.size(), 40u);
  for (const auto& f : frames) EXPECT_EQ(f.bytes, at_19s) << f.at_ms;
}

TEST(SimStream, StatusFramesAndDebugLinesKeepTheirLayout) {
  Controller c;
  c.receive(0, stream_on(1));
  const std::string frame = c.poll(50).back().bytes;
  EXPECT_EQ(frame.size(), 22u);
  EXPECT_EQ(frame.substr(0, 2) + frame.substr(20), "\x55\xFF\r\n");
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
