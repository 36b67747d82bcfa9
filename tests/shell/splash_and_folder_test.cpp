// The splash window and where the program keeps its data files.
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/form1.h"
#include "shell/data_files.h"
#include "shell/form4.h"
#include "shell/program_folder.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

TEST(Splash, LoadCentresTheWindowOnTheScreen) {
  struct Case {
    int screen_w, screen_h, left, top;
  };
  const Case cases[] = {
      {19200, 14400, 6450, 5400},
      {28800, 16200, 11250, 6300},
      {4800, 3000, -750, -300},  // screen smaller than the window
  };
  for (const Case& k : cases) {
    testing::FakeWindows windows;
    Form4 splash(windows);
    splash.Form_Load(k.screen_w, k.screen_h);
    EXPECT_EQ(splash.left, k.left) << k.screen_w;
    EXPECT_EQ(splash.top, k.top) << k.screen_h;
  }
}

TEST(Splash, TimerUnloadsItOnceAfterTheShowTime) {
  testing::FakePlatform fp;
  testing::TempFolder folder;
  Program program(fp.platform, folder.path());
  Form4& splash = program.form4;
  splash.Form_Load(19200, 14400);
  EXPECT_TRUE(splash.Timer1.enabled());

  fp.clock.advance(Form4::kShowMs - 1);
  EXPECT_TRUE(fp.windows.calls.empty());
  fp.clock.advance(1);
  EXPECT_EQ(fp.windows.calls, (Strings{"unload Form4"}));
  EXPECT_FALSE(splash.Timer1.enabled());

  fp.clock.advance(10'000);
  EXPECT_EQ(fp.timers.ticks(splash.Timer1), 1);
  EXPECT_EQ(fp.windows.calls.size(), 1u);
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

TEST(ProgramFolder, DataDirOptionWinsAndIsCreated) {
  testing::TempFolder temp;
  const fs::path exe = temp.path() / "exe";
  fs::create_directories(exe);
  const fs::path chosen = temp.path() / "given" / "data";
  EXPECT_EQ(choose_program_folder({exe, temp.path() / "user", chosen}), chosen);
  EXPECT_TRUE(fs::is_directory(chosen));
  EXPECT_FALSE(fs::exists(temp.path() / "user"));
}

TEST(ProgramFolder, WritableExecutableFolderIsUsed) {
  testing::TempFolder temp;
  const fs::path exe = temp.path() / "exe";
  fs::create_directories(exe);
  EXPECT_EQ(choose_program_folder({exe, temp.path() / "user", std::nullopt}), exe);
  EXPECT_FALSE(fs::exists(temp.path() / "user"));
  EXPECT_EQ(std::vector<fs::path>(fs::directory_iterator(exe), {}).size(), 0u);  // probe gone
}

TEST(ProgramFolder, ReadOnlyExecutableFolderFallsBackToPerUserFolder) {
  testing::TempFolder temp;
  fs::path exe = temp.path() / "exe";
  fs::create_directories(exe);
  fs::permissions(exe, fs::perms::owner_read | fs::perms::owner_exec);
  if (folder_is_writable(exe)) {
    // Running as root: a read-only mode does not stop writing; /proc still refuses files.
    fs::permissions(exe, fs::perms::owner_all);
    exe = "/proc";
    if (!fs::is_directory(exe) || folder_is_writable(exe))
      GTEST_SKIP() << "no folder here refuses to be written";
  }
  const fs::path user = temp.path() / "home" / ".local" / "nerit";
  EXPECT_EQ(choose_program_folder({exe, user, std::nullopt}), user);
  EXPECT_TRUE(fs::is_directory(user));
  if (exe != "/proc") fs::permissions(exe, fs::perms::owner_all);
}

TEST(ProgramFolder, DataFileNamesLandInsideTheFolder) {
  const fs::path pfad = "/data/nerit";
  EXPECT_EQ(data_file(pfad, "\\Pressure.raw"), pfad / "Pressure.raw");
  EXPECT_EQ(data_file(pfad, "\\PressureSensor.dat"), pfad / "PressureSensor.dat");
}

}  // namespace
}  // namespace nerit
