// Wire pacing, the injected faults, and cutting command frames out of the byte stream with
// garbage and stray start bytes, on the virtual time axis.
#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "sim/cli_options.h"
#include "sim/controller.h"
#include "sim/frame_reader.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::bytes;
using test::command;
using test::joined;
using test::stream_on;

// Each case: command-line flags, frames sent at their times, then all up to `until` is polled.
TEST(SimWire, PacingDelayDropsChunksGarbageSilenceAndVanishing) {
  constexpr double b = kByteMs;
  const std::string hello = command(0x05), status = stream_on(1);
  const std::string reply = bytes({0x55, 0xFD, 0, 0}) + "Nerit SIM V1.00 \r\n";
  const std::string garbage = bytes({0x00, 0xFF, 0x55});
  struct Case {
    const char* flags;  // as nerit-sim takes them
    std::vector<std::pair<double, std::string>> sends;
    double until;
    std::vector<double> times;
    std::string out = "";  // all bytes sent, when checked
  };
  using C = Case;
  const Case cases[] = {
      // Paced: one reply after the other, and after the status frame on the line.
      C("", {{100, hello + test::short_connect()}}, 200, {100 + 22 * b, 100 + 44 * b},
        reply + reply),
      C("", {{0, status}, {52, hello}}, 100, {50 + 22 * b, 50 + 44 * b}),
      // The same stream mode twice keeps the beat.
      C("--no-pacing", {{1000, status}, {1120, status}, {1210, stream_on(0)}}, 5000,
        {1050, 1100, 1150, 1200}),
      C("--no-pacing", {{0, stream_on(2)}, {501, stream_on(0)}}, 1000, {250, 255, 500, 505}),
      C("--no-pacing --delay 30", {{10, hello}}, 100, {40}),
      C("--no-pacing --drop 2,4", {{0, hello}, {1, hello}, {2, hello}, {3, hello}}, 10, {0, 2}),
      C("--no-pacing --chunk 5", {{7, hello}}, 7, {7, 7, 7, 7, 7}, reply),
      C("--no-pacing --chunk 5", {{8, status}}, 58, {58, 58, 58, 58, 58}),
      C("--chunk 8", {{100, hello}}, 200, {100 + 8 * b, 100 + 16 * b, 100 + 22 * b}),
      C("--no-pacing --garbage 00FF55 --garbage-on 2", {{0, hello + hello + hello}}, 0, {0, 0, 0},
        reply + garbage + reply + reply),
      C("--garbage 00FF55", {{0, hello}}, 100, {25 * b}),  // before every reply
      C("--no-pacing --silent-after 2", {{0, status}, {60, hello}, {70, hello}, {80, hello}}, 1000,
        {50, 60, 70}),
      C("--no-pacing --silent-at 1000", {{960, status}, {999, hello}, {1000, hello}}, 2000, {999}),
      C("--no-pacing --vanish-at 500", {{0, status}, {600, hello}}, 1000,
        {50, 100, 150, 200, 250, 300, 350, 400, 450}),
      C("--vanish-after 2", {{100, hello + hello + hello}}, 1000, {100 + 22 * b, 100 + 44 * b}),
      // A lone start byte holds back the frame behind it until the reader gives it up.
      C("--no-pacing", {{0, bytes({0x13, 0x37, 0x55}) + test::short_connect()}}, 100, {100}, reply),
  };
  for (const Case& c : cases) {
    std::istringstream words(c.flags);
    std::string error;
    const auto cl = parse_command_line({std::istream_iterator<std::string>(words), {}}, error);
    ASSERT_TRUE(cl) << error;
    Controller controller(cl->options);
    for (const auto& [t, frames] : c.sends) controller.receive(t, frames);
    const auto out = controller.poll(c.until);
    ASSERT_EQ(out.size(), c.times.size()) << c.flags;
    for (std::size_t i = 0; i < out.size(); ++i)
      EXPECT_NEAR(out[i].at_ms, c.times[i], 1e-9) << c.flags << " " << i;
    if (!c.out.empty()) {
      EXPECT_EQ(joined(out), c.out) << c.flags;
    }
  }
}

