// Wire pacing and the injected faults, on the virtual time axis.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sim/controller.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::bytes;
using test::command;
using test::joined;
using test::stream_on;

constexpr double kByte = 10.0 / 19200.0 * 1000.0;  // ms

std::vector<double> times(const std::vector<Emission>& emissions) {
  std::vector<double> out;
  for (const auto& e : emissions) out.push_back(e.at_ms);
  return out;
}

Options paced() {
  Options o;
  o.paced = true;
  return o;
}

TEST(SimPacing, RepliesTakeTheirWireTimeOneAfterTheOther) {
  Controller c(paced());
  c.receive(100, command(0x05) + command(0x0C, 0x0240));
  EXPECT_NEAR(c.next_due(), 100 + 22 * kByte, 1e-9);
  EXPECT_TRUE(c.poll(100 + 22 * kByte - 1e-6).empty());
  const auto out = c.poll(200);
  ASSERT_EQ(out.size(), 2u);
  EXPECT_NEAR(out[0].at_ms, 100 + 22 * kByte, 1e-9);
  EXPECT_NEAR(out[1].at_ms, 100 + 44 * kByte, 1e-9);
  // An idle line starts the next reply at once.
  c.receive(300, command(0x05));
  EXPECT_NEAR(c.poll(400).at(0).at_ms, 300 + 22 * kByte, 1e-9);
}

TEST(SimPacing, AReplyWaitsForTheStatusFrameOnTheLine) {
  Controller c(paced());
  c.receive(0, stream_on(1));
  c.receive(52, command(0x05));
  const auto out = c.poll(100);
  ASSERT_EQ(out.size(), 2u);
  EXPECT_EQ(test::byte_at(out[0].bytes, 1), 0xFF);
  EXPECT_NEAR(out[0].at_ms, 50 + 22 * kByte, 1e-9);
  EXPECT_EQ(test::byte_at(out[1].bytes, 1), 0xFD);
  EXPECT_NEAR(out[1].at_ms, 50 + 44 * kByte, 1e-9);
}

TEST(SimPacing, DebugTextAndItsCarriageReturnArriveApart) {
  Controller c(paced());
  c.receive(0, stream_on(2));
  const auto out = c.poll(300);
  ASSERT_EQ(out.size(), 2u);
  const double text_end = 250 + static_cast<double>(out[0].bytes.size()) * kByte;
  EXPECT_NEAR(out[0].at_ms, text_end, 1e-9);
  EXPECT_EQ(out[1].bytes, "\r");
  EXPECT_NEAR(out[1].at_ms, text_end + 5 + kByte, 1e-9);
}

TEST(SimFaults, DelayPostponesEveryReply) {
  Options o;
  o.reply_delay_ms = 30;
  Controller unpaced(o);
  unpaced.receive(10, command(0x05));
  EXPECT_TRUE(unpaced.poll(39.9).empty());
  EXPECT_EQ(times(unpaced.poll(40)), (std::vector<double>{40}));
  o.paced = true;
  Controller wire(o);
  wire.receive(10, command(0x05));
  EXPECT_NEAR(wire.poll(100).at(0).at_ms, 40 + 22 * kByte, 1e-9);
}

TEST(SimFaults, DroppedRepliesAreCountedButNeverSent) {
  Options o;
  o.faults.drop_replies = {2, 4};
  Controller c(o);
  for (int t = 0; t < 4; ++t) c.receive(t, command(0x0C, 0x0240 + 16 * t));
  const auto out = c.poll(10);
  EXPECT_EQ(times(out), (std::vector<double>{0, 2}));
  EXPECT_EQ(out[1].bytes.substr(2, 2), bytes({0x02, 0x60}));
  EXPECT_EQ(c.replies(), 4);
}

TEST(SimFaults, ChunksSplitRepliesAndStatusFrames) {
  Options o;
  o.faults.chunk_size = 5;
  Controller c(o);
  c.receive(7, command(0x05));
  const auto out = c.poll(7);
  ASSERT_EQ(out.size(), 5u);
  for (const auto& e : out) EXPECT_EQ(e.at_ms, 7);
  EXPECT_EQ(out[4].bytes.size(), 2u);
  EXPECT_EQ(joined(out), bytes({0x55, 0xFD, 0, 0}) + "Nerit SIM V1.00 \r\n");
  c.receive(8, stream_on(1));
  EXPECT_EQ(c.poll(58).size(), 5u);

  o.paced = true;
  o.faults.chunk_size = 8;
  Controller wire(o);
  wire.receive(100, command(0x05));
  const auto pieces = wire.poll(200);
  ASSERT_EQ(pieces.size(), 3u);
  EXPECT_NEAR(pieces[0].at_ms, 100 + 8 * kByte, 1e-9);
  EXPECT_NEAR(pieces[1].at_ms, 100 + 16 * kByte, 1e-9);
  EXPECT_NEAR(pieces[2].at_ms, 100 + 22 * kByte, 1e-9);
}

TEST(SimFaults, GarbageGoesBeforeTheChosenReplies) {
  Options o;
  o.faults.garbage = bytes({0x00, 0xFF, 0x55});
  o.faults.garbage_replies = {2};
  Controller c(o);
  c.receive(0, command(0x05) + command(0x05) + command(0x05));
  const auto out = c.poll(0);
  ASSERT_EQ(out.size(), 3u);
  EXPECT_EQ(out[0].bytes.size(), 22u);
  EXPECT_EQ(out[1].bytes, bytes({0x00, 0xFF, 0x55}) + out[0].bytes);
  EXPECT_EQ(out[2].bytes, out[0].bytes);

  o.paced = true;
  o.faults.garbage_replies.clear();
  Controller wire(o);
  wire.receive(0, command(0x05));
  EXPECT_NEAR(wire.poll(100).at(0).at_ms, 25 * kByte, 1e-9);
}

TEST(SimFaults, SilenceAfterSomeRepliesAlsoStopsTheStream) {
  Options o;
  o.faults.silent_after_replies = 2;
  Controller c(o);
  c.receive(0, stream_on(1));
  c.receive(60, command(0x05));
  c.receive(70, command(0x05));
  c.receive(80, command(0x05) + command(0x0B, 0x0300, Block{7}));
  EXPECT_EQ(times(c.poll(1000)), (std::vector<double>{50, 60, 70}));
  EXPECT_EQ(c.replies(), 4);
  EXPECT_EQ(c.working_memory().at(0x0300), 7);  // commands still act
}

TEST(SimFaults, SilenceFromATimeOn) {
  Options o;
  o.faults.silent_from_ms = 1000;
  Controller c(o);
  c.receive(960, stream_on(1));
  c.receive(999, command(0x05));
  c.receive(1000, command(0x05));
  EXPECT_EQ(times(c.poll(2000)), (std::vector<double>{999}));
}

TEST(SimFaults, VanishingAtATimeEndsEverything) {
  Options o;
  o.faults.vanish_at_ms = 500;
  Controller c(o);
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
}

TEST(SimFaults, VanishingAfterAReplyLetsThatReplyArriveFirst) {
  Options o = paced();
  o.faults.vanish_after_replies = 2;
  Controller c(o);
  c.receive(100, command(0x05) + command(0x05) + command(0x05));
  const auto out = c.poll(1000);
  ASSERT_EQ(out.size(), 2u);
  EXPECT_NEAR(out[1].at_ms, 100 + 44 * kByte, 1e-9);
  EXPECT_TRUE(c.vanished());
}

}  // namespace
}  // namespace nerit::sim
