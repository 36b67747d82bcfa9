// The Datei menu on screen: a load through the menu reaches the window and the recent-files
// entries, and "Compare with file…" opens its window with the differing cells marked.
#include <QAction>
#include <QTabWidget>
#include <QTableWidget>

#include "shell/data_files.h"
#include "tests/files/inj_golden.h"
#include "tests/ui/ui_test_support.h"

namespace nerit::ui {
namespace {

class DateiMenuTest : public ProgramTest {
 protected:
  DateiMenuTest() {
    file = folder.path() / "tune.inj";
    write_file_bytes(file, testing::InjGolden().bytes);
    start();
  }
  void trigger(const std::string& caption) {
    w().menu.at(caption)->trigger();
    QCoreApplication::processEvents();
  }
  std::filesystem::path file;
};

TEST_F(DateiMenuTest, LadenFillsTheWindowAndItsTitle) {
  dialogs.expect_file(file);
  trigger("Laden");
  EXPECT_EQ(app->main_window().windowTitle().toStdString(), "Nerit: " + file.string());
  EXPECT_EQ(cell(w().MSFlexGrid2, 0, 1), "500");
  EXPECT_EQ(cell(w().MSFlexGrid3, 16, 16).toInt(), testing::InjGolden::airflow(15, 15));
}

TEST_F(DateiMenuTest, ALoadedFileBecomesTheFirstRecentEntryAndOpensFromThere) {
  dialogs.expect_file(file);
  trigger("Laden");
  QAction* recent = app->main_window().findChild<QAction*>("recent(0)");
  ASSERT_NE(recent, nullptr);
  EXPECT_TRUE(recent->isVisible());
  EXPECT_EQ(recent->text().toStdString(), "1 " + file.string());
  EXPECT_FALSE(app->main_window().findChild<QAction*>("recent(1)")->isVisible());
  c().MSFlexGrid2.set_text(1, 1, "99");
  recent->trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(c().MSFlexGrid2.text(1, 1), std::to_string(testing::InjGolden::correction(0, 0)));
}

TEST_F(DateiMenuTest, CompareOpensAWindowWithTheDifferingCellMarked) {
  dialogs.expect_file(file);
  trigger("Laden");
  c().MSFlexGrid2.set_text(2, 3, "42");
  dialogs.expect_file(file);
  trigger("Compare with file…");
  CompareDialog* dialog = app->main_window().comparison();
  ASSERT_NE(dialog, nullptr);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(dialog->windowTitle(), "Compare with tune.inj");
  const QString expected = QString("42 → %1").arg(testing::InjGolden::correction(1, 2));
  EXPECT_EQ(dialog->correction->item(1, 2)->text(), expected);
  EXPECT_NE(dialog->correction->item(1, 2)->background(),
            dialog->correction->item(1, 1)->background());
  EXPECT_EQ(dialog->settings->rowCount(), 0);
  EXPECT_EQ(c().MSFlexGrid2.text(2, 3), "42");  // the window keeps its value
}

TEST_F(DateiMenuTest, TheComparisonWindowsWidgetsCarryTheirNames) {
  dialogs.expect_file(file);
  trigger("Laden");
  dialogs.expect_file(file);
  trigger("Compare with file…");
  CompareDialog* dialog = app->main_window().comparison();
  ASSERT_NE(dialog, nullptr);
  for (QWidget* w :
       {static_cast<QWidget*>(dialog->correction), static_cast<QWidget*>(dialog->airflow),
        static_cast<QWidget*>(dialog->settings)}) {
    EXPECT_FALSE(w->accessibleName().isEmpty());
    EXPECT_FALSE(w->accessibleDescription().isEmpty());
  }
  EXPECT_EQ(dialog->findChild<QTabWidget*>("tabs")->tabText(0), "Injektorcorrection (0)");
}

}  // namespace
}  // namespace nerit::ui
