// Restore points: what is kept before a write to the controller, under which names, the log
// lines, the newest fifty, and a folder that cannot take them.
#include "files/inj_format.h"
#include "files/restore_points.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "files/tune_file.h"
#include "shell/data_files.h"
#include "shell/fault_boundary.h"
#include "tests/files/inj_golden.h"
#include "tests/link/link_fixture.h"

namespace nerit::testing {
namespace {

using Strings = std::vector<std::string>;

class RestorePointsTest : public LinkFixture {
 protected:
  RestorePointsTest() {
    // Loaded offline: online, the acceleration bars would send block B without waiting.
    write_file_bytes(folder.path() / "t.inj", InjGolden().bytes);
    load();
    go_online();
    answer_like_controller();
    f.c.List1.clear();
  }
  void load() {
    const int connected = std::exchange(f.vars.connected, 0);
    fp.dialogs.expect_file(folder.path() / "t.inj");
    f.settings_file.Laden_Click();
    f.vars.connected = connected;
  }
  Strings backups() const {
    Strings names;
    if (!std::filesystem::exists(f.restore_points.folder())) return names;
    for (const auto& e : std::filesystem::directory_iterator(f.restore_points.folder()))
      names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }
  // A controller with four cylinders, a new injector size and every speed point at 3000 rpm.
  void set_up_axes() {
    memory[0x0252] = 4;
    memory[0x024A] = 1;
    for (int k = 0; k < 16; ++k) memory[0x0280 + 2 * k] = 0x10, memory[0x0281 + 2 * k] = 0x27;
  }
  // Its tune, with every correction cell at 0 %, read into the window.
  void read_controller() {
    set_up_axes();
    for (int a = 0x02A0; a < 0x03A0; ++a) memory[a] = 128;
    f.session.Command12_Click();
    ASSERT_TRUE(f.restore_points.last_read());
  }
  std::filesystem::path backup(const std::string& name) const {
    return f.restore_points.folder() / name;
  }
};

TEST_F(RestorePointsTest, WriteDataWithoutAReadKeepsOnlyTheWrittenTune) {
  f.transfers.Command9_Click();
  EXPECT_EQ(backups(), Strings{"2026-11-15_12-00-00_Write Data to Unit_written.inj"});
  EXPECT_EQ(read_tune_file(backup(backups()[0])), read_tune_file(folder.path() / "t.inj"));
}

TEST_F(RestorePointsTest, TheLogNamesEachRestorePointFirst) {
  f.transfers.Command9_Click();
  ASSERT_FALSE(f.c.List1.items.empty());
  EXPECT_EQ(
      f.c.List1.items[0],
      "Restore point: " + backup("2026-11-15_12-00-00_Write Data to Unit_written.inj").string());
}

TEST_F(RestorePointsTest, AfterAReadTheReadTuneIsKeptBesideTheWrittenOne) {
  read_controller();
  const Tune read = *f.restore_points.last_read();
  load();
  fp.clock.advance(2000);
  f.transfers.Command4_Click(0);
  const Strings names = backups();
  ASSERT_EQ(names.size(), 2u);
  EXPECT_EQ(names[0], "2026-11-15_12-00-0" + names[0].substr(18, 1) + "_Write to EEProm_read.inj");
  EXPECT_EQ(encode_inj(read_tune_file(backup(names[0]))), encode_inj(read));  // no axes in files
  EXPECT_EQ(read_tune_file(backup(names[1])), read_tune_file(folder.path() / "t.inj"));
}

TEST_F(RestorePointsTest, AReadTuneAFileCannotHoldIsLoggedAtTheWrite) {
  set_up_axes();
  f.session.Command12_Click();  // correction bytes 0 read as -101 %
  f.c.List1.clear();
  fp.dialogs.any_box = true;  // the zero airflow cells then stop the write itself
  run_handler(fp.dialogs, [&] { f.transfers.Command9_Click(); });
  EXPECT_EQ(f.c.List1.items.at(0),
            "Restore point of the read tune not saved: Correction map row 1, column 1: -101 "
            "cannot be stored (the file takes -100 to 155).");
}

TEST_F(RestorePointsTest, NothingIsKeptWhenTheWriteDoesNotStart) {
  f.vars.connected = 0;
  f.transfers.Command9_Click();
  EXPECT_TRUE(backups().empty());
}

TEST_F(RestorePointsTest, TwoWritesInOneSecondKeepBothFiles) {
  f.transfers.Command9_Click();
  f.transfers.Command9_Click();
  EXPECT_EQ(backups(), (Strings{"2026-11-15_12-00-00_Write Data to Unit_written-2.inj",
                                "2026-11-15_12-00-00_Write Data to Unit_written.inj"}));
}

TEST_F(RestorePointsTest, OnlyTheNewestFiftyAreKept) {
  std::filesystem::create_directories(f.restore_points.folder());
  for (int n = 0; n < 50; ++n) {
    char name[64];
    std::snprintf(name, sizeof name, "2026-10-%02d_%02d-00-00_Write Data to Unit_written.inj",
                  n / 2 + 1, 8 + n % 2);
    write_file_bytes(backup(name), InjGolden().bytes);
  }
  write_file_bytes(backup("notes.txt"), {1});
  const std::size_t before = backups().size();
  f.transfers.Command9_Click();
  const Strings names = backups();
  EXPECT_EQ(names.size(), before);  // one new restore point, the oldest gone
  EXPECT_EQ(std::count(names.begin(), names.end(), "notes.txt"), 1);
  EXPECT_EQ(
      std::count(names.begin(), names.end(), "2026-10-01_08-00-00_Write Data to Unit_written.inj"),
      0);
  EXPECT_EQ(
      std::count(names.begin(), names.end(), "2026-10-01_09-00-00_Write Data to Unit_written.inj"),
      1);
  EXPECT_EQ(
      std::count(names.begin(), names.end(), "2026-11-15_12-00-00_Write Data to Unit_written.inj"),
      1);
}

TEST_F(RestorePointsTest, AFolderThatCannotBeCreatedIsLoggedAndTheWriteGoesOn) {
  write_file_bytes(folder.path() / "backups", {0});  // a file where the folder would be
  f.transfers.Command9_Click();
  ASSERT_FALSE(f.c.List1.items.empty());
  EXPECT_EQ(f.c.List1.items[0].rfind("Restore point not saved: ", 0), 0u) << f.c.List1.items[0];
  EXPECT_GT(peer.frames.size(), 50u);  // the whole write went out
}

TEST_F(RestorePointsTest, AFirmwareUpdateKeepsTheTuneReadLast) {
  read_controller();
  program.form2.before_update();
  const Strings names = backups();
  ASSERT_EQ(names.size(), 1u);
  EXPECT_NE(names[0].find("_Firmwareupdate_read.inj"), std::string::npos);
}

TEST_F(RestorePointsTest, AFirmwareUpdateWithoutAReadKeepsNothing) {
  program.form2.before_update();
  EXPECT_TRUE(backups().empty());
}

}  // namespace
}  // namespace nerit::testing
