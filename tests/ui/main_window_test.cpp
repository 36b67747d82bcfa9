// The real main window on the offscreen platform: the models reach the widgets, user input
// reaches the handlers, and closing ends the program.
#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QGraphicsView>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <map>

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

TEST_F(MainWindowTest, TheLogLetsGoOfTheLinesItsModelDrops) {
  app->run([this] {
    c().List1.max_items = 10;
    for (int i = 1; i <= 11; ++i) c().List1.add_item("line " + std::to_string(i));
  });
  ASSERT_EQ(w().List1->count(), 11);
  const QListWidgetItem* kept = w().List1->item(4);  // "line 5"
  app->run([this] {
    for (int i = 12; i <= 13; ++i) c().List1.add_item("line " + std::to_string(i));
  });
  ASSERT_EQ(w().List1->count(), 11);
  EXPECT_EQ(w().List1->item(0)->text(), "line 3");
  EXPECT_EQ(w().List1->item(10)->text(), "line 13");
  EXPECT_EQ(w().List1->item(2), kept);  // the lines that stay are not made anew
}

TEST_F(MainWindowTest, UnderAStreamTheLogTakesNewLinesAFewTimesASecond) {
  app->run([this] { c().List1.add_item("first"); });
  ASSERT_EQ(w().List1->count(), 1);
  c().List1.add_item("second");  // as a status frame adds it
  app->refresh(true);            // paced: the line waits for a later turn
  EXPECT_EQ(w().List1->count(), 1);
  EXPECT_TRUE(wait_until([&] { return w().List1->count() == 2; }, 2000));
  c().List1.add_item("third");
  app->refresh();  // what the user does shows at once
  EXPECT_EQ(w().List1->count(), 3);
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

// Name and control name of every node of the window's accessibility tree, by control name.
std::map<std::string, std::string> accessible_controls(QAccessibleInterface* node, int depth = 0) {
  std::map<std::string, std::string> found;
  if (!node || depth > 40) return found;
  const std::string control = node->text(QAccessible::Description).toStdString();
  if (!control.empty() && !node->state().invisible)
    found[control] = node->text(QAccessible::Name).toStdString();
  for (int i = 0; i < node->childCount(); ++i)
    found.merge(accessible_controls(node->child(i), depth + 1));
  return found;
}

// Assistive technology finds every control by its control name, with a name a person uses.
TEST_F(MainWindowTest, EveryControlIsInTheAccessibilityTreeByItsName) {
  app->run([this] {
    form().panel_controls.List2.list_index = kPanelAccelerationFuel;
    form().panels.List2_Click();
  });
  QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&app->main_window());
  auto found = accessible_controls(root);
  const std::map<std::string, std::string> expected = {
      {"Command1", "Connect"},
      {"Label4(0)", "Link"},
      {"Label4(1)", "Port"},
      {"Label4(2)", "Firmware"},
      {"Command12", "Read Data from Unit"},
      {"Command9", "Write Data to Unit"},
      {"Command15", "Update Settings"},
      {"Command4(0)", "Write to EEProm"},
      {"Command2", "Reload EEProm"},
      {"Command5", "Make Permanent"},
      {"Combo2", "Debug port"},
      {"MSFlexGrid2", "Injector correction map"},
      {"MSFlexGrid3", "Airflow output map"},
      {"Check6", "Map Aktiv"},
      {"Check2", "Highlight"},
      {"Check4", "Aktiv"},
      {"Check5", "Automap"},
      {"GraphButton", "Graph"},
      {"Combo1", "Loadtype"},
      {"Check1", "Realtimedata"},
      {"Check7", "Debugdata"},
      {"MSFlexGrid1", "Live values"},
      {"List2", "Tuning panels"},
      {"chart_channel(0)", "Drehzahl"},
      {"chart_channel(3)", "TPS / %"},
      {"chart_range(1)", "INJ Out / µs range"},
      {"chart", "Live chart"},
      {"throttle_frame", "Throttle"},
      {"map_frame", "Map"},
      {"Label7(0)", "Filter"},
      {"HScroll1(0)", "Throttle Filter"},
      {"HScroll1(3)", "Map Filter"},
      {"HScroll1(5)", "Reduzierung"},
      {"Label8(5)", "Reduzierung value"},
      {"List1", "Log"},
      {"DataLog status", "Data log"},
  };
  for (const auto& [control, name] : expected) {
    ASSERT_TRUE(found.count(control)) << control;
    EXPECT_EQ(found.at(control), name) << control;
  }
  for (const auto& [control, name] : found) EXPECT_FALSE(name.empty()) << control;
  // The floating editor is there while it is shown.
  EXPECT_FALSE(found.count("Text2"));
  const QRect cell = w().MSFlexGrid2->visualRect(w().MSFlexGrid2->model()->index(3, 3));
  QTest::mouseClick(w().MSFlexGrid2->viewport(), Qt::LeftButton, {}, cell.center());
  found = accessible_controls(root);
  ASSERT_TRUE(found.count("Text2"));
  EXPECT_EQ(found.at("Text2"), "Correction cell editor");
}

