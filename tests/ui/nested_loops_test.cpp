// Message boxes and waits are nested event loops: the program neither aborts nor hangs
// whatever happens under them. The real Qt loop, real boxes where it matters.
#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>

#include "link/frames.h"
#include "tests/support/reply_frames.h"
#include "tests/ui/ui_test_support.h"
#include "ui/simulator.h"

namespace nerit::ui {
namespace {

std::vector<QMessageBox*> open_boxes() {
  std::vector<QMessageBox*> boxes;
  for (QWidget* w : QApplication::topLevelWidgets())
    if (auto* box = qobject_cast<QMessageBox*>(w); box && box->isVisible()) boxes.push_back(box);
  return boxes;
}

// The splash's timer closes it while a box that the user has not answered stands on top.
TEST(NestedLoops, TheSplashClosingUnderAnOpenBoxTakesNothingWithIt) {
  testing::TempFolder folder;
  Application app({folder.path(), true, nullptr, {}, ""});  // real boxes
  app.start();
  QWidget* splash = app.windows().widget(FormId::Form4);
  ASSERT_NE(splash, nullptr);
  QApplication::setActiveWindow(splash);  // kept on top by the window manager
  QString title;
  bool splash_gone = false;
  QTimer::singleShot(2000, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    title = box->windowTitle();
    splash_gone = !app.windows().is_loaded(FormId::Form4);
    box->button(QMessageBox::Ok)->click();
  });
  app.main_window().widgets().Command9->click();  // offline without a load type: "Fehler"
  EXPECT_EQ(title, "Fehler");
  EXPECT_TRUE(splash_gone);
  run_events_for(50);
  EXPECT_EQ(app.windows().pending_deletions(), 0);
  EXPECT_TRUE(open_boxes().empty());
}

// An erased controller answers 0xFF everywhere: block 0x240 has no such load type, the load
// points do not fit. Each such block raises one box, and the read goes on while they stay open.
TEST(NestedLoops, AReadFromAControllerWhoseBlocksCannotBeShownCompletes) {
  testing::TempFolder folder;
  Simulator simulator(simulator_options(folder.path()));
  ASSERT_TRUE(simulator.start());
  sim::MemoryWindow& ram = simulator.controller().memory().ram;
  ram.assign(std::vector<std::uint8_t>(ram.size(), 0xFF));
  Application app({folder.path(), false, nullptr, {}, simulator.slave_path()});
  app.start();
  Form1& f = app.program().form1;
  app.run([&] {
    f.platform.comm.set_comm_port(1);
    f.platform.comm.set_settings("19200,N,8,1");
    f.platform.comm.set_port_open(true);
    f.vars.connected = 1;
  });
  bool timed_out = false;
  QTimer guard;
  guard.setSingleShot(true);
  QObject::connect(&guard, &QTimer::timeout, [&] {
    timed_out = true;
    app.main_window().close();  // unwinds every wait and box
  });
  guard.start(8000);
  QElapsedTimer clock;
  clock.start();
  app.run([&] { f.session.Command12_Click(); });
  guard.stop();
  EXPECT_FALSE(timed_out) << "the read did not end";
  EXPECT_LT(clock.elapsed(), 2500);  // done before Timer5 could start it again
  const auto& log = f.c.List1.items;
  EXPECT_EQ(std::count_if(log.begin(), log.end(),
                          [](const std::string& l) { return l.find("Read SRam") != l.npos; }),
            54);
  EXPECT_EQ(f.c.Command12.back_color, kButtonFace);
  EXPECT_FALSE(f.c.Timer5.enabled());
  std::vector<std::string> texts;
  for (QMessageBox* box : open_boxes()) {
    EXPECT_EQ(box->windowTitle(), "Error");
    texts.push_back(box->text().toStdString());
    box->close();
  }
  std::sort(texts.begin(), texts.end());
  EXPECT_EQ(texts, (std::vector<std::string>{"Invalid property value", "Overflow", "Overflow"}));
}

// The test plays a controller that answers the connect frame and then nothing.
class Responder {
 public:
  explicit Responder(const Pty& pty) : pty_(pty), notifier_(pty.master, QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] {
      std::string got = pty_.take();
      if (got.find(connect_frame()) != got.npos)
        pty_.send(testing::firmware_reply("Nerit TEST 1.00 "));
    });
  }
  void stop() { notifier_.setEnabled(false); }

 private:
  const Pty& pty_;
  QSocketNotifier notifier_;
};

class VanishedDevice : public ProgramTest {};

// Unplugged during a read: offline as after a disconnect, once, with its log line; the read
// ends; no box, then or 2.5 s later.
TEST_F(VanishedDevice, TakesTheProgramOfflineOnceAndEndsTheRead) {
  Pty pty;
  start({pty.path});
  Responder controller(pty);
  dialogs.expect(testing::kOnlineQuestion, MsgAnswer::No);
  w().Command1->click();
  ASSERT_EQ(w().Label4[0]->text(), "online");
  const int before = w().List1->count();
  QTimer::singleShot(300, [&] {
    controller.stop();
    pty.close_master();
  });
  QTimer::singleShot(6000, [&] { app->main_window().close(); });  // a read that never ends
  app->run([this] { form().session.Command12_Click(); });
  ASSERT_FALSE(app->closing()) << "the read did not end";
  EXPECT_EQ(form().vars.connected, 0);
  EXPECT_EQ(w().Label4[0]->text(), "offline");
  EXPECT_EQ(w().Label4[0]->palette().color(QPalette::Window), QColor(255, 0, 0));
  EXPECT_EQ(w().Label4[1]->text(), "Connection");
  EXPECT_EQ(w().Label4[2]->text(), "Closed");
  EXPECT_TRUE(w().Combo2->isEnabled());
  EXPECT_EQ(c().Command12.back_color, kButtonFace);
  EXPECT_FALSE(c().Timer5.enabled());
  run_events_for(2700);
  ASSERT_EQ(w().List1->count(), before + 1);
  EXPECT_EQ(log_text(before), " -> Port 1 (" + pty.path + ") closed: device removed");
  EXPECT_EQ(dialogs.shown.size(), 1u);
}

}  // namespace
}  // namespace nerit::ui
