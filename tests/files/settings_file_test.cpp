// "Speichern" and "Laden": the dialogs, the exact bytes a save writes and keeps, what a load
// puts into the window and the log, and the files that change nothing.
#include "files/settings_file.h"

#include <gtest/gtest.h>

#include "files/data_log_format.h"
#include "shell/data_files.h"
#include "shell/fault_boundary.h"
#include "tests/files/inj_golden.h"
#include "tests/link/link_fixture.h"

namespace nerit::testing {
namespace {

using Strings = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

class SettingsFileTest : public LinkFixture {
 protected:
  SettingsFileTest() {
    for (int raw = 0; raw < 256; ++raw)
      f.c.pressure_table[static_cast<std::size_t>(raw)] = static_cast<std::int16_t>(raw + 10);
    golden_file = folder.path() / "golden.inj";
    write_file_bytes(golden_file, InjGolden().bytes);
  }
  // Runs a handler as the window does: a failure becomes its box.
  void run(const std::function<void()>& handler) { run_handler(fp.dialogs, handler); }
  void load(const std::filesystem::path& file) {
    fp.dialogs.expect_file(file);
    run([&] { f.settings_file.Laden_Click(); });
  }
  void save(const std::filesystem::path& file) {
    fp.dialogs.expect_file(file);
    run([&] { f.settings_file.Speichern_Click(); });
  }
  Bytes bytes(const std::filesystem::path& file) { return read_file_bytes(file).value(); }
  std::filesystem::path golden_file;
};

TEST_F(SettingsFileTest, SavingWithoutALoadTypeShowsTheGuardAndNoDialog) {
  fp.dialogs.expect("Fehler|Information|Ok|Keine Lastgröße gewählt!");
  f.settings_file.Speichern_Click();
  EXPECT_TRUE(fp.dialogs.file_requests.empty());
}

TEST_F(SettingsFileTest, BothDialogsStartInTheProgramFolderWithTheInjFilter) {
  f.c.Combo1.select(0);
  save({});
  load({});
  ASSERT_EQ(fp.dialogs.file_requests.size(), 2u);
  const auto& s = fp.dialogs.file_requests[0];
  const auto& o = fp.dialogs.file_requests[1];
  EXPECT_EQ(s.kind, FileDialogRequest::Kind::Save);
  EXPECT_EQ(s.title, "Save");
  EXPECT_EQ(o.kind, FileDialogRequest::Kind::Open);
  EXPECT_EQ(o.title, "Open");
  EXPECT_EQ(s.folder, folder.path());
  EXPECT_EQ(o.folder, folder.path());
  EXPECT_EQ(s.filter, "Nerit Files (*.inj)|*.inj");
  EXPECT_EQ(o.filter, "Nerit Files (*.inj)|*.inj");
}

TEST_F(SettingsFileTest, ACancelledDialogChangesNothing) {
  f.c.Combo1.select(0);
  const std::string caption = f.c.caption;
  save({});
  load({});
  EXPECT_EQ(f.c.caption, caption);
  EXPECT_TRUE(f.c.List1.items.empty());
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST_F(SettingsFileTest, ALoadWritesItsSummaryToTheLog) {
  f.c.List1.add_item("old line");
  load(golden_file);
  EXPECT_EQ(
      f.c.List1.items,
      (Strings{"Load File: " + golden_file.string(), "Input: TPS / %", "Pressure Sensor: MPX4250",
               "TPS min / max: 25 / 230", "Injoffset in / out: 1000 / 750",
               "Injsize alt / neu: 440 / 550", "Boostcontroll: 1", "Boost Start: 110 kPa",
               "Boost Set: 50 %", "Anzahl Zylinder : #4", "Injchannels : #15"}));
}

TEST_F(SettingsFileTest, ASensorOtherThan1AddsNoSensorLine) {
  InjGolden g;
  g.put(17, 1, 2);
  write_file_bytes(golden_file, g.bytes);
  load(golden_file);
  for (const auto& line : f.c.List1.items)
    EXPECT_EQ(line.find("Pressure Sensor"), std::string::npos);
  EXPECT_EQ(f.vars.drucksensor, 2);
}

TEST_F(SettingsFileTest, ALoadFillsTheVariables) {
  load(golden_file);
  EXPECT_EQ(f.vars.rpmfaktor, 7500000);
  EXPECT_EQ(f.c.Combo1.list_index, 0);
  EXPECT_EQ(f.vars.tps_min, 25);
  EXPECT_EQ(f.vars.tps_max, 230);
  EXPECT_EQ(f.vars.injalt, 440);
  EXPECT_EQ(f.vars.injneu, 550);
  EXPECT_EQ(f.vars.injsizecorr, 102);
  EXPECT_EQ(f.vars.zylinder, 4);
  EXPECT_EQ(f.vars.injchannels, 15);
  EXPECT_EQ(f.vars.seq_faktor, 8);
  EXPECT_EQ(f.vars.airflowtype, 2);
  EXPECT_EQ(f.vars.aoutmax, 204);
}

TEST_F(SettingsFileTest, ALoadFillsThePanels) {
  load(golden_file);
  const PanelControls& pc = f.panel_controls;
  EXPECT_TRUE(pc.OptionAnalog.value);
  EXPECT_FALSE(pc.OptionFrequency.value);
  EXPECT_EQ(pc.Combo3.list_index, 2);
  EXPECT_EQ(pc.Text1.text, "4000");  // floor(204 x 5000 / 255)
  EXPECT_EQ(pc.Check3.value, 1);
  EXPECT_EQ(pc.boost_start_text.text, "110");  // the pressure table at raw 100
  EXPECT_EQ(pc.boost_set_text.text, "50");     // floor(128 / 2.55)
  EXPECT_EQ(f.c.Check6.value, 1);
  EXPECT_EQ(f.c.Check4.value, 1);
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(pc.HScroll1[i].value, (std::array<int, 6>{3, 120, 40, 5, 90, 17}[i])) << i;
    EXPECT_EQ(pc.Label8[i].caption, std::to_string(pc.HScroll1[i].value)) << i;
  }
  EXPECT_EQ(f.c.accel_param[2], 40);
}

TEST_F(SettingsFileTest, TheClampIsRoundedDown) {
  InjGolden g;
  g.put(30, 1, 127);  // 2490.19 mV
  write_file_bytes(golden_file, g.bytes);
  load(golden_file);
  EXPECT_EQ(f.panel_controls.Text1.text, "2490");
}

TEST_F(SettingsFileTest, ALoadFillsBothGridsAxesAndRpmPoints) {
  load(golden_file);
  for (Grid* g : {&f.c.MSFlexGrid2, &f.c.MSFlexGrid3}) {
    EXPECT_EQ(g->text(0, 1), "500");
    EXPECT_EQ(g->text(0, 16), "8000");
    EXPECT_EQ(g->text(2, 0), "6");
    EXPECT_EQ(g->text(16, 0), "100");
  }
  EXPECT_EQ(f.c.rpm_points[1], 15000);  // 7500000 / 500
  EXPECT_EQ(f.c.rpm_points[16], 938);   // 937.5 to even
  EXPECT_EQ(f.c.MSFlexGrid2.text(4, 6), std::to_string(InjGolden::correction(3, 5)));
  EXPECT_EQ(f.c.MSFlexGrid3.text(16, 16), std::to_string(InjGolden::airflow(15, 15)));
}

TEST_F(SettingsFileTest, TheLoadTypeRoutineSetsTheLoadAxisOfTheLoadedType) {
  InjGolden g;
  g.put(80 + 2 * 3, 2, 21);  // a load heading the TPS axis does not have
  write_file_bytes(golden_file, g.bytes);
  load(golden_file);
  EXPECT_EQ(f.c.MSFlexGrid2.text(4, 0), "20");
  EXPECT_EQ(f.c.MSFlexGrid3.text(4, 0), "20");
}

TEST_F(SettingsFileTest, ALoadSendsNothingOffline) {
  load(golden_file);
  EXPECT_TRUE(peer.frames.empty());
}

TEST_F(SettingsFileTest, ALoadWhileConnectedSendsBlockBForEachMovedBar) {
  go_online();
  load(golden_file);
  // Six bars moved: each change handler sends settings block B (0x0B at 0x0250).
  ASSERT_EQ(peer.frames.size(), 6u);
  for (const auto& fr : peer.frames) {
    EXPECT_EQ(fr.code(), kCmdSramWrite);
    EXPECT_EQ(fr.address(), 0x0250);
  }
  // By the last one the bars' values are all in.
  const std::string& last = peer.frames.back().bytes;
  EXPECT_EQ(static_cast<std::uint8_t>(last[4 + 5]), 3);
  EXPECT_EQ(static_cast<std::uint8_t>(last[4 + 9]), 17);
}

TEST_F(SettingsFileTest, ASaveOfTheLoadedGoldenFileGivesItsBytes) {
  load(golden_file);
  const auto copy = folder.path() / "copy.inj";
  save(copy);
  EXPECT_EQ(bytes(copy), InjGolden().bytes);
}

TEST_F(SettingsFileTest, SaveLoadSaveIsByteIdentical) {
  load(golden_file);
  f.c.MSFlexGrid2.set_text(1, 1, "-100");
  f.c.MSFlexGrid2.set_text(1, 2, "155");
  f.c.MSFlexGrid3.set_text(1, 1, "-32768");
  f.vars.injoffset_in = 2000;
  const auto first = folder.path() / "first.inj";
  const auto second = folder.path() / "second.inj";
  save(first);
  load(first);
  save(second);
  EXPECT_EQ(bytes(first), bytes(second));
  EXPECT_EQ(bytes(first)[112], 0);
  EXPECT_EQ(bytes(first)[113], 255);
}

TEST_F(SettingsFileTest, SaveRoundsCellTextsToEven) {
  load(golden_file);
  f.c.MSFlexGrid2.set_text(1, 1, "2.5");
  f.c.MSFlexGrid3.set_text(1, 1, "3.5");
  const auto file = folder.path() / "round.inj";
  save(file);
  EXPECT_EQ(bytes(file)[112], 102);
  EXPECT_EQ(bytes(file)[368], 4);
}

TEST_F(SettingsFileTest, SavingOverAnOldFileKeepsItsUnwrittenBytes) {
  load(golden_file);
  Bytes old(900, 0xAB);
  const auto file = folder.path() / "old.inj";
  write_file_bytes(file, old);
  save(file);
  const Bytes b = bytes(file);
  ASSERT_EQ(b.size(), 900u);
  for (std::size_t i : {4u, 15u, 44u, 47u, 880u, 899u}) EXPECT_EQ(b[i], 0xAB) << i;
  EXPECT_EQ(b[16], 0);
}

TEST_F(SettingsFileTest, ACellAbove155LeavesTheOldFileByteIdentical) {
  load(golden_file);
  const Bytes before = bytes(golden_file);
  const std::string caption = f.c.caption;
  f.c.MSFlexGrid2.set_text(5, 9, "156");
  fp.dialogs.expect(
      "Error|Critical|Ok|Correction map row 5, column 9: 156 cannot be stored (the file takes "
      "-100 to 155).");
  save(golden_file);
  EXPECT_EQ(bytes(golden_file), before);
  EXPECT_EQ(f.c.caption, caption);
}

TEST_F(SettingsFileTest, AnAirflowCellPastSixteenBitsIsNamed) {
  load(golden_file);
  f.c.MSFlexGrid3.set_text(2, 3, "40000");
  fp.dialogs.expect(
      "Error|Critical|Ok|Airflow map row 2, column 3: 40000 cannot be stored (the file takes "
      "-32768 to 32767).");
  save(folder.path() / "x.inj");
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "x.inj"));
}

