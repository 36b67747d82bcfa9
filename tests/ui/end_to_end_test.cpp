// The whole program against the virtual controller: the nerit-sim program on its pseudo-terminal,
// and the in-process one of --simulate. Connect, read the tune, change a cell, write it, read it
// back. Also how the program's waits treat the line: requests leave at once, a wait sleeps.
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QProcess>

#include "link/cell_codec.h"
#include "link/frames.h"
#include "sim/default_tune.h"
#include "sim/memory_map.h"
#include "tests/ui/ui_test_support.h"
#include "ui/qt_platform.h"
#include "ui/simulator.h"

namespace nerit::ui {
namespace {

using Strings = std::vector<std::string>;

// The nerit-sim program as a child; its first line of output is the device to open.
class SimProcess {
 public:
  explicit SimProcess(const QStringList& args) {
    process_.start(QStringLiteral(NERIT_SIM_PATH), args);
    QDeadlineTimer deadline(5000);
    while (process_.waitForStarted(5000) && !process_.canReadLine() && !deadline.hasExpired())
      process_.waitForReadyRead(100);
    if (process_.canReadLine()) device = process_.readLine().trimmed().toStdString();
  }
  ~SimProcess() {
    process_.kill();
    process_.waitForFinished(3000);
  }
  bool running() const { return process_.state() == QProcess::Running; }
  std::string device;