// Each panel's controls are there by their names while the panel is shown.
TEST_F(MainWindowTest, EachPanelsControlsAreInTheAccessibilityTreeWhileShown) {
  using Names = std::map<std::string, std::string>;
  const std::pair<int, Names> panels[] = {
      {kPanelInjektoradjust,
       {{"Frame1(0)", "Manual Injectoradjust"}, {"Slider1", "Injector adjust"}}},
      {kPanelAirflowFuelcut, {{"fuelcut_note", "This controller has no airflow fuel cut to set."}}},
      {kPanelBoostcontrol,
       {{"boost_start_text", "Start / kPa"},
        {"Combo4", "Analog In Channel"},
        {"solenoid_injector6", "Injektor #6"},
        {"Command7", "Apply"}}},
      {kPanelAirflowOutput,
       {{"Label5", "Clamp / mV:"}, {"Text1", "Clamp / mV"}, {"Command6", "Apply"}}},
  };
  QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&app->main_window());
  for (const auto& [panel, expected] : panels) {
    app->run([&, panel = panel] {
      form().panel_controls.List2.list_index = panel;
      form().panels.List2_Click();
    });
    const auto found = accessible_controls(root);
    for (const auto& [control, name] : expected) {
      ASSERT_TRUE(found.count(control)) << control;
      // On Linux a combo box tells its entry as its name; its own name goes with its label.
      const auto* combo = app->main_window().findChild<QComboBox*>(QString::fromStdString(control));
      EXPECT_EQ(combo ? combo->accessibleName().toStdString() : found.at(control), name) << control;
    }
    EXPECT_FALSE(found.count(panel == kPanelBoostcontrol ? "Command6" : "Command7"));
  }
}

// Menu entries carry their control names.
TEST_F(MainWindowTest, MenuEntriesCarryTheirControlNames) {
  const std::pair<const char*, const char*> entries[] = {{"Airflowsettings", "airflowsettings"},
                                                         {"Realtimedata", "echtzeit"},
                                                         {"Freeze chart", "chart_freeze"},
                                                         {"Start", "lstart"},
                                                         {"Stop", "lstop"}};
  for (const auto& [caption, control] : entries) {
    const QAction* a = w().menu.at(caption);
    EXPECT_EQ(a->text(), caption);
    EXPECT_EQ(a->objectName(), control);
    EXPECT_EQ(a->whatsThis(), control);
  }
  EXPECT_TRUE(w().menu.at("Realtimedata")->isCheckable());
  EXPECT_TRUE(w().menu.at("Freeze chart")->isCheckable());
}

// Every widget the window made has a name and its control name, whether shown or not.
TEST_F(MainWindowTest, EveryWidgetCarriesANameAndItsControlName) {
  for (QWidget* child : app->main_window().findChildren<QWidget*>()) {
    bool internal = false;  // parts of a view, a combo box or a scroll area
    for (QWidget* p = child->parentWidget(); p && p != &app->main_window(); p = p->parentWidget())
      internal |= qobject_cast<QAbstractItemView*>(p) || qobject_cast<QComboBox*>(p) ||
                  qobject_cast<QAbstractScrollArea*>(p) || qobject_cast<QMenuBar*>(p);
    if (internal || child->isWindow()) continue;
    const bool control = qobject_cast<QAbstractButton*>(child) || qobject_cast<QLabel*>(child) ||
                         qobject_cast<QComboBox*>(child) || qobject_cast<QLineEdit*>(child) ||
                         qobject_cast<QAbstractItemView*>(child) ||
                         qobject_cast<QAbstractSlider*>(child) || qobject_cast<QGroupBox*>(child) ||
                         qobject_cast<QGraphicsView*>(child);
    if (!control) continue;
    EXPECT_FALSE(child->accessibleName().isEmpty()) << child->metaObject()->className();
    EXPECT_FALSE(child->accessibleDescription().isEmpty())
        << child->metaObject()->className() << " " << child->accessibleName().toStdString();
  }
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
