// The demo tune (nerit --simulate, nerit-sim --demo) as the program reads it, and the neutral
// default tune that every other test starts from.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "sim/controller.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::command;
using test::exchange;
using test::joined;

using CorrectionMap = std::array<std::array<int, 16>, 16>;  // [load row][speed column]

// The correction map as 16 reads of working memory return it.
CorrectionMap read_correction_map(Controller& c) {
  CorrectionMap map{};
  for (int row = 0; row < 16; ++row) {
    const std::string reply =
        joined(exchange(c, row, command(0x0C, static_cast<std::uint16_t>(0x02A0 + 16 * row)), row));
    EXPECT_EQ(reply.size(), 22u);
    for (int col = 0; col < 16; ++col) map[row][col] = test::byte_at(reply, 4 + col);
  }
  return map;
}

Options demo() {
  return test::with([](Options& o) { o.demo_tune = true; });
}

// Not flat, yet no step of 5 % (6.35) or more between neighbours across or down.
TEST(SimDemoTune, TheCorrectionMapVariesSmoothlyFromCellToCell) {
  Controller c(demo());
  const CorrectionMap map = read_correction_map(c);
  int low = 255, high = 0;
  for (int row = 0; row < 16; ++row) {
    for (int col = 0; col < 16; ++col) {
      low = std::min(low, map[row][col]);
      high = std::max(high, map[row][col]);
      if (col < 15) {
        EXPECT_LE(std::abs(map[row][col + 1] - map[row][col]), 6) << row << " " << col;
      }
      if (row < 15) {
        EXPECT_LE(std::abs(map[row + 1][col] - map[row][col]), 6) << row << " " << col;
      }
    }
  }
  EXPECT_GE(high - low, 25);  // a spread of about 20 %
}

// Load points 20 + 15.33 k kPa, speed columns 500 c rpm.
TEST(SimDemoTune, RicherUnderBoostAndAtSpeedLeanAtLightLoadCruise) {
  Controller c(demo());
  const CorrectionMap map = read_correction_map(c);
  // From 112 kPa (row 7) on every cell is richer than neutral, the richest at 250 kPa and
  // 8000 rpm (at least +15 %).
  for (int row = 6; row < 16; ++row)
    for (int col = 0; col < 16; ++col) EXPECT_GT(map[row][col], 128) << row << " " << col;
  int richest = 0;
  for (const auto& row : map)
    richest = std::max(richest, *std::max_element(row.begin(), row.end()));
  EXPECT_EQ(map[15][15], richest);
  EXPECT_GE(richest, 147);
  // 51 kPa at 2500 rpm: at least 5 % lean (121 or less), the leanest cell of the map.
  int leanest = 255;
  for (const auto& row : map)
    leanest = std::min(leanest, *std::min_element(row.begin(), row.end()));
  EXPECT_EQ(map[2][4], leanest);
  EXPECT_LE(leanest, 121);
}

// Boost control on (block A byte 15), and apart from that byte and the correction map the
// working memory is the default tune's.
TEST(SimDemoTune, BoostControlIsOnAndTheRestIsTheDefaultTune) {
  const MemoryWindow demo_ram = Controller(demo()).working_memory();
  const MemoryWindow default_ram = Controller().working_memory();
  EXPECT_EQ(demo_ram.at(0x024F), 1);
  for (std::uint32_t at = 0x0240; at < 0x05A0; ++at) {
    if (at == 0x024F || (at >= 0x02A0 && at < 0x03A0)) continue;
    EXPECT_EQ(demo_ram.at(at), default_ram.at(at)) << std::hex << at;
  }
}

class SimDemoTuneState : public ::testing::Test {
 protected:
  void SetUp() override { std::filesystem::remove(path_); }
  void TearDown() override { std::filesystem::remove(path_); }
  Options demo_with_state() const {
    Options o = demo();
    o.state_file = path_;
    return o;
  }
  const std::string path_ =
      (std::filesystem::temp_directory_path() / ("nerit_demo_state_" + std::to_string(::getpid())))
          .string();
};

// A tune made permanent earlier comes back as it was: neutral apart from the row written,
// boost control off.
TEST_F(SimDemoTuneState, AStateFileWinsOverTheDemoTune) {
  const Block row{100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112, 113, 114, 115};
  {
    Controller first(test::with([&](Options& o) { o.state_file = path_; }));
    exchange(first, 0, command(0x0B, 0x02B0, row), 0);
    exchange(first, 1, command(0x08), 1);
  }
  Controller c(demo_with_state());
  EXPECT_EQ(c.state_error(), "");
  const CorrectionMap map = read_correction_map(c);
  for (int r = 0; r < 16; ++r)
    for (int col = 0; col < 16; ++col)
      EXPECT_EQ(map[r][col], r == 1 ? row[col] : 128) << r << " " << col;
  EXPECT_EQ(c.working_memory().at(0x024F), 0);
}

}  // namespace
}  // namespace nerit::sim
