// The base-settings window on the offscreen platform: opened from the menu with its frames and
// named widgets, keys through the real line edits' filters, the timer's live labels, and both
// ways of closing it running its unload.
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <map>

#include "tests/ui/ui_test_support.h"
#include "ui/form3_window.h"

namespace nerit::ui {
namespace {

constexpr const char* kOfflineNote =
    "Nerit|Information|Ok|Änderungen werden nicht automatisch übernommen,\nda der Nerit offline "
    "ist. Werte müssen mit 'Write Data to Unit' manuell übertragen werden!";
constexpr const char* kReminder =
    "Nerit|None|Ok|Einstellungen werden erst mit 'Make Permanent' dauerhaft übernommen";

class Form3WindowTest : public ProgramTest {
 protected:
  Form3WindowTest() {
    start();
    dialogs.expect(kOfflineNote);
    w().menu.at("Basesettings")->trigger();
    window = dynamic_cast<Form3Window*>(app->windows().widget(FormId::Form3));
  }
  const Form3Window::Widgets& w3() { return window->widgets(); }
  // Backspace over what the box holds, then the keys, as a user replaces a value.
  static void retype(QLineEdit* edit, const QString& keys) {
    edit->end(false);
    for (int n = static_cast<int>(edit->text().size()); n > 0; --n)
      QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, keys);
  }
  Form3& form3() { return app->program().form3; }

  Form3Window* window = nullptr;
};

TEST_F(Form3WindowTest, OpensFromTheMenuWithItsFramesAndEveryWidgetNamed) {
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->windowTitle(), "Basesettings");
  std::vector<QString> frames;
  for (QGroupBox* g : {w3().pressure_frame, w3().throttle_frame, w3().cylinder_frame,
                       w3().channel_frame, w3().injector_frame})
    frames.push_back(g->title());
  EXPECT_EQ(frames, (std::vector<QString>{"Pressuresensor", "Drosselklappe", "Zyliner",
                                          "Injector channels", "Injektoren"}));
  EXPECT_FALSE(w3().throttle_frame->isEnabled());  // offline
  EXPECT_FALSE(w3().Command2->isEnabled());
  EXPECT_EQ(w3().Combo1->currentText(), "Manuell");  // the stored choice 0
  EXPECT_EQ(w3().Combo2->placeholderText(), "#Injectors");
  EXPECT_EQ(w3().Combo3->count(), 7);
  EXPECT_TRUE(w3().List1->isVisible());
  EXPECT_FALSE(w3().wizard_frame->isVisible());

  const std::map<QString, QString> named = {
      {"Combo1", "MAP-Sensor Type"},
      {"Text1(0)", "Faktor"},
      {"Text1(2)", "max P"},
      {"sensor_labels(0)", "Faktor:"},
      {"Command1", "Calculate"},
      {"Command2", "Save"},
      {"Command4", "Wizzard"},
      {"List1", "Sensor table"},
      {"Option2(0)", "Measure at 100 kPa"},
      {"Text3", "P2 / kPa"},
      {"Command5", "Measure"},
      {"Command7", "Calc"},
      {"Command6(0)", "Set 100%"},
      {"Command6(1)", "Set 0%"},
      {"value_heading", "Wert"},
      {"live_percent", "Live throttle percent"},
      {"Option1(2)", "8 cylinders"},
      {"Combo2", "#Injectors"},
      {"Combo3", QString::fromUtf8("Divisor Sequentille Zündung")},
      {"Text2(0)", QString::fromUtf8("Injectoroffset in / µs")},
      {"Text2(3)", "Injectorsize new"},
      {"size_label", "Injectorsize old / new"},
      {"Command3", "Close"},
  };
  for (const auto& [control, name] : named) {
    const auto* widget = window->findChild<QWidget*>(control);
    ASSERT_NE(widget, nullptr) << control.toStdString();
    EXPECT_EQ(widget->accessibleName(), name) << control.toStdString();
    EXPECT_EQ(widget->accessibleDescription(), control);
  }
  for (const QWidget* widget : window->findChildren<QWidget*>()) {
    if (widget->accessibleDescription().isEmpty()) continue;
    EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
  }
}

TEST_F(Form3WindowTest, CloseShowsTheReminderAndUnloadsTheWindow) {
  ASSERT_NE(window, nullptr);
  dialogs.expect(kReminder);
  QTest::mouseClick(w3().Command3, Qt::LeftButton);
  EXPECT_FALSE(app->windows().is_loaded(FormId::Form3));
  EXPECT_FALSE(form3().Timer1.enabled());
  EXPECT_TRUE(wait_until([&] { return app->windows().pending_deletions() == 0; }));
}

TEST_F(Form3WindowTest, ClosingTheWindowStoresWhatTheInjectorBoxesHold) {
  ASSERT_NE(window, nullptr);
  retype(w3().Text2[kSizeOld], "440");
  retype(w3().Text2[kSizeNew], "550");
  EXPECT_EQ(form().vars.injsizecorr, 0);  // no Enter yet
  window->close();
  EXPECT_FALSE(app->windows().is_loaded(FormId::Form3));
  EXPECT_EQ(form().vars.injsizecorr, 102);
  EXPECT_FALSE(form3().Timer1.enabled());
}

TEST_F(Form3WindowTest, KeysPassTheFiltersOfTheRealLineEdits) {
  ASSERT_NE(window, nullptr);
  retype(w3().Text1[kMaxP], "2a5.0-");
  EXPECT_EQ(w3().Text1[kMaxP]->text(), "250");
  QTest::keyClicks(w3().Text1[kMaxP], ",5");
  EXPECT_EQ(form3().c.Text1[kMaxP].text, "250,5");
  retype(w3().Text2[kOffsetIn], "2,5x00");
  EXPECT_EQ(w3().Text2[kOffsetIn]->text(), "2500");
  retype(w3().Text2[kSizeOld], "440");
  retype(w3().Text2[kSizeNew], "550");
  QTest::keyClick(w3().Text2[kSizeNew], Qt::Key_Return);
  EXPECT_EQ(w3().Text2[kOffsetIn]->text(), "2000");
  EXPECT_EQ(form().vars.injoffset_in, 2000);
  EXPECT_EQ(form().vars.injsizecorr, 102);
}

TEST_F(Form3WindowTest, ATypedSensorValueDisablesSave) {
  ASSERT_NE(window, nullptr);
  emit w3().Combo1->activated(1);  // MPX4250 chosen
  QTest::mouseClick(w3().Command1, Qt::LeftButton);
  ASSERT_TRUE(w3().Command2->isEnabled());
  EXPECT_EQ(w3().List1->count(), 252);
  QTest::keyClick(w3().Text1[kMaxP], Qt::Key_Backspace);
  EXPECT_FALSE(w3().Command2->isEnabled());
}

TEST_F(Form3WindowTest, WizzardShowsTheWizardInPlaceOfTheList) {
  ASSERT_NE(window, nullptr);
  QTest::mouseClick(w3().Command4, Qt::LeftButton);
  EXPECT_FALSE(w3().List1->isVisible());
  EXPECT_TRUE(w3().wizard_frame->isVisible());
}

TEST_F(Form3WindowTest, Timer1FillsTheLiveThrottleLabels) {
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(w3().live_value->text(), "--");
  form().vars.tps_raw = 51;
  EXPECT_TRUE(wait_until([&] { return w3().live_value->text() == "51"; }));
  EXPECT_EQ(w3().live_volt->text(), "1.00");
  EXPECT_EQ(w3().live_percent->text(), "-- %");  // both end points 0
}

}  // namespace
}  // namespace nerit::ui
