// The floating editors: placement, accepted characters, clamps, moves with their wraps, the
// step keys, the block commit and the rows written through to a connected controller.
#include <gtest/gtest.h>

#include "tests/maps/map_fixture.h"

namespace nerit::testing {
namespace {

class CellEditorTest : public MapFixture {
 protected:
  std::string data_of(std::size_t i) const { return hex_bytes(frame_text(i).substr(4, 16)); }
};

TEST_F(CellEditorTest, PressPlacesTheBoxOverTheCellAndKeepsWhatWasTypedBefore) {
  grid(kCorr).set_text(5, 3, "12,5");
  grid(kCorr).set_text(6, 6, "8");
  click(kCorr, 2, 2);
  type(kCorr, "33");
  press(kCorr, 5, 3);
  EXPECT_EQ(grid(kCorr).text(2, 2), "33");
  const TextBox& b = box(kCorr);
  EXPECT_TRUE(b.visible && b.has_focus);
  EXPECT_EQ(b.text, "12");
  EXPECT_EQ(std::pair(b.sel_start, b.sel_length), std::pair(0, 2));
  // Cell size; top from the grid, left from the frame and the grid (twips).
  EXPECT_EQ(std::vector<int>({b.left, b.top, b.width, b.height}),
            std::vector<int>({120 + 120 + 3 * 550, 240 + 5 * 240, 550, 240}));
  EXPECT_EQ(f.maps.block.start_row * 100 + f.maps.block.start_col, 503);

  press(kAir, 1, 16);
  EXPECT_EQ(box(kAir).left, 9840 + 120 + 16 * 550);
  EXPECT_FALSE(box(kCorr).has_focus);

  press(kCorr, 7, 7, kRightButton);
  EXPECT_TRUE(f.map_controls.Frame6.visible);
  EXPECT_EQ(f.map_controls.Frame6.left * 1000 + f.map_controls.Frame6.top, 240 * 1000 + 1200);
  EXPECT_EQ(grid(kCorr).row * 100 + grid(kCorr).col, 503);  // a right press moves nothing
  press(kCorr, 6, 6);
  EXPECT_FALSE(f.map_controls.Frame6.visible);
  EXPECT_EQ(box(kCorr).text, "8");
}

TEST_F(CellEditorTest, KeysOfBothEditors) {
  struct Case {
    MapId map;
    const char *start, *keys, *box_after, *cell_after;  // start: text of cell (1, 1)
  };
  const Case cases[] = {
      {kCorr, "0", "1505", "1005", "0"},  // "150" became "100" before the 5 arrived
      {kCorr, "0", "150\r", "0", "100"}, {kCorr, "0", "-70\r", "0", "-50"},
      {kCorr, "0", "12,5\r", "0", "12"}, {kCorr, "0", "1x.2", "12", "0"},
      {kCorr, "7", "dd", "9", "7"},      {kCorr, "7", "aaa", "4", "7"},
      {kCorr, "0", "45\b\r", "0", "4"},  {kAir, "0", "-5,0", "50", "0"},
      {kAir, "0", "9000", "9000", "0"},  {kAir, "0", "9000\r", "0", "5000"},
      {kAir, "0", "5\r", "0", "20"},
  };
  for (const Case& c : cases) {
    f.editor.close_box(c.map);
    grid(c.map).set_text(1, 1, c.start);
    click(c.map, 1, 1);
    type(c.map, c.keys);
    EXPECT_EQ(box(c.map).text, c.box_after) << c.keys;
    EXPECT_EQ(grid(c.map).text(1, 1), c.cell_after) << c.keys;
  }
}

TEST_F(CellEditorTest, ArrowsWriteTheBoxMoveAndWrap) {
  struct Case {
    int row, col;
    const char* keys;
    int to_row, to_col;
  };
  const Case cases[] = {{3, 16, ">", 3, 1}, {3, 1, "<", 3, 16}, {1, 4, "^", 16, 4},
                        {16, 4, "v", 1, 4}, {5, 5, ">", 5, 6},  {5, 5, "v", 6, 5},
                        {2, 4, "^", 1, 4}};
  for (const Case& c : cases) {
    grid(kCorr).set_text(c.to_row, c.to_col, "42");
    click(kCorr, c.row, c.col);
    type(kCorr, std::string("3,5") + c.keys);
    // The box's text as it stands goes into the cell it leaves and, as the box is placed again,
    // into the new cell, which then shows as its number.
    EXPECT_EQ(grid(kCorr).text(c.row, c.col), "3,5") << c.keys;
    EXPECT_EQ(grid(kCorr).text(c.to_row, c.to_col), "3,5") << c.keys;
    EXPECT_EQ(grid(kCorr).row * 100 + grid(kCorr).col, c.to_row * 100 + c.to_col) << c.keys;
    EXPECT_EQ(box(kCorr).text, "3");
    EXPECT_EQ(box(kCorr).sel_length, 1);
    EXPECT_EQ(f.maps.block.start_row * 100 + f.maps.block.start_col, c.to_row * 100 + c.to_col);
  }
}

// The block's end stays where the mouse released it: Enter after a move writes from the new
// start to the old end.
TEST_F(CellEditorTest, AMoveKeepsTheBlockEndSoEnterWritesFromTheNewStart) {
  click(kCorr, 8, 8);
  type(kCorr, "1<2\r");
  EXPECT_EQ(cells(kCorr, 8, 6, 8, 9), "0 2 2 0");
  click(kCorr, 8, 8);
  type(kCorr, "1>2\r");  // the new start lies past the end: nothing written, the carry stays
  EXPECT_EQ(cells(kCorr, 8, 8, 8, 10), "1 1 0");
  drag(kCorr, 2, 2, 3, 3);
  type(kCorr, "5^");  // up from row 2: start (1, 2), end (3, 3)
  type(kCorr, "6\r");
  EXPECT_EQ(cells(kCorr, 1, 2, 3, 3), "6 6|6 6|6 6");
}

TEST_F(CellEditorTest, HeadingsClampOnEnterByTheirRangeAndNeverSend) {
  go_online();
  answer_like_controller();
  f.axes.Drehzahlpunkte_Click();
  f.axes.Lastpunke_Click();
  struct Case {
    int load_type, row, col;
    const char *keys, *cell_after;
  };
  const Case cases[] = {
      {0, 0, 2, "9000\r", "8000"}, {0, 0, 2, "100\r", "500"},   {0, 0, 2, "9000>", "9000"},
      {0, 3, 0, "150\r", "100"},   {1, 3, 0, "400\r", "300"},   {2, 3, 0, "6000\r", "5000"},
      {3, 3, 0, "10\r", "50"},     {3, 3, 0, "4000\r", "3000"}, {-1, 3, 0, "99999\r", "99999"},
  };
  for (const Case& c : cases) {
    f.c.Combo1.select(c.load_type);
    click(kCorr, c.row, c.col);
    type(kCorr, c.keys);
    EXPECT_EQ(grid(kCorr).text(c.row, c.col), c.cell_after) << c.keys << " " << c.load_type;
  }
  EXPECT_TRUE(peer.frames.empty());
}

TEST_F(CellEditorTest, EnterWritesTheDraggedBlockOnlyWhenItRunsDownAndRight) {
  drag(kCorr, 2, 3, 4, 5);
  type(kCorr, "7\r");
  const char* block = "0 0 0 0 0|0 7 7 7 0|0 7 7 7 0|0 7 7 7 0|0 0 0 0 0";
  EXPECT_EQ(cells(kCorr, 1, 2, 5, 6), block);
  const SelectedBlock& b = f.maps.block;
  EXPECT_EQ(std::vector<int>({b.start_row, b.start_col, b.end_row, b.end_col}),
            std::vector<int>({2, 3, 2, 3}));
  EXPECT_EQ(grid(kCorr).row * 100 + grid(kCorr).col, 203);
  EXPECT_FALSE(box(kCorr).visible);

  go_online();
  answer_like_controller();
  for (auto [r1, c1] : {std::pair{2, 5}, std::pair{4, 2}, std::pair{1, 1}}) {
    drag(kCorr, 3, 4, r1, c1);  // up, left or both
    type(kCorr, "9\r");
  }
  EXPECT_EQ(cells(kCorr, 1, 2, 5, 6), block);
  // Only the block dragged left but down sends: rows 3 and 4, as they stand.
  EXPECT_EQ(peer.addresses(), std::vector<int>({0x2C0, 0x2D0}));
}

TEST_F(CellEditorTest, OnlineCommitsSendTheirRowsEncodedEachAfterTheLastAnswer) {
  go_online();
  answer_like_controller();
  const char* values[] = {"-50", "-25", "0", "50", "100"};
  for (int k = 0; k < 5; ++k) {
    click(kCorr, 16, k + 1);
    type(kCorr, std::string(values[k]) + "\r");
  }
  EXPECT_EQ(peer.addresses(), std::vector<int>(5, 0x390));
  EXPECT_EQ(data_of(4), "40 60 80 C0 FF 80 80 80 80 80 80 80 80 80 80 80");

  for (int r = 1; r <= 16; ++r)
    for (int c = 1; c <= 16; ++c) grid(kAir).set_text(r, c, "1000");
  grid(kAir).set_text(3, 9, "5000");
  drag(kAir, 2, 1, 4, 1);
  type(kAir, "20\r");
  ASSERT_EQ(peer.frames.size(), 11u);
  const std::vector<int> addresses = peer.addresses();
  EXPECT_EQ(std::vector<int>(addresses.begin() + 5, addresses.end()),
            std::vector<int>({0x3C0, 0x3D0, 0x3E0, 0x3F0, 0x400, 0x410}));
  EXPECT_EQ(hex_bytes(frame_text(5)),
            "55 0B 03 C0 D4 30 FA 00 FA 00 FA 00 FA 00 FA 00 FA 00 FA 00 00 0D");
  EXPECT_EQ(data_of(8), "32 00 FA 00 FA 00 FA 00 FA 00 FA 00 FA 00 FA 00");
  for (std::size_t i = 6; i < 11; ++i)  // each frame waited for the answer to the one before
    EXPECT_EQ(peer.frames[i].at_ms, peer.frames[i - 1].at_ms + peer.delay_ms);
  EXPECT_TRUE(f.c.Timer3.enabled());
  EXPECT_EQ(f.link.write_addr, 0x410);

  f.vars.airflowtype = 1;  // voltage output
  click(kAir, 3, 9);
  type(kAir, "\r");
  EXPECT_EQ(data_of(12), "FF 00 33 00 33 00 33 00 33 00 33 00 33 00 33 00");

  f.vars.connected = 0;  // offline: the grid only
  click(kCorr, 16, 6);
  type(kCorr, "10\r");
  EXPECT_EQ(grid(kCorr).text(16, 6), "10");
  EXPECT_EQ(peer.frames.size(), 13u);
}

}  // namespace
}  // namespace nerit::testing
