// The whole program against the virtual controller: the nerit-sim program on its pseudo-terminal,
// and the in-process one of --simulate. Connect, read the tune, change a cell, write it, read it
// back. Also how the program's waits treat the line: requests leave at once, a wait sleeps.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QProcess>
#include <QThread>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "link/cell_codec.h"
#include "link/frames.h"
#include "sim/default_tune.h"
#include "sim/memory_map.h"
#include "tests/support/fake_platform.h"
#include "tests/support/reply_frames.h"
#include "tests/ui/event_loop_waits.h"
#include "ui/application.h"
#include "ui/qt_platform.h"
#include "ui/simulator.h"

namespace nerit::ui {
namespace {

// The nerit-sim program as a child; its first line of output is the device to open.
class SimProcess {
 public:
  explicit SimProcess(const QStringList& args) {
    process_.setProgram(QStringLiteral(NERIT_SIM_PATH));
    process_.setArguments(args);
    process_.setProcessChannelMode(QProcess::SeparateChannels);
    process_.start();
    if (!process_.waitForStarted(5000)) return;
    QDeadlineTimer deadline(5000);
    while (!process_.canReadLine() && !deadline.hasExpired()) process_.waitForReadyRead(100);
    if (process_.canReadLine())
      device_ = QString::fromLocal8Bit(process_.readLine()).trimmed().toStdString();
  }
  ~SimProcess() {
    process_.kill();
    process_.waitForFinished(3000);
  }
  SimProcess(const SimProcess&) = delete;
  SimProcess& operator=(const SimProcess&) = delete;

  const std::string& device() const { return device_; }
  bool running() const { return process_.state() == QProcess::Running; }

 private:
  QProcess process_;
  std::string device_;
};

// The reads of "Read Data from Unit", in the order they go out.
std::vector<std::string> read_addresses() {
  std::vector<std::string> a = {"250", "240", "260", "270", "280", "290"};
  auto hex = [](int v) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "%X", v);
    return std::string(buf);
  };
  for (int i = 0; i <= 240; i += 16) a.push_back(hex(0x2A0 + i));
  for (int i = 0; i <= 496; i += 16) a.push_back(hex(0x3A0 + i));
  return a;
}

// The log lines that end with `marker` followed by something, what follows each.
std::vector<std::string> logged_after(QListWidget* list, const std::string& marker) {
  std::vector<std::string> found;
  for (int i = 0; i < list->count(); ++i) {
    const std::string line = list->item(i)->text().toStdString();
    const auto at = line.find(marker);
    if (at != std::string::npos) found.push_back(line.substr(at + marker.size()));
  }
  return found;
}

QString cell(GridView* view, int r, int c) {
  return view->model()->index(r, c).data().toString();
}

// The default tune's airflow cell as the window shows it.
QString default_airflow_text(int row, int col) {
  const sim::ControllerMemory tune = sim::default_tune();
  const std::uint32_t at = sim::kAirflowMap + 32 * (row - 1) + 2 * (col - 1);
  return QString::fromStdString(airflow_cell_text(tune.ram.at(at), tune.ram.at(at + 1), 0));
}

class EndToEnd : public ::testing::Test {
 protected:
  void start_program(std::vector<std::string> ports, std::string simulator_device = "") {
    Application::Options options;
    options.program_folder = folder.path();
    options.show_splash = false;
    options.dialogs = &dialogs;
    options.ports = std::move(ports);
    options.simulator_device = std::move(simulator_device);
    app = std::make_unique<Application>(options);
    app->start();
  }

  // Leaves in the window what only a read from the controller can put back.
  void scramble_window() {
    app->run([this] {
      for (int col = 1; col <= 16; ++col) {
        c().MSFlexGrid2.set_text(0, col, "x");
        c().MSFlexGrid3.set_text(0, col, "x");
        for (int row = 1; row <= 16; ++row) {
          c().MSFlexGrid2.set_text(row, col, "x");
          c().MSFlexGrid3.set_text(row, col, "x");
        }
      }
      c().Combo1.select(-1);
      app->program().form1.vars.rpmfaktor = 0;
    });
  }

