// Cutting command frames out of the byte stream, with garbage and stray start bytes.
#include "sim/frame_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "sim/controller.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::bytes;
using test::command;

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
