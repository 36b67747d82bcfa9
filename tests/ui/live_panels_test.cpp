// The live table, the stream boxes and menus, the chart, the data log's status and the tuning
// panels in the real window: what the user does reaches the controller's wire as the exact
// frames, and the widgets show what the models hold.
#include <QLineSeries>
#include <QMouseEvent>
#include <QSocketNotifier>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <filesystem>

#include "link/frames.h"
#include "tests/support/reply_frames.h"
#include "tests/ui/ui_test_support.h"

namespace nerit::ui {
namespace {

using testing::hex_bytes;
using Strings = std::vector<std::string>;

// Plays the controller on the pty: answers the connect frame with its firmware text and keeps
// every byte the program sends after that.
class Controller {
 public:
  explicit Controller(const Pty& pty) : pty_(pty), notifier_(pty.master, QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] {
      received_ += pty_.take();
      if (!answered_ && received_.find(connect_frame()) != std::string::npos) {
        answered_ = true;
        received_.clear();
        pty_.send(testing::firmware_reply("Nerit TEST 1.00 "));
      }
    });
  }
  // The frames the program sent since the last call, as hex, once `count` of them are there;
  // what is left over after a short wait shows as a frame of its own.
  Strings frames(std::size_t count) {
    wait_until([&] { return received_.size() >= count * kFrameLength; });
    run_events_for(100);  // anything more than expected arrives meanwhile
    Strings out;
    for (std::size_t at = 0; at < received_.size(); at += kFrameLength)
      out.push_back(hex_bytes(received_.substr(at, kFrameLength)));
    received_.clear();
    return out;
  }

 private:
  const Pty& pty_;
  QSocketNotifier notifier_;
  std::string received_;
  bool answered_ = false;
};

// The mode frames: 0x55 0x80, P1 P2 zero, the mode in the first data byte, the rest zero.
std::string zeros(int n) {
  std::string s;
  for (int i = 0; i < n; ++i) s += " 00";
  return s;
}
const std::string kStreamOn = "55 80 00 00 01" + zeros(15) + " 00 0D";

// A click where the user clicks: a box or option button on its mark, anything else in its middle.
void click(QWidget* w) {
  const bool marked = qobject_cast<QCheckBox*>(w) || qobject_cast<QRadioButton*>(w);
  QTest::mouseClick(w, Qt::LeftButton, {},
                    marked ? QPoint(8, w->height() / 2) : w->rect().center());
}

void mouse_move(QWidget* w, QPoint to) {
  QMouseEvent move(QEvent::MouseMove, to, w->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                   Qt::NoModifier);
  QApplication::sendEvent(w, &move);
}

// Where a scroll bar's thumb is drawn.
QRect thumb(QScrollBar* bar) {
  QStyleOptionSlider opt;
  opt.initFrom(bar);
  opt.subControls = QStyle::SC_All;
  opt.orientation = bar->orientation();
  if (bar->orientation() == Qt::Horizontal) opt.state |= QStyle::State_Horizontal;
  opt.minimum = bar->minimum();
  opt.maximum = bar->maximum();
  opt.sliderPosition = bar->sliderPosition();
  opt.sliderValue = bar->value();
  opt.singleStep = bar->singleStep();
  opt.pageStep = bar->pageStep();
  return bar->style()->subControlRect(QStyle::CC_ScrollBar, &opt, QStyle::SC_ScrollBarSlider, bar);
}

class LiveWindowTest : public ProgramTest {
 protected:
  LiveWindowTest() { start({pty.path}); }

