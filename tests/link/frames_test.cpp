// Command frames as they go to the controller, byte for byte.
#include <string>

#include <gtest/gtest.h>

#include "link/frames.h"
#include "shell/errors.h"
#include "tests/support/reply_frames.h"

namespace nerit {
namespace {

using testing::hex_bytes;

std::string zeros(int n) {
  std::string s;
  for (int i = 0; i < n; ++i) s += " 00";
  return s;
}

TEST(Frames, BytesOnTheWire) {
  FrameData data{};
  data[0] = 0x01;
  data[15] = 0xFE;
  struct Case {
    const char* name;
    std::string frame;
    std::string expected;
  };
  const Case cases[] = {
      {"connect", connect_frame(), "55 05" + zeros(19) + " 0D"},
      {"short connect", short_connect_frame(), "55 05" + zeros(17) + " 0D"},
      {"address 0x0C 0x250", address_frame(0x0C, 0x250), "55 0C 02 50" + zeros(17) + " 0D"},
      {"address 0x02 0x10", address_frame(0x02, 0x10), "55 02 00 10" + zeros(17) + " 0D"},
      {"address with data", address_frame(0x0B, 0x3A0, data),
       "55 0B 03 A0 01" + zeros(14) + " FE 00 0D"},
      {"stream off", stream_frame(0), "55 80 00 00 00" + zeros(16) + " 0D"},
      {"stream status", stream_frame(1), "55 80 00 00 01" + zeros(16) + " 0D"},
      {"stream debug", stream_frame(2), "55 80 00 00 02" + zeros(16) + " 0D"},
      {"command with data", command_frame(0x09, 0x12, 0x34, FrameData{0x01, 0xC8}),
       "55 09 12 34 01 C8" + zeros(15) + " 0D"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(hex_bytes(c.frame), c.expected) << c.name;
  }
  EXPECT_EQ(connect_frame().size(), 22u);
  EXPECT_EQ(short_connect_frame().size(), 20u);
}

TEST(Frames, AddressOutsideSixteenBitsFails) {
  EXPECT_THROW(address_frame(0x0C, 0x10000), OverflowError);
  EXPECT_THROW(address_frame(0x0C, -1), OverflowError);
}

TEST(Frames, WordBytesAreLowThenHigh) {
  using Pair = std::array<std::uint8_t, 2>;
  EXPECT_EQ(word_bytes(0x0150), (Pair{0x50, 0x01}));
  EXPECT_EQ(word_bytes(65535), (Pair{0xFF, 0xFF}));
  EXPECT_EQ(word_bytes(60000), (Pair{0x60, 0xEA}));
  EXPECT_EQ(word_bytes(255.5), (Pair{0x00, 0x01}));  // 256: rounded, ties to even
  EXPECT_EQ(word_bytes(0), (Pair{0x00, 0x00}));
  EXPECT_THROW(word_bytes(65536), OverflowError);
  EXPECT_THROW(word_bytes(-256), OverflowError);
}

}  // namespace
}  // namespace nerit
