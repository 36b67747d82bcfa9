// The real main window on the offscreen platform: the models reach the widgets, user input
// reaches the handlers, faults become message boxes and closing ends the program.
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "shell/errors.h"
#include "tests/ui/ui_test_support.h"

namespace nerit::ui {
namespace {

class MainWindowTest : public ProgramTest {
 protected:
  MainWindowTest() { start(); }
};

// Every kind of widget shows its model after the load (the models: see the core start-up test).
TEST_F(MainWindowTest, ShowsTheLoadedWindow) {
  EXPECT_EQ(app->main_window().windowTitle(), "Nerit: ");
  ASSERT_EQ(w().List2->count(), 5);
  EXPECT_EQ(w().List2->item(4)->text(), "Acceleration Fuel");
  for (QGroupBox* frame : w().Frame1) EXPECT_TRUE(frame->isHidden());
  EXPECT_EQ(w().Label4[0]->text(), "offline");
  EXPECT_EQ(w().Label4[0]->palette().color(QPalette::Window), QColor(255, 0, 0));
  EXPECT_EQ(w().Command1->text(), "Connect");
  EXPECT_EQ(w().Combo2->count(), 33);
  EXPECT_EQ(w().Combo2->currentIndex(), -1);
  EXPECT_EQ(w().Combo2->placeholderText(), QString::fromUtf8("Debugport wählen...."));
  EXPECT_EQ(w().Combo1->itemText(3), "Airflow Karmann Vortex / Hz");
  EXPECT_FALSE(w().Combo3->isEnabled());
  EXPECT_FALSE(w().menu.at("Start")->isEnabled());
  EXPECT_FALSE(w().menu.at("Stop")->isEnabled());
  EXPECT_TRUE(w().menu.at("Basesettings")->isEnabled());
  EXPECT_EQ(cell(w().MSFlexGrid3, 0, 16), "8000");
  EXPECT_EQ(cell(w().MSFlexGrid2, 16, 0), "--");
  EXPECT_EQ(cell(w().MSFlexGrid1, 2, 0), QString::fromUtf8("INJ In / µs"));
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(MainWindowTest, ModelChangesReachTheWidgets) {
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

TEST_F(MainWindowTest, ChoosingAPanelShowsOnlyThatPanel) {
  QListWidget* list = w().List2;
  const QRect r = list->visualItemRect(list->item(kPanelBoostcontrol));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, r.center());
  EXPECT_EQ(c().List2.list_index, kPanelBoostcontrol);
  for (int i = 0; i < kPanelCount; ++i)
    EXPECT_EQ(w().Frame1[static_cast<std::size_t>(i)]->isHidden(), i != kPanelBoostcontrol) << i;
  EXPECT_EQ(w().Frame1[kPanelBoostcontrol]->title(), "Boostcontroll Pin #22");
}

TEST_F(MainWindowTest, AFaultInAHandlerBecomesAMessageAndTheProgramGoesOn) {
  app->run([] { throw OverflowError(); });
  EXPECT_EQ(dialogs.boxes(), std::vector<std::string>{"Error|Critical|Ok|Overflow"});
  app->run([this] { c().Label4[1].caption = "still here"; });
  EXPECT_EQ(w().Label4[1]->text(), "still here");
}

TEST_F(MainWindowTest, BasesettingsOfflineWarnsAndClosingUnloadsEverythingAndEnds) {
  w().menu.at("Basesettings")->trigger();
  EXPECT_EQ(dialogs.shown.at(0).icon, MsgIcon::Information);
  ASSERT_TRUE(app->windows().is_loaded(FormId::Form3));
  EXPECT_EQ(app->windows().widget(FormId::Form3)->windowTitle(), "Basesettings");
  QSignalSpy quit(qApp, &QCoreApplication::aboutToQuit);
  app->main_window().close();
  EXPECT_TRUE(app->closing());
  EXPECT_FALSE(app->windows().is_loaded(FormId::Form3));
  EXPECT_FALSE(app->main_window().isVisible());
  // A wait still running now ends instead of going on.
  EXPECT_THROW(app->platform().pump.process_events(), ProgramClosing);
  EXPECT_EQ(dialogs.shown.size(), 1u);  // nothing asked on exit
}

TEST_F(MainWindowTest, ComingBackFromBasesettingsReloadsThePressureTable) {
  w().menu.at("Basesettings")->trigger();
  QWidget* form3 = app->windows().widget(FormId::Form3);
  ASSERT_NE(form3, nullptr);
  ASSERT_TRUE(wait_until([&] { return QGuiApplication::focusWindow() == form3->windowHandle(); }));
  folder.write("Pressure.raw", {0x2A, 0x00, 0xFF, 0xFF});  // as the calibration would rewrite it
  EXPECT_EQ(c().pressure_table[0], 0);
  app->main_window().activateWindow();
  EXPECT_TRUE(wait_until([&] { return c().pressure_table[0] == 42; }));
  EXPECT_EQ(c().pressure_table[1], -1);
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
  EXPECT_TRUE(app.main_window().isVisible());
  EXPECT_TRUE(wait_until([&] { return !app.windows().is_loaded(FormId::Form4); }));
}

}  // namespace
}  // namespace nerit::ui