  void go_online() {
    dialogs.expect(testing::kOnlineQuestion, MsgAnswer::No);
    w().Command1->click();
    ASSERT_EQ(w().Label4[0]->text(), "online");
  }
  void tick_realtimedata() {
    click(w().check.at("Realtimedata"));
    ASSERT_EQ(controller.frames(1), Strings{kStreamOn});
  }
  void show_panel(int panel) {
    QListWidget* list = w().List2;
    const QRect r = list->visualItemRect(list->item(panel));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, r.center());
    ASSERT_EQ(w().panel_stack->currentWidget(), w().Frame1[static_cast<std::size_t>(panel)]);
  }
  // Status frames with an injector out time of 4 x 500 µs, one at a time: the program takes
  // the last frame of what has arrived, so each one waits until its log line is there.
  void send_status_frames(int n) {
    for (int i = 0; i < n; ++i) {
      const std::size_t lines = c().List1.items.size();
      pty.send(testing::ReplyFrame(kReplyStatus).status_word(3, 500));
      ASSERT_TRUE(wait_until([&] { return c().List1.items.size() > lines; }));
    }
  }
  QAction* menu(const char* caption) { return w().menu.at(caption); }

  Pty pty;
  Controller controller{pty};
};

// --- stream ---------------------------------------------------------------------------------

// Offline the handler does nothing: the entry keeps the model's mark, not the one Qt flipped.
TEST_F(LiveWindowTest, OfflineTheRealtimedataEntryStaysAsTheModelHasIt) {
  menu("Realtimedata")->trigger();
  EXPECT_EQ(form().c.menus.echtzeit.checked, false);
  EXPECT_FALSE(menu("Realtimedata")->isChecked());
  EXPECT_EQ(controller.frames(0), Strings{});
}

TEST_F(LiveWindowTest, AClickOnTheBoostRowSwitchesItsUnit) {
  GridView* table = w().MSFlexGrid1;
  const QRect boost = table->visualRect(table->model()->index(5, 1));
  QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, boost.center());
  EXPECT_EQ(cell(table, 5, 0), "Boost / V");
}

// --- chart ----------------------------------------------------------------------------------

TEST_F(LiveWindowTest, TheChartDrawsTheSamplesTheCoreHolds) {
  go_online();
  tick_realtimedata();
  send_status_frames(5);
  ASSERT_TRUE(wait_until([&] { return form().chart.samples().size() == 5; }))
      << form().chart.samples().size();
  QLineSeries* injector = w().chart->series(kChartInjectorOut);
  ASSERT_TRUE(wait_until([&] { return injector->count() > 0; }));
  for (const QPointF& p : injector->points()) {
    EXPECT_DOUBLE_EQ(p.y(), 0.1);  // 2000 µs of 0-20000
    EXPECT_LE(p.x(), 0);
    EXPECT_GE(p.x(), -30);
  }
  EXPECT_TRUE(injector->isVisible());
  EXPECT_EQ(injector->name(), QString::fromUtf8("INJ Out / µs 0-20000"));
}

TEST_F(LiveWindowTest, AnUntickedChannelIsHidden) {
  go_online();
  tick_realtimedata();
  send_status_frames(3);
  ASSERT_TRUE(wait_until([&] { return w().chart->series(kChartSpeed)->count() > 0; }));
  QCheckBox* speed = w().chart_channel[kChartSpeed];
  EXPECT_EQ(speed->text(), "Drehzahl");
  click(speed);
  EXPECT_EQ(form().live_controls.chart.channels[kChartSpeed].value, 0);
  EXPECT_TRUE(wait_until([&] { return !w().chart->series(kChartSpeed)->isVisible(); }));
  EXPECT_TRUE(w().chart->series(kChartBoost)->isVisible());
  click(speed);
  EXPECT_TRUE(wait_until([&] { return w().chart->series(kChartSpeed)->isVisible(); }));
}

TEST_F(LiveWindowTest, TheChartRedrawsOnlyWhenItsSamplesChanged) {
  go_online();
  tick_realtimedata();
  send_status_frames(2);
  ASSERT_TRUE(wait_until([&] { return w().chart->series(kChartSpeed)->count() > 0; }));
  run_events_for(200);
  const int drawn = w().chart->redraws();
  run_events_for(10 * LiveChartView::kFrameMs);
  EXPECT_EQ(w().chart->redraws(), drawn);
  send_status_frames(1);
  EXPECT_TRUE(wait_until([&] { return w().chart->redraws() > drawn; }));
}

