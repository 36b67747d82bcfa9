// The base-settings menu and closing the main window.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "app/form1.h"
#include "shell/errors.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

using Strings = std::vector<std::string>;

// Notes how many window calls had been made when each message box appeared.
struct OrderedDialogs : testing::FakeDialogs {
  explicit OrderedDialogs(const testing::FakeWindows& w) : windows(w) {}
  using FakeDialogs::message_box;
  MsgAnswer message_box(const MessageBoxRequest& request) override {
    window_calls_at_box.push_back(windows.calls.size());
    return FakeDialogs::message_box(request);
  }
  const testing::FakeWindows& windows;
  std::vector<std::size_t> window_calls_at_box;
};

TEST(Form1BaseSettings, OfflineWarnsBeforeEveryShowConnectedJustShows) {
  for (int connected : {0, 1}) {
    testing::FakePlatform fp;
    OrderedDialogs dialogs(fp.windows);
    Platform platform{fp.comm, fp.timers, fp.pump, dialogs, fp.wall, fp.locale, fp.windows};
    testing::TempFolder folder;
    Form1 form(platform, folder.path());
    form.shell.Form_Load();
    form.vars.connected = connected;
    form.shell.Grundeinstellungen_Click();
    form.shell.Grundeinstellungen_Click();
    EXPECT_EQ(fp.windows.calls, (Strings{"show Form3", "show Form3"}));
    using Counts = std::vector<std::size_t>;
    EXPECT_EQ(dialogs.window_calls_at_box, (connected ? Counts{} : Counts{0, 1}));
    const std::string note =
        "Nerit|Information|Ok|Änderungen werden nicht automatisch übernommen,\nda der Nerit "
        "offline ist. Werte müssen mit 'Write Data to Unit' manuell übertragen werden!";
    EXPECT_EQ(dialogs.boxes(), Strings(connected ? 0 : 2, note));
  }
}

// Every file below the folder with its bytes and modification time.
auto folder_contents(const std::filesystem::path& folder) {
  std::map<std::filesystem::path, std::pair<std::string, std::filesystem::file_time_type>> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    std::ifstream in(entry.path(), std::ios::binary);
    files[entry.path()] = {std::string(std::istreambuf_iterator<char>(in), {}),
                           entry.last_write_time()};
  }
  return files;
}

TEST(Form1Unload, UnloadsEveryWindowEndsTheProgramAndWritesNothing) {
  testing::FakePlatform fp;
  testing::TempFolder folder;
  folder.write("Pressure.raw", std::vector<unsigned char>(512, 0x11));
  folder.write("PressureSensor.dat", {10, 11, 11, 12});
  folder.write("Map.inj", {1, 2, 3});
  Program program(fp.platform, folder.path());
  Form1& form = program.form1;
  form.shell.Form_Load();
  form.shell.Form_Activate();
  form.shell.reload_pressure();
  const auto before = folder_contents(folder.path());
  ASSERT_EQ(before.size(), 3u);
  form.shell.Form_Unload();
  EXPECT_EQ(fp.windows.calls,
            (Strings{"unload Form2", "unload Form3", "unload Form4", "unload Form5", "end"}));
  EXPECT_EQ(folder_contents(folder.path()), before);
  EXPECT_TRUE(fp.dialogs.shown.empty());
  EXPECT_EQ(fp.comm.output_calls, 0);
  EXPECT_THROW(fp.pump.process_events(), ProgramClosing);
  EXPECT_THROW(fp.pump.process_events(), ProgramClosing);  // every later wait too
}

}  // namespace
}  // namespace nerit