  void connect_and_read() {
    dialogs.answers = {MsgAnswer::Yes};  // "Verbunden, Daten vom Controller laden?"
    app->run([this] { app->program().form1.session.Command1_Click(); });
  }

  void expect_default_tune_shown() {
    for (int col = 1; col <= 16; ++col) {
      EXPECT_EQ(cell(w().MSFlexGrid2, 0, col), QString::number(500 * col)) << col;
      EXPECT_EQ(cell(w().MSFlexGrid3, 0, col), QString::number(500 * col)) << col;
      for (int row = 1; row <= 16; ++row) {
        EXPECT_EQ(cell(w().MSFlexGrid2, row, col), "0") << row << "," << col;
        EXPECT_EQ(cell(w().MSFlexGrid3, row, col), default_airflow_text(row, col))
            << row << "," << col;
      }
    }
    EXPECT_EQ(c().Combo1.list_index, 1);  // the default tune's load type: MAP
    EXPECT_EQ(w().Combo1->currentIndex(), 1);
    EXPECT_EQ(app->program().form1.vars.rpmfaktor, 30000000);
    EXPECT_EQ(app->program().form1.vars.zylinder, 4);
  }

  // Changes one correction cell, writes everything, forgets the cell and reads it back.
  void write_cell_and_read_back(int row, int col) {
    app->run([&] { c().MSFlexGrid2.set_text(row, col, "25"); });
    const int lines_before = w().List1->count();
    app->run([this] { app->program().form1.transfers.Command9_Click(); });
    EXPECT_EQ(w().List1->count(), lines_before + 54);
    const auto writes = logged_after(w().List1, " -> Write SDram @ 0x");
    EXPECT_EQ(writes.size(), 54u);
    if (!writes.empty()) {
      EXPECT_EQ(writes.front(), "240");
      EXPECT_EQ(writes.back(), "590");
    }

    app->run([&] { c().MSFlexGrid2.set_text(row, col, "x"); });
    app->run([this] { app->program().form1.session.Command12_Click(); });
    EXPECT_EQ(cell(w().MSFlexGrid2, row, col), "25");
    EXPECT_EQ(cell(w().MSFlexGrid2, row, col + 1), "0");
    EXPECT_EQ(cell(w().MSFlexGrid2, row + 1, col), "0");
    EXPECT_EQ(cell(w().MSFlexGrid2, 0, 16), "8000");
    EXPECT_EQ(logged_after(w().List1, " -> Read SRam @ 0x").size(), 108u);
  }

  const MainWindow::Widgets& w() { return app->main_window().widgets(); }
  Form1Controls& c() { return app->program().form1.c; }

  testing::TempFolder folder;
  testing::FakeDialogs dialogs;
  std::unique_ptr<Application> app;
};

TEST_F(EndToEnd, ConnectsReadsWritesAndReadsBackTheSimulatorProgram) {
  SimProcess sim({"--no-pacing"});
  ASSERT_TRUE(sim.running());
  ASSERT_EQ(sim.device().rfind("/dev/", 0), 0u) << sim.device();
  start_program({sim.device()});
  scramble_window();
  connect_and_read();

  EXPECT_EQ(w().Label4[0]->text(), "online");
  EXPECT_EQ(w().Label4[1]->text(), "Port: 1");
  EXPECT_EQ(w().Label4[2]->text().toStdString(), sim::kDefaultFirmware);
  ASSERT_EQ(dialogs.shown.size(), 1u);  // the question only, no error
  EXPECT_EQ(dialogs.shown[0].title, "Online");
  EXPECT_TRUE(dialogs.answers.empty());

  EXPECT_EQ(logged_after(w().List1, "->  online Firmware: "),
            std::vector<std::string>{sim::kDefaultFirmware});
  EXPECT_EQ(logged_after(w().List1, " -> Read SRam @ 0x"), read_addresses());
  expect_default_tune_shown();

  write_cell_and_read_back(3, 5);
  EXPECT_EQ(dialogs.shown.size(), 1u);
  EXPECT_TRUE(sim.running());
}

