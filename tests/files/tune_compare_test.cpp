// Comparing the window's tune with a file: cell counts, the largest change, the settings that
// differ, and a window that stays as it was.
#include "files/tune_compare.h"

#include <gtest/gtest.h>

#include "files/inj_format.h"
#include "shell/data_files.h"
#include "shell/fault_boundary.h"
#include "tests/files/inj_golden.h"
#include "tests/link/link_fixture.h"

namespace nerit::testing {
namespace {

using Strings = std::vector<std::string>;

Tune golden() {
  return decode_inj(InjGolden().bytes);
}

TEST(TuneCompare, CellsAreCountedWithTheLargestChangeAndItsCell) {
  Tune a = golden(), b = golden();
  b.correction[0][0] += 5;
  b.correction[4][9] -= 12;
  b.airflow[15][0] += 1;
  const TuneComparison c = compare_tunes(a, b);
  EXPECT_EQ(c.correction.changed, 2);
  EXPECT_EQ(c.correction.largest, 12);
  EXPECT_TRUE(c.correction.differs[4][9]);
  EXPECT_FALSE(c.correction.differs[4][8]);
  EXPECT_EQ(comparison_summary(c)[0],
            "Correction map: 2 cells differ, largest change 12 (row 5, column 10)");
  EXPECT_EQ(comparison_summary(c)[1],
            "Airflow map: 1 cell differs, largest change 1 (row 16, column 1)");
}

TEST(TuneCompare, SettingsAndHeadingsThatDifferAreListedWithBothValues) {
  Tune a = golden(), b = golden();
  b.tps_max = 200;
  b.rpm_headings[2] = 1600;
  const TuneComparison c = compare_tunes(a, b);
  ASSERT_EQ(c.settings.size(), 2u);
  EXPECT_EQ(comparison_summary(c)[2], "TPS max: 230 here, 200 in the file");
  EXPECT_EQ(comparison_summary(c)[3], "RPM heading 3: 1500 here, 1600 in the file");
}

class CompareFileTest : public LinkFixture {};

TEST_F(CompareFileTest, ComparingShowsTheDifferencesAndChangesNothing) {
  write_file_bytes(folder.path() / "a.inj", InjGolden().bytes);
  fp.dialogs.expect_file(folder.path() / "a.inj");
  f.settings_file.Laden_Click();
  f.c.MSFlexGrid2.set_text(3, 3, "77");
  const std::string caption = f.c.caption;
  const auto log = f.c.List1.items;
  std::optional<Comparison> shown;
  f.compare_file.show = [&](const Comparison& c) { shown = c; };
  fp.dialogs.expect_file(folder.path() / "a.inj");
  f.compare_file.compare_Click();
  ASSERT_TRUE(shown);
  EXPECT_EQ(shown->diff.correction.changed, 1);
  EXPECT_TRUE(shown->diff.correction.differs[2][2]);
  EXPECT_EQ(shown->file, folder.path() / "a.inj");
  EXPECT_EQ(f.c.MSFlexGrid2.text(3, 3), "77");
  EXPECT_EQ(f.c.caption, caption);
  EXPECT_EQ(f.c.List1.items, log);
  EXPECT_EQ(fp.dialogs.file_requests.back().title, "Compare with file");
}

TEST_F(CompareFileTest, AFileThatIsNoTuneIsAnErrorBox) {
  f.c.Combo1.select(0);
  write_file_bytes(folder.path() / "short.inj", {1, 2, 3});
  bool shown = false;
  f.compare_file.show = [&](const Comparison&) { shown = true; };
  fp.dialogs.expect_file(folder.path() / "short.inj");
  fp.dialogs.expect(
      "Error|Critical|Ok|short.inj is no settings file: The file holds 3 bytes; a settings file "
      "has 880.");
  run_handler(fp.dialogs, [&] { f.compare_file.compare_Click(); });
  EXPECT_FALSE(shown);
}

}  // namespace
}  // namespace nerit::testing
