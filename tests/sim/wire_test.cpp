// Wire pacing, the injected faults, and cutting command frames out of the byte stream with
// garbage and stray start bytes, on the virtual time axis.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sim/controller.h"
#include "sim/frame_reader.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::bytes;
using test::command;
using test::joined;
using test::stream_on;
using test::times;
using test::with;
using Times = std::vector<double>;

constexpr double kByte = 10.0 / 19200.0 * 1000.0;  // ms

const Options kPaced = with([](Options& o) { o.paced = true; });

void expect_times(const std::vector<Emission>& out, const Times& expected) {
  ASSERT_EQ(out.size(), expected.size());
  for (std::size_t i = 0; i < out.size(); ++i) EXPECT_NEAR(out[i].at_ms, expected[i], 1e-9) << i;
}

TEST(SimPacing, RepliesTakeTheirWireTimeOneAfterTheOtherAndAfterAStatusFrame) {
  Controller c(kPaced);
  c.receive(100, command(0x05) + command(0x0C, 0x0240));
  EXPECT_NEAR(c.next_due(), 100 + 22 * kByte, 1e-9);
  EXPECT_TRUE(c.poll(100 + 22 * kByte - 1e-6).empty());
  expect_times(c.poll(200), {100 + 22 * kByte, 100 + 44 * kByte});
  c.receive(300, command(0x05));  // an idle line starts the next reply at once
  expect_times(c.poll(400), {300 + 22 * kByte});
  Controller streaming(kPaced);
  streaming.receive(0, stream_on(1));
  streaming.receive(52, command(0x05));  // waits for the status frame on the line
  const auto out = streaming.poll(100);
  expect_times(out, {50 + 22 * kByte, 50 + 44 * kByte});
  EXPECT_EQ(test::byte_at(out.at(1).bytes, 1), 0xFD);
  Controller debug(kPaced);
  debug.receive(0, stream_on(2));  // a debug line and its carriage return arrive apart
  const auto lines = debug.poll(300);
  ASSERT_EQ(lines.size(), 2u);
  const double text_end = 250 + static_cast<double>(lines[0].bytes.size()) * kByte;
  expect_times(lines, {text_end, text_end + 5 + kByte});
}

TEST(SimFaults, DelayDropsAndChunks) {
  Options delayed = with([](Options& o) { o.reply_delay_ms = 30; });
  Controller unpaced(delayed);
  unpaced.receive(10, command(0x05));
  EXPECT_TRUE(unpaced.poll(39.9).empty());
  EXPECT_EQ(times(unpaced.poll(40)), Times{40});
  delayed.paced = true;
  Controller wire(delayed);
  wire.receive(10, command(0x05));
  expect_times(wire.poll(100), {40 + 22 * kByte});

  Controller c(with([](Options& o) { o.faults.drop_replies = {2, 4}; }));
  for (int t = 0; t < 4; ++t) c.receive(t, command(0x0C, 0x0240 + 16 * t));
  const auto out = c.poll(10);
  EXPECT_EQ(times(out), (Times{0, 2}));
  EXPECT_EQ(out.at(1).bytes.substr(2, 2), bytes({0x02, 0x60}));
  EXPECT_EQ(c.replies(), 4);

  Options chunked = with([](Options& o) { o.faults.chunk_size = 5; });
  Controller pieces(chunked);
  pieces.receive(7, command(0x05));
  const auto reply = pieces.poll(7);
  EXPECT_EQ(times(reply), Times(5, 7));
  EXPECT_EQ(reply.back().bytes.size(), 2u);
  Controller whole;
  EXPECT_EQ(joined(reply), joined(test::exchange(whole, 7, command(0x05), 7)));
  pieces.receive(8, stream_on(1));
  EXPECT_EQ(pieces.poll(58).size(), 5u);  // status frames too
  chunked.paced = true;
  chunked.faults.chunk_size = 8;
  Controller paced_pieces(chunked);
  paced_pieces.receive(100, command(0x05));
  expect_times(paced_pieces.poll(200), {100 + 8 * kByte, 100 + 16 * kByte, 100 + 22 * kByte});
}

TEST(SimFaults, GarbageGoesBeforeTheChosenReplies) {
  Options o = with([](Options& g) { g.faults.garbage = bytes({0x00, 0xFF, 0x55}); });
  o.faults.garbage_replies = {2};
  Controller c(o);
  c.receive(0, command(0x05) + command(0x05) + command(0x05));
  const auto out = c.poll(0);
  ASSERT_EQ(out.size(), 3u);
  EXPECT_EQ(out[0].bytes.size(), 22u);
  EXPECT_EQ(out[1].bytes, bytes({0x00, 0xFF, 0x55}) + out[0].bytes);
  EXPECT_EQ(out[2].bytes, out[0].bytes);
  o.paced = true;
  o.faults.garbage_replies.clear();  // every reply, and it takes its wire time
  Controller wire(o);
  wire.receive(0, command(0x05));
  expect_times(wire.poll(100), {25 * kByte});
}