TEST_F(EndToEnd, SimulateModeServesTheVirtualControllerInProcess) {
  Simulator simulator(simulator_options(folder.path()));
  ASSERT_TRUE(simulator.start()) << simulator.error();
  EXPECT_TRUE(simulator.state_error().empty()) << simulator.state_error();
  start_program({}, simulator.slave_path());
  EXPECT_EQ(app->platform().comm.device_name(1), simulator.slave_path());
  scramble_window();
  connect_and_read();

  EXPECT_EQ(w().Label4[0]->text(), "online");
  EXPECT_EQ(w().Label4[1]->text(), "Port: 1");
  EXPECT_EQ(w().Label4[2]->text().toStdString(), sim::kDefaultFirmware);
  ASSERT_EQ(dialogs.shown.size(), 1u);
  EXPECT_EQ(logged_after(w().List1, " -> Read SRam @ 0x"), read_addresses());
  expect_default_tune_shown();

  // What the controller saw: 25 % is stored as 128 + 25 x 1.27.
  write_cell_and_read_back(3, 5);
  const std::uint32_t at = sim::kCorrectionMap + 16 * 2 + 4;
  EXPECT_EQ(simulator.controller().working_memory().at(at), 160);
  EXPECT_EQ(simulator.controller().permanent().ram.at(at), 128);

  // Idle between commands: the server is not woken when nothing is due.
  const long long wakeups = simulator.wakeups();
  run_events_for(500);
  EXPECT_LE(simulator.wakeups() - wakeups, 2);

  // "Make Permanent" goes to Simulator.state in the program folder and survives a restart.
  const auto state = folder.path() / "Simulator.state";
  EXPECT_FALSE(std::filesystem::exists(state));
  app->run([this] { app->program().form1.transfers.Command5_Click(); });
  EXPECT_EQ(c().Command5.back_color, kRed);
  ASSERT_TRUE(wait_until([&] { return c().Command5.back_color == kButtonFace; }));
  EXPECT_TRUE(std::filesystem::exists(state));
  EXPECT_EQ(simulator.controller().permanent().ram.at(at), 160);

  Simulator restarted(simulator_options(folder.path()));
  EXPECT_TRUE(restarted.state_error().empty()) << restarted.state_error();
  EXPECT_EQ(restarted.controller().working_memory().at(at), 160);
  EXPECT_EQ(restarted.controller().working_memory().at(at + 1), 128);
}

TEST(Simulator, ServesOnlyOnceStarted) {
  testing::TempFolder folder;
  Simulator simulator(simulator_options(folder.path()));
  EXPECT_TRUE(simulator.slave_path().empty());
  ASSERT_TRUE(simulator.start()) << simulator.error();
  EXPECT_EQ(simulator.slave_path().rfind("/dev/", 0), 0u) << simulator.slave_path();
  EXPECT_TRUE(std::filesystem::exists(simulator.slave_path()));
  run_events_for(300);
  EXPECT_EQ(simulator.wakeups(), 0);  // nothing scheduled, nothing written: no wakeups
}

// A bare pseudo-terminal: the program opens `path`, the test reads and writes `master`.
struct Pty {
  Pty() {
    char name[256] = {};
    if (openpty(&master, &device, name, nullptr, nullptr) != 0) return;
    path = name;
    fcntl(master, F_SETFL, fcntl(master, F_GETFL) | O_NONBLOCK);
  }
  ~Pty() {
    if (master >= 0) ::close(master);
    if (device >= 0) ::close(device);
  }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  // What the program wrote within `ms`, without running the program's event loop.
  std::string read_for(int ms) const {
    std::string got;
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms) {
      pollfd p{master, POLLIN, 0};
      if (::poll(&p, 1, 5) > 0) {
        char buf[64];
        const ssize_t n = ::read(master, buf, sizeof buf);
        if (n > 0) got.append(buf, static_cast<std::size_t>(n));
      }
    }
    return got;
  }

  int master = -1;
  int device = -1;
  std::string path;
};

