// The real main window on the offscreen platform: the models reach the widgets, user input
// reaches the handlers, and closing ends the program.
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>

#include "shell/errors.h"
#include "tests/ui/ui_test_support.h"

namespace nerit::ui {
namespace {

class MainWindowTest : public ProgramTest {
 protected:
  MainWindowTest() { start(); }
};

TEST_F(MainWindowTest, ModelValuesReachTheWidgets) {
  EXPECT_EQ(w().Combo2->count(), 33);
  EXPECT_EQ(w().Combo2->placeholderText(), QString::fromUtf8("Debugport wählen...."));
  EXPECT_FALSE(w().menu.at("Start")->isEnabled());
  app->run([this] {
    c().Label4[0].caption = "online";
    c().Label4[0].back_color = kGreen;
    c().Command1.back_color = kYellow;
    c().MSFlexGrid2.set_text(3, 4, "42");
    c().MSFlexGrid3.set_back_color(2, 2, kYellow);
    c().List1.add_item("12:00:00 -> hello");
    c().menus.lstart.enabled = true;
    c().caption = "Nerit: /tmp/tune.inj";
  });
  EXPECT_EQ(w().Label4[0]->text(), "online");
  EXPECT_EQ(w().Label4[0]->palette().color(QPalette::Window), QColor(0, 255, 0));
  EXPECT_EQ(w().Command1->palette().color(QPalette::Button), QColor(255, 255, 0));
  EXPECT_EQ(cell(w().MSFlexGrid2, 3, 4), "42");
  EXPECT_EQ(w().MSFlexGrid3->model()->index(2, 2).data(Qt::BackgroundRole).value<QBrush>().color(),
            QColor(255, 255, 0));
  ASSERT_EQ(w().List1->count(), 1);
  EXPECT_EQ(w().List1->item(0)->text(), "12:00:00 -> hello");
  EXPECT_TRUE(w().menu.at("Start")->isEnabled());
  EXPECT_EQ(app->main_window().windowTitle(), "Nerit: /tmp/tune.inj");
}

TEST_F(MainWindowTest, ClickingAPanelShowsOnlyThatPanel) {
  QListWidget* list = w().List2;
  const QRect r = list->visualItemRect(list->item(kPanelBoostcontrol));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, r.center());
  EXPECT_EQ(form().panel_controls.List2.list_index, kPanelBoostcontrol);
  EXPECT_EQ(w().panel_stack->currentWidget(), w().Frame1[kPanelBoostcontrol]);
  EXPECT_EQ(w().Frame1[kPanelBoostcontrol]->title(), "Boostcontroll Pin #22");
}

// Coming back from one of the program's own windows runs Form_Activate, which reloads the
// pressure table; closing unloads every window and ends a wait still running.
TEST_F(MainWindowTest, BackFromBasesettingsReloadsAndClosingEndsTheProgram) {
  folder.write("Pressure.raw", {0x2A, 0x00});
  run_events_for(100);  // the window's own first activation reads nothing
  EXPECT_EQ(c().pressure_table[0], 0);
  dialogs.expect(
      "Nerit|Information|Ok|Änderungen werden nicht automatisch übernommen,\nda der Nerit "
      "offline ist. Werte müssen mit 'Write Data to Unit' manuell übertragen werden!");
  w().menu.at("Basesettings")->trigger();
  QWidget* form3 = app->windows().widget(FormId::Form3);
  ASSERT_NE(form3, nullptr);
  EXPECT_EQ(form3->windowTitle(), "Basesettings");
  ASSERT_TRUE(wait_until([&] { return QGuiApplication::focusWindow() == form3->windowHandle(); }));
  EXPECT_EQ(c().pressure_table[0], 0);
  app->main_window().activateWindow();
  EXPECT_TRUE(wait_until([&] { return c().pressure_table[0] == 42; }));

  app->main_window().close();
  EXPECT_TRUE(app->closing());
  EXPECT_FALSE(app->windows().is_loaded(FormId::Form3));
  EXPECT_FALSE(app->main_window().isVisible());
  EXPECT_THROW(app->platform().pump.process_events(), ProgramClosing);
  EXPECT_EQ(dialogs.shown.size(), 1u);  // the offline notice only, nothing asked on exit
}

TEST(SplashTest, ShowsCentredAndClosesItself) {
  testing::TempFolder folder;
  testing::FakeDialogs dialogs;
  Application app({folder.path(), true, &dialogs, {}, ""});
  app.start();
  QWidget* splash = app.windows().widget(FormId::Form4);
  ASSERT_NE(splash, nullptr);
  const QRect screen = splash->screen()->availableGeometry();
  EXPECT_NEAR(splash->geometry().center().x(), screen.center().x(), 2);
  EXPECT_NEAR(splash->geometry().center().y(), screen.center().y(), 2);
  EXPECT_TRUE(wait_until([&] { return !app.windows().is_loaded(FormId::Form4); }));
}

}  // namespace
}  // namespace nerit::ui