TEST_F(SettingsFileTest, ASaveLeavesNoTemporaryFileBehind) {
  load(golden_file);
  save(folder.path() / "new.inj");
  std::vector<std::string> names;
  for (const auto& e : std::filesystem::directory_iterator(folder.path()))
    names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (Strings{"RecentFiles.txt", "golden.inj", "new.inj"}));
}

TEST_F(SettingsFileTest, AShortFileChangesNothingInTheWindow) {
  Bytes b = InjGolden().bytes;
  b.resize(600);
  write_file_bytes(golden_file, b);
  f.c.List1.add_item("kept");
  const std::string caption = f.c.caption;
  fp.dialogs.expect(
      "Error|Critical|Ok|golden.inj is no settings file: The file holds 600 bytes; a settings "
      "file has 880.");
  load(golden_file);
  EXPECT_EQ(f.c.List1.items, Strings{"kept"});
  EXPECT_EQ(f.c.caption, caption);
  EXPECT_EQ(f.c.Combo1.list_index, -1);
  EXPECT_EQ(f.c.MSFlexGrid2.text(0, 1), "500");
  EXPECT_EQ(f.c.MSFlexGrid2.text(1, 1), "0");
}

TEST_F(SettingsFileTest, ABarValueOutsideItsRangeChangesNothing) {
  InjGolden g;
  g.put(37, 1, 9);  // throttle filter runs 0..8
  write_file_bytes(golden_file, g.bytes);
  fp.dialogs.expect("Error|Critical|Ok|Acceleration parameter 0 is 9; its bar takes 0 to 8.");
  load(golden_file);
  EXPECT_TRUE(f.c.List1.items.empty());
  EXPECT_EQ(f.panel_controls.HScroll1[0].value, 2);
}

}  // namespace
}  // namespace nerit::testing
