// Every command frame the program sends, byte for byte, and map cells as the controller stores
// them with the texts the grids show for them.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

#include "link/cell_codec.h"
#include "link/frames.h"
#include "shell/errors.h"
#include "shell/numbers.h"
#include "tests/support/reply_frames.h"

namespace nerit {
namespace {

using Pair = std::array<std::uint8_t, 2>;

std::string zeros(int n) {
  std::string s;
  for (int i = 0; i < n; ++i) s += " 00";
  return s;
}

TEST(Frames, BytesOnTheWireAndWordsLowByteFirst) {
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
  };
  for (const auto& c : cases) EXPECT_EQ(testing::hex_bytes(c.frame), c.expected);
  EXPECT_THROW(address_frame(kCmdSramRead, 0x10000), OverflowError);
  EXPECT_THROW(address_frame(kCmdSramRead, -1), OverflowError);
  EXPECT_EQ(word_bytes(0x0150), (Pair{0x50, 0x01}));
  EXPECT_EQ(word_bytes(255.5), (Pair{0x00, 0x01}));  // 256: ties to even
  EXPECT_EQ(word_bytes(65535), (Pair{0xFF, 0xFF}));
  EXPECT_THROW(word_bytes(65536), OverflowError);
  EXPECT_THROW(word_bytes(-256), OverflowError);
}

TEST(CellCodec, StoredBytesAndCellTexts) {
  const std::pair<double, int> stored_bytes[] = {
      {-100, 1}, {-50, 64}, {-25, 96}, {0, 128}, {50, 192}, {100, 255}, {-101, 0},
  };
  for (auto [percent, stored] : stored_bytes)
    EXPECT_EQ(correction_byte(percent), stored) << percent;
  EXPECT_THROW(correction_byte(101), OverflowError);
  const std::pair<int, const char*> texts[] = {
      {255, "100"}, {128, "0"}, {127, "-1"}, {64, "-50"}, {0, "-101"}};
  for (auto [stored, text] : texts)
    EXPECT_EQ(correction_cell_text(static_cast<std::uint8_t>(stored)), text) << stored;

  // Frequency (type 0): the period word, whole part; voltage: one byte, at most 255.
  const struct {
    double value, type;
    Pair bytes;
  } to_bytes[] = {
      {20, 0, {0xD4, 0x30}}, {3000, 0, {0x53, 0}}, {2950, 0, {0x54, 0}}, {5000, 0, {0x32, 0}},
      {5000, 1, {0xFF, 0}},  {6000, 4, {0xFF, 0}}, {2500, 1, {127, 0}},
  };
  for (const auto& c : to_bytes) EXPECT_EQ(airflow_bytes(c.value, c.type), c.bytes) << c.value;
  EXPECT_THROW(airflow_bytes(0, 0), DivisionByZeroError);
  EXPECT_THROW(airflow_bytes(3, 0), OverflowError);  // 83333 needs 17 bits
  // Voltage: the low byte only. Frequency texts: see below.
  EXPECT_EQ(airflow_cell_text(255, 0, 1), "5000");
  EXPECT_EQ(airflow_cell_text(128, 7, 2), "2510");
}

// Whatever a frequency cell shows must be written back as the word it came from.
TEST(CellCodec, AirflowFrequencyTextRoundTripsEveryWord) {
  int failures = 0;
  for (int word = 1; word <= 65535 && failures < 10; ++word) {
    const Pair bytes{static_cast<std::uint8_t>(word & 0xFF), static_cast<std::uint8_t>(word >> 8)};
    const std::string text = airflow_cell_text(bytes[0], bytes[1], 0);
    bool ok = text.size() <= 10 && (250000 % word != 0 || text == std::to_string(250000 / word));
    try {
      ok = ok && airflow_bytes(val(text), 0) == bytes;
    } catch (const ProgramError&) {
      ok = false;
    }
    if (!ok) ADD_FAILURE() << "word " << word << " shows \"" << text << "\"" << ++failures;
  }
}

}  // namespace
}  // namespace nerit