// --- data log -------------------------------------------------------------------------------

TEST_F(LiveWindowTest, StartRecordsADataLogAndTheStatusBarNamesIt) {
  go_online();
  tick_realtimedata();
  EXPECT_EQ(w().data_log_status->text(), "");
  menu("Start")->trigger();
  ASSERT_TRUE(form().data_log.recording());
  const std::filesystem::path file = form().data_log.file();
  EXPECT_EQ(file.parent_path(), folder.path());
  EXPECT_TRUE(file.filename().string().starts_with("DataLog_"));
  EXPECT_EQ(file.extension(), ".csv");
  EXPECT_TRUE(std::filesystem::exists(file));
  EXPECT_EQ(w().data_log_status->text().toStdString(),
            file.filename().string() + " · 0 rows · 0:00:00");
  EXPECT_TRUE(app->main_window().statusBar()->isAncestorOf(w().data_log_status));
  send_status_frames(2);
  EXPECT_TRUE(wait_until([&] {
    return w().data_log_status->text().toStdString().starts_with(file.filename().string() +
                                                                 " · 2 rows · ");
  }));
  EXPECT_FALSE(menu("Start")->isEnabled());
  EXPECT_TRUE(menu("Stop")->isEnabled());
}

// Between handler runs too: nothing arrives here after "Start".
TEST_F(LiveWindowTest, TheStatusBarsElapsedTimeMovesWhileRecording) {
  go_online();
  tick_realtimedata();
  menu("Start")->trigger();
  ASSERT_TRUE(w().data_log_status->text().endsWith(" · 0:00:00"));
  EXPECT_TRUE(wait_until([&] { return w().data_log_status->text().endsWith(" · 0:00:01"); }));
}

TEST_F(LiveWindowTest, StopClosesTheDataLogAndEmptiesTheStatusBar) {
  go_online();
  tick_realtimedata();
  menu("Start")->trigger();
  send_status_frames(1);
  ASSERT_TRUE(wait_until([&] { return form().data_log.rows() == 1; }));
  menu("Stop")->trigger();
  EXPECT_FALSE(form().data_log.recording());
  EXPECT_EQ(w().data_log_status->text(), "");
  EXPECT_TRUE(menu("Start")->isEnabled());
  EXPECT_FALSE(menu("Stop")->isEnabled());
}

// --- tuning panels --------------------------------------------------------------------------

TEST_F(LiveWindowTest, AirflowsettingsShowsAndHidesTheAirflowOutputPanel) {
  QWidget* none = w().panel_stack->widget(kPanelCount);
  EXPECT_EQ(w().panel_stack->currentWidget(), none);
  menu("Airflowsettings")->trigger();
  EXPECT_EQ(w().panel_stack->currentWidget(), w().Frame1[kPanelAirflowOutput]);
  EXPECT_EQ(w().Frame1[kPanelAirflowOutput]->title(), "Airflow Out: Karman Vortex 20-3000 Hz");
  menu("Airflowsettings")->trigger();
  EXPECT_EQ(w().panel_stack->currentWidget(), none);
}

TEST_F(LiveWindowTest, DraggingAnAccelerationBarShowsItsValueAndTheReleaseSendsBlockB) {
  go_online();
  show_panel(kPanelAccelerationFuel);
  QScrollBar* bar = w().HScroll1[1];
  EXPECT_EQ(w().Label8[1]->text(), "50");
  const QPoint from = thumb(bar).center();
  QTest::mousePress(bar, Qt::LeftButton, {}, from);
  ASSERT_TRUE(bar->isSliderDown());
  for (int dx : {10, 25, 40}) mouse_move(bar, from + QPoint(dx, 0));
  const int value = bar->value();
  EXPECT_GT(value, 50);
  EXPECT_EQ(form().panel_controls.HScroll1[1].value, value);
  EXPECT_EQ(w().Label8[1]->text(), QString::number(value));
  EXPECT_EQ(controller.frames(0), Strings{});  // nothing while dragging
  QTest::mouseRelease(bar, Qt::LeftButton, {}, from + QPoint(40, 0));
  const Strings sent = controller.frames(1);
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_EQ(sent[0].substr(0, 11), "55 0B 02 50");
  EXPECT_EQ(w().Label8[1]->text(), QString::number(value));
}