class ProgramSerialWaits : public ::testing::Test {
 protected:
  ProgramSerialWaits() {
    Application::Options options;
    options.program_folder = folder.path();
    options.show_splash = false;
    options.dialogs = &dialogs;
    options.ports = {pty.path};
    app = std::make_unique<Application>(options);
    app->start();
    app->run([this] {
      app->platform().comm.set_comm_port(1);
      app->platform().comm.set_port_open(true);
    });
  }
  const MainWindow::Widgets& w() { return app->main_window().widgets(); }

  Pty pty;
  testing::TempFolder folder;
  testing::FakeDialogs dialogs;
  std::unique_ptr<Application> app;
};

TEST_F(ProgramSerialWaits, WhatAHandlerWroteIsOnTheLineWhenItReturns) {
  ASSERT_TRUE(app->platform().comm.port_open());
  app->run([this] {
    app->platform().comm.output("U");
    app->platform().comm.output(std::string("\x00\x0d\x0a", 3));
  });
  // The event loop does not run here: the bytes went out before run() returned.
  EXPECT_EQ(pty.read_for(100), std::string("U\x00\x0d\x0a", 4));
}

TEST_F(ProgramSerialWaits, AReplyShowsWhileTheHandlerThatWaitsForItStillRuns) {
  const int before = w().List1->count();
  bool shown_inside = false;
  app->run([&] {
    const std::string reply = testing::ReplyFrame(kReplyText).text("Write SDram");
    ASSERT_EQ(::write(pty.master, reply.data(), reply.size()), 22);
    // A loop of its own, as a message box runs one.
    QDeadlineTimer deadline(3000);
    while (!shown_inside && !deadline.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
      shown_inside = w().List1->count() == before + 1;
    }
  });
  EXPECT_TRUE(shown_inside);
  ASSERT_EQ(w().List1->count(), before + 1);
  const std::string line = w().List1->item(before)->text().toStdString();
  EXPECT_NE(line.find(" -> Write SDram @ 0x"), std::string::npos) << line;
}

TEST_F(EndToEnd, AReadSleepsBetweenReplies) {
  Simulator simulator(simulator_options(folder.path()));
  ASSERT_TRUE(simulator.start()) << simulator.error();
  start_program({}, simulator.slave_path());
  dialogs.answers = {MsgAnswer::No};
  app->run([this] { app->program().form1.session.Command1_Click(); });
  ASSERT_EQ(w().Label4[0]->text(), "online");

  auto* pump = dynamic_cast<QtPump*>(&app->platform().pump);
  ASSERT_NE(pump, nullptr);
  int turns = 0;
  const auto refresh_first = pump->before_wait;
  pump->before_wait = [&] {
    ++turns;
    refresh_first();
  };
  QElapsedTimer read_time;
  read_time.start();
  app->run([this] { app->program().form1.session.Command12_Click(); });
  const qint64 read_ms = read_time.elapsed();
  pump->before_wait = refresh_first;
  EXPECT_EQ(logged_after(w().List1, " -> Read SRam @ 0x").size(), 54u);
  // The simulator keeps the wire rate: 54 replies of 22 bytes at 10 bits / 19200 baud.
  EXPECT_GE(read_ms, 54 * 22 * 10 * 1000 / 19200);
  // A few turns of the event loop per reply; a wait that kept the loop busy would take
  // thousands in the 0.6 s the replies need on the paced line.
  EXPECT_GE(turns, 54);
  EXPECT_LE(turns, 54 * 6);
}

}  // namespace
}  // namespace nerit::ui
