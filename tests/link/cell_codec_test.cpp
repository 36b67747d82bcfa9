// Map cells as the controller stores them and the texts the grids show for them.
#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "link/cell_codec.h"
#include "shell/errors.h"
#include "shell/numbers.h"

namespace nerit {
namespace {

using Pair = std::array<std::uint8_t, 2>;

TEST(CellCodec, CorrectionPercentToByte) {
  const struct {
    double percent;
    int stored;
  } cases[] = {{-100, 1}, {-50, 64}, {-25, 96}, {0, 128}, {50, 192}, {100, 255}, {-101, 0}};
  for (const auto& c : cases) EXPECT_EQ(correction_byte(c.percent), c.stored) << c.percent;
  EXPECT_THROW(correction_byte(101), OverflowError);
  EXPECT_THROW(correction_byte(201), OverflowError);
}

TEST(CellCodec, CorrectionByteToCellText) {
  const struct {
    int stored;
    const char* text;
  } cases[] = {{255, "100"}, {128, "0"},  {64, "-50"}, {1, "-100"},
               {0, "-101"},  {192, "50"}, {127, "-1"}};
  for (const auto& c : cases)
    EXPECT_EQ(correction_cell_text(static_cast<std::uint8_t>(c.stored)), c.text) << c.stored;
}

TEST(CellCodec, AirflowFrequencyIsThePeriodWord) {
  EXPECT_EQ(airflow_bytes(3000, 0), (Pair{0x53, 0x00}));
  EXPECT_EQ(airflow_bytes(20, 0), (Pair{0xD4, 0x30}));
  EXPECT_EQ(airflow_bytes(5000, 0), (Pair{0x32, 0x00}));
  EXPECT_EQ(airflow_bytes(2999, 0), (Pair{0x53, 0x00}));  // 83.36: whole part
  EXPECT_THROW(airflow_bytes(0, 0), DivisionByZeroError);
  EXPECT_THROW(airflow_bytes(3, 0), OverflowError);  // 83333 needs 17 bits
}

TEST(CellCodec, AirflowVoltageIsOneByteClampedTo255) {
  for (double type : {1.0, 4.0}) {
    EXPECT_EQ(airflow_bytes(5000, type), (Pair{0xFF, 0x00}));
    EXPECT_EQ(airflow_bytes(6000, type), (Pair{0xFF, 0x00}));
    EXPECT_EQ(airflow_bytes(2500, type), (Pair{127, 0x00}));
    EXPECT_EQ(airflow_bytes(0, type), (Pair{0x00, 0x00}));
  }
}

TEST(CellCodec, AirflowVoltageCellText) {
  EXPECT_EQ(airflow_cell_text(255, 0, 1), "5000");
  EXPECT_EQ(airflow_cell_text(0, 0, 1), "0");
  EXPECT_EQ(airflow_cell_text(128, 0, 1), "2510");
  EXPECT_EQ(airflow_cell_text(128, 7, 2), "2510");  // the high byte means nothing here
}

TEST(CellCodec, AirflowFrequencyTextForWholeFrequencies) {
  EXPECT_EQ(airflow_cell_text(0xD4, 0x30, 0), "20");  // 12500
  EXPECT_EQ(airflow_cell_text(0x32, 0x00, 0), "5000");
  EXPECT_EQ(airflow_cell_text(0x01, 0x00, 0), "250000");
  EXPECT_EQ(airflow_cell_text(0xE8, 0x03, 0), "250");  // 1000
}

// Whatever a frequency cell shows must be written back as the word it came from.
TEST(CellCodec, AirflowFrequencyTextRoundTripsEveryWord) {
  int failures = 0;
  for (int word = 1; word <= 65535 && failures < 10; ++word) {
    const auto lo = static_cast<std::uint8_t>(word & 0xFF);
    const auto hi = static_cast<std::uint8_t>(word >> 8);
    const std::string text = airflow_cell_text(lo, hi, 0);
    bool ok = text.size() <= 10;
    if (ok) {
      try {
        ok = airflow_bytes(val(text), 0) == Pair{lo, hi};
      } catch (const ProgramError&) {
        ok = false;
      }
    }
    if (ok && 250000 % word == 0) ok = text == std::to_string(250000 / word);
    if (!ok) {
      ++failures;
      ADD_FAILURE() << "word " << word << " shows \"" << text << "\"";
    }
  }
}

}  // namespace
}  // namespace nerit