// The request's bytes come at the wire rate, the last one between two milliseconds; the reply
// starts as that byte arrives, so its last byte is due exactly its own wire time later.
TEST(SimWire, APacedReplyStartsRightAfterTheRequestsLastByte) {
  Controller c(test::with([](Options& o) { o.paced = true; }));
  const std::string request = command(0x0C, 0x0240);
  const double first = 1000.123456789;
  for (std::size_t i = 0; i < request.size(); ++i)
    c.receive(first + static_cast<double>(i) * kByteMs, request.substr(i, 1));
  const double last = first + static_cast<double>(request.size() - 1) * kByteMs;
  const double due = last + 22 * kByteMs;
  EXPECT_DOUBLE_EQ(c.next_due(), due);
  EXPECT_TRUE(c.poll(due - 1e-6).empty());
  const auto out = c.poll(due);
  ASSERT_EQ(out.size(), 1u);
  EXPECT_DOUBLE_EQ(out[0].at_ms, due);
  EXPECT_EQ(out[0].bytes.size(), 22u);
  ASSERT_EQ(c.frames_received().size(), 1u);
  EXPECT_DOUBLE_EQ(c.frames_received()[0].at_ms, last);
}

// Silent or gone, the controller still takes the commands it got before.
TEST(SimWire, ASilentControllerStillActsAndAVanishedOneHearsNothing) {
  Controller silent(test::with([](Options& o) { o.faults.silent_after_replies = 1; }));
  silent.receive(0, command(0x05) + command(0x0B, 0x0300, Block{7}));
  EXPECT_EQ(silent.poll(10).size(), 1u);
  EXPECT_EQ(silent.working_memory().at(0x0300), 7);
  Controller gone(test::with([](Options& o) { o.faults.vanish_at_ms = 500; }));
  EXPECT_EQ(gone.next_due(), 500);
  gone.receive(600, command(0x05));
  EXPECT_TRUE(gone.vanished());
  EXPECT_EQ(gone.next_due(), -1);
  EXPECT_TRUE(gone.frames_received().empty());
}

std::vector<CommandFrame> feed(FrameReader& r, double t, const std::string& s) {
  std::vector<CommandFrame> out;
  for (char c : s)
    for (auto& f : r.push(t, static_cast<std::uint8_t>(c))) out.push_back(f);
  return out;
}

TEST(SimFrameReader, CutsFramesOutOfGarbageAndGivesUpAPartialFrameAfterAPause) {
  FrameReader r(100);
  const Block data{0x0D, 0x55, 0x00, 0x0D, 0x0A, 5, 6, 7, 8, 9, 10, 11, 12, 13, 0x55, 0x0D};
  auto frames = feed(r, 0, command(0x0B, 0x03A0, data));
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(frames[0].code * 0x10000 + frames[0].address(), 0x0B03A0);
  EXPECT_EQ(frames[0].data, data);  // frame bytes inside the data are data
  EXPECT_FALSE(frames[0].short_connect);
  // The short connect frame is taken at its twentieth byte; the full one has a zero there.
  const std::string s = test::short_connect();
  EXPECT_TRUE(feed(r, 0, s.substr(0, 19)).empty());
  frames = feed(r, 0, s.substr(19) + command(0x05));
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_TRUE(frames[0].short_connect);
  EXPECT_FALSE(frames[1].short_connect);
  // A stray 0x55 inside garbage, then a real frame right after it.
  const std::string garbage = bytes({0x00, 0xFF, 0x55, 0x13, 0x0D});
  frames = feed(r, 0, garbage + command(0x0C, 0x0260) + bytes({0x0A}) + command(0x05));
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_EQ(frames[0].address(), 0x0260);
  EXPECT_EQ(frames[1].code, 0x05);
  EXPECT_EQ(r.discarded(), garbage.size() + 1);
  // Neither a full frame without its zero nor a short connect with a stray byte is taken.
  std::string bad = command(0x05), bad_short = s + bytes({0, 0});
  bad[20] = bad_short[18] = 1;
  EXPECT_TRUE(feed(r, 0, bad + bad_short).empty());
  EXPECT_EQ(r.pending(), 0u);

  // A half frame is given up 100 ms after its last byte, also when a whole one follows.
  const std::string half = command(0x0C, 0x0240).substr(0, 9);
  EXPECT_TRUE(feed(r, 200, half).empty());
  EXPECT_TRUE(r.expire(299.9).empty() && r.pending() == 9);
  EXPECT_TRUE(r.expire(300).empty() && r.pending() == 0);
  feed(r, 300, half);
  frames = feed(r, 400, command(0x0C, 0x0250));
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(frames[0].address(), 0x0250);
}

}  // namespace
}  // namespace nerit::sim
