// Copy and paste as tab-separated text, undo and redo, each written through when online.
#include <gtest/gtest.h>

#include "tests/maps/map_fixture.h"

namespace nerit::testing {
namespace {

class EditCommandsTest : public MapFixture {};

TEST_F(EditCommandsTest, CopyAndPasteAsTabSeparatedRows) {
  grid(kCorr).set_text(2, 2, "1");
  grid(kCorr).set_text(3, 3, "-7");
  drag(kCorr, 2, 2, 3, 4);
  EXPECT_EQ(f.edits.copy_block(kCorr), "1\t0\t0\n0\t-7\t0");
  grid(kAir).set_current(1, 2);
  EXPECT_EQ(f.edits.copy_block(kAir), "0");  // the block lies on the other map: current cell
  drag(kCorr, 3, 3, 2, 2);                   // dragged up: the cell alone
  EXPECT_EQ(f.edits.copy_block(kCorr), "-7");

  // Pasted values are clamped, clipped at the edge and each touched row is sent.
  go_online();
  answer_like_controller();
  for (int r = 1; r <= 16; ++r)
    for (int c = 1; c <= 16; ++c) grid(kAir).set_text(r, c, "1000");
  click(kAir, 15, 15);
  type(kAir, "12");  // an open box is dropped, not written
  f.edits.paste_block(kAir, "100\t9000\t7\r\n\t12,5\r\n5\t6\r\n");
  EXPECT_EQ(cells(kAir, 15, 14, 16, 16), "1000 100 5000|1000 1000 20");
  EXPECT_FALSE(box(kAir).visible);
  EXPECT_EQ(peer.addresses(), std::vector<int>({0x560, 0x570, 0x580, 0x590}));
  f.vars.connected = 0;
  click(kCorr, 1, 1);
  f.edits.paste_block(kCorr, "150\t-80\n");
  EXPECT_EQ(cells(kCorr, 1, 1, 1, 3), "100 -50 0");
  EXPECT_EQ(peer.frames.size(), 4u);
}

TEST_F(EditCommandsTest, UndoAndRedoRestoreCommitsAndWriteThemThrough) {
  drag(kCorr, 4, 4, 5, 5);
  type(kCorr, "30\r");
  click(kCorr, 4, 4);
  type(kCorr, "d\r");
  EXPECT_EQ(cells(kCorr, 4, 4, 5, 5), "31 30|30 30");

  go_online();
  answer_like_controller();
  f.edits.undo();
  EXPECT_EQ(cells(kCorr, 4, 4, 5, 5), "30 30|30 30");
  EXPECT_EQ(peer.addresses(), std::vector<int>({0x2D0}));
  f.edits.undo();
  EXPECT_EQ(cells(kCorr, 4, 4, 5, 5), "0 0|0 0");
  f.edits.undo();  // nothing left
  EXPECT_EQ(peer.frames.size(), 3u);
  EXPECT_EQ(hex_bytes(frame_text(2).substr(4, 16)),
            "80 80 80 80 80 80 80 80 80 80 80 80 80 80 80 80");

  f.edits.redo();
  EXPECT_EQ(cells(kCorr, 4, 4, 5, 5), "30 30|30 30");
  // A new commit forgets what could be redone.
  click(kCorr, 1, 1);
  type(kCorr, "5\r");
  f.edits.redo();
  EXPECT_EQ(cells(kCorr, 4, 4, 5, 5), "30 30|30 30");
}

}  // namespace
}  // namespace nerit::testing
