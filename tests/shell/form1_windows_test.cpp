// The base-settings menu, closing the main window, the splash window, and where the program
// keeps its data files.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/form1.h"
#include "shell/data_files.h"
#include "shell/errors.h"
#include "shell/form4.h"
#include "shell/program_folder.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

// Each box as "box" among the window calls, to see which came first.
struct OrderedDialogs : testing::FakeDialogs {
  explicit OrderedDialogs(testing::FakeWindows& w) : windows(w) {}
  using FakeDialogs::message_box;
  MsgAnswer message_box(const MessageBoxRequest& request) override {
    windows.calls.push_back("box");
    return FakeDialogs::message_box(request);
  }
  testing::FakeWindows& windows;
};

TEST(Form1BaseSettings, OfflineWarnsBeforeEveryShowConnectedJustShows) {
  for (int connected : {0, 1}) {
    testing::FakePlatform fp;
    OrderedDialogs dialogs(fp.windows);
    Platform platform{fp.comm, fp.timers, fp.pump,    dialogs,
                      fp.wall, fp.locale, fp.windows, fp.ports};
    testing::TempFolder folder;
    Form1 form(platform, folder.path());
    form.Form_Load();
    form.vars.connected = connected;
    const std::string note =
        "Nerit|Information|Ok|Änderungen werden nicht automatisch übernommen,\nda der Nerit "
        "offline ist. Werte müssen mit 'Write Data to Unit' manuell übertragen werden!";
    if (!connected) dialogs.expect(note), dialogs.expect(note);
    form.shell.Grundeinstellungen_Click();
    form.shell.Grundeinstellungen_Click();
    EXPECT_EQ(fp.windows.calls, (connected ? Strings{"show Form3", "show Form3"}
                                           : Strings{"box", "show Form3", "box", "show Form3"}));
    EXPECT_EQ(dialogs.boxes(), Strings(connected ? 0 : 2, note));
  }
}

TEST(Form1Unload, UnloadsEveryWindowEndsTheProgramAndWritesNothing) {
  testing::FakePlatform fp;
  testing::TempFolder folder;
  folder.write("Pressure.raw", std::vector<unsigned char>(512, 0x11));
  folder.write("PressureSensor.dat", {10, 11, 11, 12});
  Program program(fp.platform, folder.path());
  Form1& form = program.form1;
  form.Form_Load();
  form.shell.Form_Activate();
  auto files = [&] {
    std::map<fs::path, fs::file_time_type> out;
    for (const auto& e : fs::directory_iterator(folder.path())) out[e.path()] = e.last_write_time();
    return out;
  };
  const auto before = files();
  form.shell.Form_Unload();
  EXPECT_EQ(fp.windows.calls,
            (Strings{"unload Form2", "unload Form3", "unload Form4", "unload Form5", "end"}));
  EXPECT_EQ(files(), before);
  EXPECT_TRUE(fp.dialogs.shown.empty());
  EXPECT_TRUE(fp.comm.written.empty());
  EXPECT_THROW(fp.pump.process_events(), ProgramClosing);
  EXPECT_THROW(fp.pump.process_events(), ProgramClosing);  // every later wait too
}

TEST(Splash, LoadCentresTheWindowAndItsTimerUnloadsItOnce) {
  // Screen sizes in twips; a screen smaller than the window puts it off the left and top.
  for (auto [w, h, left, top] :
       {std::array{19200, 14400, 6450, 5400}, std::array{4800, 3000, -750, -300}}) {
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
    EXPECT_FALSE(splash.Timer1.enabled());
  }
}

TEST(ProgramFolder, DataDirOptionThenWritableExecutableFolderThenPerUserFolder) {
  EXPECT_EQ(data_file("/data/nerit", "\\Pressure.raw"), fs::path("/data/nerit/Pressure.raw"));
  EXPECT_EQ(data_file("/data/nerit", "/PressureSensor.dat"),
            fs::path("/data/nerit/PressureSensor.dat"));
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

}  // namespace
}  // namespace nerit
