// Interpolation, "clear", the automap fill and the operating-point highlight.
#include <gtest/gtest.h>

#include "shell/fault_boundary.h"
#include "shell/numbers.h"
#include "tests/maps/map_fixture.h"

namespace nerit::testing {
namespace {

class BlockCommandsTest : public MapFixture {
 protected:
  void right_click_block(MapId m, int r0, int c0, int r1, int c1) {
    drag(m, r0, c0, r1, c1);
    press(m, r1, c1, kRightButton);
  }
};

TEST_F(BlockCommandsTest, InterpolationFillsTheCellsBetweenTheEnds) {
  struct Case {
    MapId map;
    bool by_rows;
    int r0, c0, r1, c1;
    const char *first, *last, *line;
  };
  const Case cases[] = {
      {kCorr, true, 5, 2, 5, 5, "10", "40", "10 20 30 40"},
      {kCorr, true, 5, 2, 5, 5, "0", "1", "0 0 1 1"},                // 0.333, 0.667
      {kCorr, true, 5, 2, 5, 4, "0", "1", "0 0 1"},                  // 0.5 to even
      {kAir, true, 1, 1, 1, 7, "20", "33", "20 22 24 26 29 31 33"},  // single precision: 26.5
      {kCorr, false, 2, 3, 4, 3, "100", "-50", "100|25|-50"},
      {kAir, false, 1, 16, 16, 16, "20", "5000",
       "20|352|684|1016|1348|1680|2012|2344|2676|3008|3340|3672|4004|4336|4668|5000"},
  };
  for (const Case& c : cases) {
    f.editor.close_box(c.map);
    grid(c.map).set_text(c.r0, c.c0, c.first);
    grid(c.map).set_text(c.r1, c.c1, c.last);
    right_click_block(c.map, c.r0, c.c0, c.r1, c.c1);
    ASSERT_TRUE(f.map_controls.Frame6.visible);
    c.by_rows ? f.block_commands.Command13_Click() : f.block_commands.Command14_Click();
    EXPECT_EQ(cells(c.map, c.r0, c.c0, c.r1, c.c1), c.line);
    EXPECT_FALSE(f.map_controls.Frame6.visible);
  }
  EXPECT_TRUE(peer.frames.empty());
}

TEST_F(BlockCommandsTest, BlockOfOneColumnStopsRowInterpolationWithADivisionError) {
  grid(kCorr).set_text(3, 4, "50");
  right_click_block(kCorr, 2, 4, 6, 4);
  fp.dialogs.expect("Error|Critical|Ok|Division by zero");
  EXPECT_FALSE(run_handler(fp.dialogs, [&] { f.block_commands.Command13_Click(); }));
  EXPECT_EQ(fp.dialogs.boxes(), std::vector<std::string>{"Error|Critical|Ok|Division by zero"});
  EXPECT_TRUE(f.map_controls.Frame6.visible);  // nothing after the failing step ran
  EXPECT_EQ(cells(kCorr, 2, 4, 6, 4), "0|50|0|0|0");
}

TEST_F(BlockCommandsTest, AutomapFillsTheFirstMatchingCellYellowUntilClear) {
  f.c.Combo1.select(3);
  f.axes.Combo1_Click();  // load headings 50, 246, 443 ...
  f.map_controls.Check5.value = 1;
  f.automap.Check5_Click();
  grid(kCorr).set_text(0, 1, "9999");  // later axis changes do not reach the snapshot

  struct Case {
    double speed, load, value;
    int row, col;  // 0: no cell
  };
  const Case cases[] = {
      {500, 50, 700, 1, 1},    {749.9, 54.9, 710, 1, 1}, {750, 50, 720, 0, 0},
      {751, 45.1, 725, 1, 2},  {1250.5, 250, 730, 2, 3}, {8249, 3000, 740, 16, 16},
      {8250, 3000, 750, 0, 0}, {4000, 55, 760, 0, 0},    {260, 48, 770, 1, 1},
  };
  for (const Case& c : cases) {
    const unsigned before = grid(kAir).revision();
    f.automap.automap(c.speed, c.load, c.value);
    if (c.row == 0) {
      EXPECT_EQ(grid(kAir).revision(), before) << c.value;
      continue;
    }
    EXPECT_EQ(grid(kAir).text(c.row, c.col), number_text(c.value));
    EXPECT_EQ(grid(kAir).back_color(c.row, c.col), kYellow);
    EXPECT_EQ(grid(kAir).row * 100 + grid(kAir).col, c.row * 100 + c.col);
  }
  EXPECT_EQ(grid(kAir).back_color(2, 2), kWhite);
  f.block_commands.Command16_Click();
  EXPECT_EQ(grid(kAir).back_color(16, 16), kWhite);
  EXPECT_EQ(grid(kAir).text(16, 16), "740");
}

TEST_F(BlockCommandsTest, StatusFramesMarkTheOperatingCellAndFeedAutomap) {
  go_online();
  f.vars.rpmfaktor = 30000000;
  f.c.Combo1.select(3);
  f.axes.Combo1_Click();
  f.map_controls.Check5.value = 1;
  f.automap.Check5_Click();
  f.map_controls.Check2.value = 1;
  auto status = [&](int cell) {
    ReplyFrame frame(kReplyStatus);
    frame.status_word(4, 10000).status_word(8, 1016).byte(13, cell);  // 3000 rpm, 246 Hz in
    fp.comm.arrive_after(0, frame);
    fp.pump.process_events();
  };
  status(0x23);  // row 2 + 1, column 3
  EXPECT_EQ(grid(kCorr).back_color(3, 3), kGreen);
  EXPECT_EQ(grid(kAir).text(2, 6), "246");
  EXPECT_EQ(grid(kAir).back_color(2, 6), kYellow);

  grid(kCorr).set_back_color(3, 3, kRed);  // unchanged cell: no new marking
  status(0x23);
  EXPECT_EQ(grid(kCorr).back_color(3, 3), kRed);
  status(0xF0);  // column 0 shows as column 1
  EXPECT_EQ(grid(kCorr).back_color(3, 3), kWhite);
  EXPECT_EQ(grid(kCorr).back_color(16, 1), kGreen);

  f.map_controls.Check2.value = 0;
  status(0x45);
  EXPECT_EQ(grid(kCorr).back_color(16, 1), kGreen);
  EXPECT_EQ(grid(kCorr).back_color(5, 5), kWhite);
}

}  // namespace
}  // namespace nerit::testing