TEST(SimFaults, SilenceAfterSomeRepliesOrFromATime) {
  Controller c(with([](Options& o) { o.faults.silent_after_replies = 2; }));
  c.receive(0, stream_on(1));
  c.receive(60, command(0x05));
  c.receive(70, command(0x05));
  c.receive(80, command(0x05) + command(0x0B, 0x0300, Block{7}));
  EXPECT_EQ(times(c.poll(1000)), (Times{50, 60, 70}));  // the stream stops too
  EXPECT_EQ(c.replies(), 4);
  EXPECT_EQ(c.working_memory().at(0x0300), 7);  // commands still act
  Controller later(with([](Options& o) { o.faults.silent_from_ms = 1000; }));
  later.receive(960, stream_on(1));
  later.receive(999, command(0x05));
  later.receive(1000, command(0x05));
  EXPECT_EQ(times(later.poll(2000)), Times{999});
}

TEST(SimFaults, VanishingEndsEverythingOnceDueOrOnceItsReplyArrived) {
  Controller c(with([](Options& o) { o.faults.vanish_at_ms = 500; }));
  c.receive(0, stream_on(1));
  EXPECT_EQ(c.poll(499).size(), 9u);
  EXPECT_FALSE(c.vanished());
  EXPECT_EQ(c.next_due(), 500);
  EXPECT_TRUE(c.poll(500).empty());
  EXPECT_TRUE(c.vanished());
  c.receive(600, command(0x05));
  EXPECT_TRUE(c.poll(1000).empty());
  EXPECT_EQ(c.next_due(), -1);
  EXPECT_EQ(c.frames_received().size(), 1u);
  Controller wire(with([](Options& o) { o.paced = true, o.faults.vanish_after_replies = 2; }));
  wire.receive(100, command(0x05) + command(0x05) + command(0x05));
  expect_times(wire.poll(1000), {100 + 22 * kByte, 100 + 44 * kByte});
  EXPECT_TRUE(wire.vanished());
}

std::vector<CommandFrame> feed(FrameReader& r, double t, const std::string& s) {
  std::vector<CommandFrame> out;
  for (char c : s)
    for (auto& f : r.push(t, static_cast<std::uint8_t>(c))) out.push_back(f);
  return out;
}

TEST(SimFrameReader, DecodesFullAndShortFramesAndDropsGarbageAndStrayStartBytes) {
  FrameReader r;
  const Block data{0x0D, 0x55, 0x00, 0x0D, 0x0A, 5, 6, 7, 8, 9, 10, 11, 12, 13, 0x55, 0x0D};
  auto frames = feed(r, 0, command(0x0B, 0x03A0, data));
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(frames[0].code, 0x0B);
  EXPECT_EQ(frames[0].address(), 0x03A0);
  EXPECT_EQ(frames[0].data, data);  // frame bytes inside the data are data
  EXPECT_FALSE(frames[0].short_connect);
  // The short connect frame is taken at its twentieth byte; the full one has a zero there.
  const std::string s = test::short_connect();
  EXPECT_TRUE(feed(r, 0, s.substr(0, 19)).empty());
  frames = feed(r, 0, s.substr(19) + command(0x05));
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_TRUE(frames[0].short_connect);
  EXPECT_EQ(frames[1].code, 0x05);
  EXPECT_FALSE(frames[1].short_connect);
  // A stray 0x55 inside garbage, then a real frame right after it.
  const std::string garbage = bytes({0x00, 0xFF, 0x55, 0x13, 0x0D});
  frames = feed(r, 0, garbage + command(0x0C, 0x0260) + bytes({0x0A}) + command(0x05));
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_EQ(frames[0].address(), 0x0260);
  EXPECT_EQ(frames[1].code, 0x05);
  EXPECT_EQ(r.discarded(), garbage.size() + 1);
  EXPECT_EQ(r.pending(), 0u);
}

TEST(SimFrameReader, GivesUpAPartialFrameAfterTheTimeout) {
  FrameReader r(100);
  // A lone start byte before a short connect frame holds it back until the timeout.
  EXPECT_TRUE(feed(r, 10, bytes({0x55}) + test::short_connect()).empty());
  EXPECT_EQ(r.expiry(), 110);
  EXPECT_TRUE(r.expire(109.9).empty());
  const auto frames = r.expire(110);
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_TRUE(frames[0].short_connect);
  EXPECT_EQ(r.expiry(), -1);
  // A half frame followed after a pause by a whole one.
  EXPECT_TRUE(feed(r, 200, command(0x0C, 0x0240).substr(0, 9)).empty());
  const auto after_pause = feed(r, 400, command(0x0C, 0x0250));
  ASSERT_EQ(after_pause.size(), 1u);
  EXPECT_EQ(after_pause[0].address(), 0x0250);
  // The controller answers the frame behind garbage and the timed-out start byte.
  Controller c;
  c.receive(0, bytes({0x13, 0x37, 0x55}) + test::short_connect());
  EXPECT_TRUE(c.poll(99).empty());
  EXPECT_EQ(c.next_due(), 100);
  const auto out = c.poll(100);
  ASSERT_EQ(out.size(), 1u);
  EXPECT_EQ(out[0].at_ms, 100);
  EXPECT_EQ(out[0].bytes.substr(0, 2), bytes({0x55, 0xFD}));
  EXPECT_EQ(c.bytes_discarded(), 3u);
}

}  // namespace
}  // namespace nerit::sim
