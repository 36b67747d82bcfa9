// Every command frame the program sends, byte for byte, and the word fields inside them.
#include <gtest/gtest.h>

#include <string>

#include "link/frames.h"
#include "shell/errors.h"
#include "tests/support/reply_frames.h"

namespace nerit {
namespace {

std::string zeros(int n) {
  std::string s;
  for (int i = 0; i < n; ++i) s += " 00";
  return s;
}

TEST(Frames, BytesOnTheWire) {
  FrameData data{};
  data[0] = 0x01;
  data[15] = 0xFE;
  const struct {
    std::string frame, expected;
  } cases[] = {
      {connect_frame(), "55 05" + zeros(19) + " 0D"},
      {short_connect_frame(), "55 05" + zeros(17) + " 0D"},
      {address_frame(kCmdSramRead, 0x250), "55 0C 02 50" + zeros(17) + " 0D"},
      {address_frame(kCmdBlockRequest, 0x10), "55 02 00 10" + zeros(17) + " 0D"},
      {address_frame(kCmdSramWrite, 0x3A0, data), "55 0B 03 A0 01" + zeros(14) + " FE 00 0D"},
      {address_frame(kCmdEepromWrite, 0xA0, data), "55 01 00 A0 01" + zeros(14) + " FE 00 0D"},
      {command_frame(kCmdReloadEeprom, 0, 0), "55 06" + zeros(19) + " 0D"},
      {command_frame(kCmdMakePermanent, 0, 0), "55 08" + zeros(19) + " 0D"},
      {stream_frame(0), "55 80" + zeros(19) + " 0D"},
      {stream_frame(1), "55 80 00 00 01" + zeros(16) + " 0D"},
      {stream_frame(2), "55 80 00 00 02" + zeros(16) + " 0D"},
      {command_frame(0x09, 0x12, 0x34, FrameData{0x01, 0xC8}),
       "55 09 12 34 01 C8" + zeros(15) + " 0D"},
  };
  for (const auto& c : cases) EXPECT_EQ(testing::hex_bytes(c.frame), c.expected);
  EXPECT_THROW(address_frame(kCmdSramRead, 0x10000), OverflowError);
  EXPECT_THROW(address_frame(kCmdSramRead, -1), OverflowError);
}

TEST(Frames, WordBytesAreLowThenHigh) {
  using Pair = std::array<std::uint8_t, 2>;
  EXPECT_EQ(word_bytes(0x0150), (Pair{0x50, 0x01}));
  EXPECT_EQ(word_bytes(65535), (Pair{0xFF, 0xFF}));
  EXPECT_EQ(word_bytes(255.5), (Pair{0x00, 0x01}));  // 256: rounded, ties to even
  EXPECT_EQ(word_bytes(0), (Pair{0x00, 0x00}));
  EXPECT_THROW(word_bytes(65536), OverflowError);
  EXPECT_THROW(word_bytes(-256), OverflowError);
}

}  // namespace
}  // namespace nerit
