// The recent-files list: order, length, what survives a restart, and a file that has gone.
#include "files/recent_files.h"

#include <gtest/gtest.h>

#include "shell/data_files.h"
#include "tests/support/fake_platform.h"

namespace nerit::testing {
namespace {

using Paths = std::vector<std::filesystem::path>;

class RecentFilesTest : public ::testing::Test {
 protected:
  RecentFilesTest() { recent.load(folder.path()); }
  std::filesystem::path file(const std::string& name) {
    const auto p = folder.path() / name;
    if (!std::filesystem::exists(p)) write_file_bytes(p, {1});
    return p;
  }
  TempFolder folder;
  RecentFiles recent;
};

TEST_F(RecentFilesTest, TheFileUsedLastComesFirstAndOnlyOnce) {
  recent.add(file("a.inj"));
  recent.add(file("b.inj"));
  recent.add(file("a.inj"));
  EXPECT_EQ(recent.files(), (Paths{file("a.inj"), file("b.inj")}));
  EXPECT_EQ(recent.items[0].caption, "1 " + file("a.inj").string());
  EXPECT_TRUE(recent.items[1].visible);
  EXPECT_FALSE(recent.items[2].visible);
}

TEST_F(RecentFilesTest, TheListHoldsFiveFiles) {
  for (const char* n : {"1.inj", "2.inj", "3.inj", "4.inj", "5.inj", "6.inj"}) recent.add(file(n));
  ASSERT_EQ(recent.files().size(), 5u);
  EXPECT_EQ(recent.files().front(), file("6.inj"));
  EXPECT_EQ(recent.files().back(), file("2.inj"));
}

TEST_F(RecentFilesTest, TheListIsThereAfterARestart) {
  recent.add(file("a.inj"));
  recent.add(file("b.inj"));
  RecentFiles next;
  next.load(folder.path());
  EXPECT_EQ(next.files(), recent.files());
  EXPECT_EQ(next.items[1].caption, "2 " + file("a.inj").string());
}

TEST_F(RecentFilesTest, AnEntryOpensItsFile) {
  recent.add(file("a.inj"));
  recent.add(file("b.inj"));
  std::filesystem::path opened;
  recent.open = [&](const std::filesystem::path& p) { opened = p; };
  recent.recent_Click(1);
  EXPECT_EQ(opened, file("a.inj"));
}

TEST_F(RecentFilesTest, AFileThatHasGoneIsTakenOffWithAnError) {
  recent.add(file("a.inj"));
  recent.add(file("b.inj"));
  std::filesystem::remove(file("b.inj"));
  bool opened = false;
  recent.open = [&](const std::filesystem::path&) { opened = true; };
  const auto gone = folder.path() / "b.inj";
  try {
    recent.recent_Click(0);
    FAIL() << "no error";
  } catch (const FileError& e) {
    EXPECT_EQ(e.what(), gone.string() + " no longer exists; it has been taken off the list.");
  }
  EXPECT_FALSE(opened);
  EXPECT_EQ(recent.files(), Paths{folder.path() / "a.inj"});
}

}  // namespace
}  // namespace nerit::testing