TEST_F(LiveWindowTest, AClickBesideTheThumbChangesTheBarAndSendsAtOnce) {
  go_online();
  show_panel(kPanelAccelerationFuel);
  QScrollBar* bar = w().HScroll1[4];
  const QRect t = thumb(bar);
  QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(t.right() + 20, t.center().y()));
  EXPECT_GT(bar->value(), 50);
  EXPECT_EQ(w().Label8[4]->text(), QString::number(bar->value()));
  const Strings sent = controller.frames(1);
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_EQ(sent[0].substr(0, 11), "55 0B 02 50");
}

TEST_F(LiveWindowTest, TheAccelerationBarsSitInTheirFramesWithTheModelsCaptions) {
  show_panel(kPanelAccelerationFuel);
  EXPECT_EQ(w().throttle_frame->title(), "Throttle");
  EXPECT_EQ(w().map_frame->title(), "Map");
  const QWidget* frames[6] = {w().throttle_frame, w().throttle_frame, w().throttle_frame,
                              w().map_frame,      w().map_frame,      nullptr};
  const char* captions[6] = {"Filter", "Menge", "Dauer", "Filter", "Menge", "Reduzierung"};
  for (int i = 0; i < 6; ++i) {
    const auto k = static_cast<std::size_t>(i);
    auto* caption = app->main_window().findChild<QLabel*>(QString("Label7(%1)").arg(i));
    ASSERT_NE(caption, nullptr) << i;
    EXPECT_EQ(caption->text(), captions[i]) << i;
    EXPECT_EQ(caption->buddy(), w().HScroll1[k]) << i;
    if (frames[i]) {
      EXPECT_TRUE(frames[i]->isAncestorOf(w().HScroll1[k])) << i;
    }
  }
  EXPECT_FALSE(w().throttle_frame->isAncestorOf(w().HScroll1[5]));
  EXPECT_FALSE(w().map_frame->isAncestorOf(w().HScroll1[5]));
  EXPECT_EQ(w().HScroll1[0]->maximum(), 8);
  EXPECT_EQ(w().HScroll1[5]->maximum(), 255);
}

TEST_F(LiveWindowTest, AClampFileThatCannotBeWrittenShowsTheErrorBox) {
  show_panel(kPanelAirflowOutput);
  click(w().OptionAnalog);
  std::filesystem::create_directory(folder.path() / "test.bin");
  QTest::keyClicks(w().Text1, "5");
  dialogs.expect("Error|Critical|Ok|Cannot open " + (folder.path() / "test.bin").string());
  QTest::keyClick(w().Text1, Qt::Key_Enter);
  EXPECT_EQ(dialogs.shown.size(), 1u);
  EXPECT_EQ(w().Text1->text(), "5");
}

TEST_F(LiveWindowTest, TheSolenoidOptionsKeepOneOutput) {
  show_panel(kPanelBoostcontrol);
  EXPECT_TRUE(w().solenoid_isc->isChecked());
  click(w().solenoid_injector6);
  EXPECT_TRUE(form().panel_controls.solenoid_injector6.value);
  EXPECT_FALSE(form().panel_controls.solenoid_isc.value);
  EXPECT_TRUE(w().solenoid_injector6->isChecked());
  EXPECT_FALSE(w().solenoid_isc->isChecked());
  click(w().solenoid_injector6);  // a second click keeps it set
  EXPECT_TRUE(w().solenoid_injector6->isChecked());
}

}  // namespace
}  // namespace nerit::ui
