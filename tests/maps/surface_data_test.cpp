// The correction map as the graph window reads it, and when the graph window reads it again.
#include <gtest/gtest.h>

#include "maps/form5.h"
#include "maps/surface_data.h"

namespace nerit {
namespace {

Grid map_grid() {
  Grid g(17, 17);
  for (int i = 1; i <= 16; ++i) {
    g.set_text(0, i, std::to_string(i * 500));
    g.set_text(i, 0, "--");
  }
  g.set_text(3, 0, "40");
  return g;
}

TEST(SurfaceFromGrid, LabelsAreHeadingTextsAndValuesCellsByLoadRowThenRpmColumn) {
  struct Case {
    int row, col;
    const char* text;
    double want;
  };
  const Case cases[] = {{3, 5, "12,5", 12},    {1, 1, "-50", -50}, {16, 16, "100", 100},
                        {16, 1, "7.25", 7.25}, {1, 16, "", 0},     {2, 9, "abc", 0}};
  Grid g = map_grid();
  for (const Case& c : cases) g.set_text(c.row, c.col, c.text);
  const SurfaceData s = surface_from_grid(g);
  for (const Case& c : cases)
    EXPECT_EQ(s.values[static_cast<std::size_t>(c.row - 1)][static_cast<std::size_t>(c.col - 1)],
              c.want)
        << c.row << "," << c.col;
  EXPECT_EQ(s.values[4][2], 0);  // the transposed cell of (3,5) stays empty
  EXPECT_EQ(s.rpm_labels[0] + " " + s.rpm_labels[15], "500 8000");
  EXPECT_EQ(s.load_labels[0] + " " + s.load_labels[2], "-- 40");
}

TEST(Form5, UpdateRereadsTheMapAndKeepsTheCameraGraphResetsIt) {
  Grid g = map_grid();
  Form5 f(g);
  f.Form_Load();
  EXPECT_EQ(f.Command1.caption + " " + f.Command2.caption, "Graph update");
  const unsigned rev = f.revision(), resets = f.camera_resets();
  g.set_text(3, 5, "33");
  f.Command2_Click();
  EXPECT_EQ(f.surface.values[2][4], 33);
  EXPECT_GT(f.revision(), rev);
  EXPECT_EQ(f.camera_resets(), resets);
  g.set_text(0, 1, "600");
  f.Command1_Click();
  EXPECT_EQ(f.surface.rpm_labels[0], "600");
  EXPECT_GT(f.revision(), rev + 1);
  EXPECT_GT(f.camera_resets(), resets);
}

}  // namespace
}  // namespace nerit