 private:
  QProcess process_;
};

// The reads of "Read Data from Unit", in the order they go out.
Strings read_addresses() {
  std::vector<int> order{0x250, 0x240, 0x260, 0x270, 0x280, 0x290};
  for (int v = 0x2A0; v <= 0x590; v += 16) order.push_back(v);
  Strings a;
  for (int v : order) a.push_back(QString::number(v, 16).toUpper().toStdString());
  return a;
}

class EndToEnd : public ProgramTest {
 protected:
  void connect(MsgAnswer read) {
    dialogs.answers = {read};  // "Verbunden, Daten vom Controller laden?"
    app->run([this] { form().session.Command1_Click(); });
    EXPECT_EQ(w().Label4[0]->text(), "online");
    EXPECT_EQ(w().Label4[1]->text(), "Port: 1");
    EXPECT_EQ(w().Label4[2]->text().toStdString(), sim::kDefaultFirmware);
  }
  void write_cell(int row, int col, const char* text) {
    app->run([&] {
      c().MSFlexGrid2.set_text(row, col, text);
      form().transfers.Command9_Click();
    });
  }
  // What follows `marker` in each log line that holds it.
  Strings logged_after(const std::string& marker) {
    Strings found;
    for (int i = 0; i < w().List1->count(); ++i) {
      const std::string line = w().List1->item(i)->text().toStdString();
      if (const auto at = line.find(marker); at != std::string::npos)
        found.push_back(line.substr(at + marker.size()));
    }
    return found;
  }
};

TEST_F(EndToEnd, ConnectsReadsWritesAndReadsBackTheSimulatorProgram) {
  SimProcess sim({"--no-pacing"});
  ASSERT_TRUE(sim.running());
  ASSERT_EQ(sim.device.rfind("/dev/", 0), 0u) << sim.device;
  start({sim.device});
  app->run([this] {  // leaves in the window what only a read from the controller can put back
    for (int row = 0; row <= 16; ++row)
      for (int col = 1; col <= 16; ++col)
        c().MSFlexGrid2.set_text(row, col, "x"), c().MSFlexGrid3.set_text(row, col, "x");
    c().Combo1.select(-1);
    form().vars.rpmfaktor = 0;
  });
  connect(MsgAnswer::Yes);
  ASSERT_EQ(dialogs.shown.size(), 1u);  // the question only, no error
  EXPECT_EQ(dialogs.shown[0].title, "Online");
  EXPECT_EQ(logged_after("->  online Firmware: "), Strings{sim::kDefaultFirmware});
  EXPECT_EQ(logged_after(" -> Read SRam @ 0x"), read_addresses());

  const sim::ControllerMemory tune = sim::default_tune();
  for (int col = 1; col <= 16; ++col) {
    const std::uint32_t at = sim::kAirflowMap + 32 * 15 + 2 * (col - 1);  // row 16
    EXPECT_EQ(cell(w().MSFlexGrid3, 0, col), QString::number(500 * col)) << col;
    EXPECT_EQ(cell(w().MSFlexGrid2, 16, col), "0") << col;
    EXPECT_EQ(cell(w().MSFlexGrid3, 16, col).toStdString(),
              airflow_cell_text(tune.ram.at(at), tune.ram.at(at + 1), 0))
        << col;
  }
  EXPECT_EQ(w().Combo1->currentIndex(), 1);  // the default tune's load type: MAP
  EXPECT_EQ(form().vars.rpmfaktor, 30000000);

  // Change one cell, write everything, forget the cell and read it back.
  write_cell(3, 5, "25");
  const Strings writes = logged_after(" -> Write SDram @ 0x");
  ASSERT_EQ(writes.size(), 54u);
  EXPECT_EQ(writes.front(), "240");
  EXPECT_EQ(writes.back(), "590");
  app->run([this] {
    c().MSFlexGrid2.set_text(3, 5, "x");
    form().session.Command12_Click();
  });
  EXPECT_EQ(cell(w().MSFlexGrid2, 3, 5), "25");
  EXPECT_EQ(cell(w().MSFlexGrid2, 3, 6), "0");
  EXPECT_EQ(cell(w().MSFlexGrid2, 4, 5), "0");
  EXPECT_EQ(logged_after(" -> Read SRam @ 0x").size(), 108u);
  EXPECT_EQ(dialogs.shown.size(), 1u);
  EXPECT_TRUE(sim.running());
}

TEST_F(EndToEnd, SimulateModeServesTheVirtualControllerInProcessAndAReadSleeps) {
  Simulator simulator(simulator_options(folder.path()));
  EXPECT_TRUE(simulator.slave_path().empty());  // served only once started
  ASSERT_TRUE(simulator.start()) << simulator.error();
  EXPECT_TRUE(simulator.state_error().empty()) << simulator.state_error();
  run_events_for(300);
  EXPECT_EQ(simulator.wakeups(), 0);  // nothing scheduled, nothing written: no wakeups
  start({}, simulator.slave_path());
  EXPECT_EQ(app->platform().comm.device_name(1), simulator.slave_path());
  connect(MsgAnswer::No);

  auto* pump = dynamic_cast<QtPump*>(&app->platform().pump);
  ASSERT_NE(pump, nullptr);
  int turns = 0;
  const auto refresh_first = pump->before_wait;
  pump->before_wait = [&] { ++turns, refresh_first(); };
  QElapsedTimer read_time;
  read_time.start();
  app->run([this] { form().session.Command12_Click(); });
  const qint64 read_ms = read_time.elapsed();
  pump->before_wait = refresh_first;
  EXPECT_EQ(logged_after(" -> Read SRam @ 0x"), read_addresses());
  // The simulator keeps the wire rate: 54 replies of 22 bytes at 10 bits / 19200 baud.
  EXPECT_GE(read_ms, 54 * 22 * 10 * 1000 / 19200);
  // A few turns of the event loop per reply; a wait that kept the loop busy would take
  // thousands in the 0.6 s the replies need on the paced line.
  EXPECT_GE(turns, 54);
  EXPECT_LE(turns, 54 * 6);

  // What the controller saw: 25 % is stored as 128 + 25 x 1.27.
  write_cell(3, 5, "25");
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
  app->run([this] { form().transfers.Command5_Click(); });
  EXPECT_EQ(c().Command5.back_color, kRed);
  ASSERT_TRUE(wait_until([&] { return c().Command5.back_color == kButtonFace; }));
  EXPECT_TRUE(std::filesystem::exists(state));
  EXPECT_EQ(simulator.controller().permanent().ram.at(at), 160);
  Simulator restarted(simulator_options(folder.path()));
  EXPECT_TRUE(restarted.state_error().empty()) << restarted.state_error();
  EXPECT_EQ(restarted.controller().working_memory().at(at), 160);
  EXPECT_EQ(restarted.controller().working_memory().at(at + 1), 128);
  EXPECT_EQ(dialogs.shown.size(), 1u);
}

}  // namespace
}  // namespace nerit::ui
