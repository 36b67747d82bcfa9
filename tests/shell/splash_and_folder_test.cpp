// The splash window and where the program keeps its data files.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/form1.h"
#include "shell/data_files.h"
#include "shell/form4.h"
#include "shell/program_folder.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

namespace fs = std::filesystem;

TEST(Splash, LoadCentresTheWindowAndItsTimerUnloadsItOnce) {
  // Screen sizes in twips; a screen smaller than the window puts it off the left and top.
  for (auto [w, h, left, top] :
       {std::array{19200, 14400, 6450, 5400}, std::array{28800, 16200, 11250, 6300},
        std::array{4800, 3000, -750, -300}}) {
    testing::FakePlatform fp;
    testing::TempFolder folder;
    Program program(fp.platform, folder.path());
    Form4& splash = program.form4;
    splash.Form_Load(w, h);
    EXPECT_EQ(splash.left, left) << w;
    EXPECT_EQ(splash.top, top) << h;
    fp.clock.advance(Form4::kShowMs - 1);
    EXPECT_TRUE(fp.windows.calls.empty());
    fp.clock.advance(10'000);
    EXPECT_EQ(fp.windows.calls, std::vector<std::string>{"unload Form4"});
    EXPECT_EQ(fp.timers.ticks(splash.Timer1), 1);
    EXPECT_FALSE(splash.Timer1.enabled());
  }
}

TEST(ProgramFolder, DataDirOptionThenWritableExecutableFolderThenPerUserFolder) {
  testing::TempFolder temp;
  fs::path exe = temp.path() / "exe";
  const fs::path user = temp.path() / "home" / ".local" / "nerit";
  const fs::path chosen = temp.path() / "given" / "data";
  fs::create_directories(exe);
  EXPECT_EQ(choose_program_folder({exe, user, chosen}), chosen);
  EXPECT_TRUE(fs::is_directory(chosen));
  EXPECT_EQ(choose_program_folder({exe, user, std::nullopt}), exe);
  EXPECT_FALSE(fs::exists(user));
  EXPECT_TRUE(fs::is_empty(exe));  // the write probe is gone
  fs::permissions(exe, fs::perms::owner_read | fs::perms::owner_exec);
  if (folder_is_writable(exe)) {
    // Running as root: a read-only mode does not stop writing; /proc still refuses files.
    fs::permissions(exe, fs::perms::owner_all);
    exe = "/proc";
    if (!fs::is_directory(exe) || folder_is_writable(exe))
      GTEST_SKIP() << "no folder here refuses to be written";
  }
  EXPECT_EQ(choose_program_folder({exe, user, std::nullopt}), user);
  EXPECT_TRUE(fs::is_directory(user));
  if (exe != "/proc") fs::permissions(exe, fs::perms::owner_all);
}

TEST(ProgramFolder, DataFileNamesLandInsideTheFolder) {
  EXPECT_EQ(data_file("/data/nerit", "\\Pressure.raw"), fs::path("/data/nerit/Pressure.raw"));
  EXPECT_EQ(data_file("/data/nerit", "/PressureSensor.dat"),
            fs::path("/data/nerit/PressureSensor.dat"));
}

}  // namespace
}  // namespace nerit
