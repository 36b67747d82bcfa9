// The whole program against the virtual controller: the nerit-sim program on its pseudo-terminal,
// and the in-process one of --simulate. Connect, read the tune, change a cell, write it, read it
// back. Also how the program's waits treat the line: a wait sleeps between replies.
#include <QLabel>
#include <QProcess>
#include <QScopeGuard>
#include <filesystem>

#include "link/cell_codec.h"
#include "setup/sensor_calibration.h"
#include "sim/default_tune.h"
#include "sim/memory_map.h"
#include "tests/support/reply_frames.h"
#include "tests/ui/ui_test_support.h"
#include "ui/qt_platform.h"
#include "ui/simulator.h"

namespace nerit::ui {
namespace {

class EndToEnd : public ProgramTest {
 protected:
  void connect(MsgAnswer read) {
    dialogs.expect(testing::kOnlineQuestion, read);
    app->run([this] { form().session.Command1_Click(); });
    EXPECT_EQ(w().Label4[0]->text(), "online");
    EXPECT_EQ(w().Label4[2]->text().toStdString(), sim::kDefaultFirmware);
  }
  void write_cell(int row, int col, const char* text) {
    app->run([&] {
      c().MSFlexGrid2.set_text(row, col, text);
      form().transfers.Command9_Click();
    });
  }
  int logged(const char* marker) {
    return static_cast<int>(w().List1->findItems(marker, Qt::MatchContains).size());
  }
};

TEST_F(EndToEnd, ConnectsReadsWritesAndReadsBackTheSimulatorProgram) {
  QProcess sim;
  const auto stop = qScopeGuard([&] { sim.kill(), sim.waitForFinished(); });
  sim.start(NERIT_SIM_PATH, {"--no-pacing"});
  ASSERT_TRUE(wait_until([&] { return sim.canReadLine(); }));  // its first line: the device
  const std::string device = sim.readLine().trimmed().toStdString();
  ASSERT_EQ(device.rfind("/dev/", 0), 0u) << device;
  start({device});
  app->run([this] {  // leaves in the window what only a read from the controller can put back
    for (int row = 0; row <= 16; ++row)
      for (int col = 1; col <= 16; ++col)
        c().MSFlexGrid2.set_text(row, col, "x"), c().MSFlexGrid3.set_text(row, col, "x");
  });
  connect(MsgAnswer::Yes);
  EXPECT_EQ(logged(" -> Read SRam @ 0x"), 54);
  const sim::ControllerMemory tune = sim::default_tune();
  for (int col = 1; col <= 16; ++col) {
    const std::uint32_t at = sim::kAirflowMap + 32 * 15 + 2 * (col - 1);  // row 16
    EXPECT_EQ(cell(w().MSFlexGrid2, 16, col), "0") << col;
    EXPECT_EQ(cell(w().MSFlexGrid3, 16, col).toStdString(),
              airflow_cell_text(tune.ram.at(at), tune.ram.at(at + 1), 0))
        << col;
  }

  // Change one cell, write everything, forget the cell and read it back.
  write_cell(3, 5, "25");
  EXPECT_EQ(logged(" -> Write SDram @ 0x"), 54);
  app->run([this] {
    c().MSFlexGrid2.set_text(3, 5, "x");
    form().session.Command12_Click();
  });
  EXPECT_EQ(cell(w().MSFlexGrid2, 3, 5), "25");
  EXPECT_EQ(logged(" -> Read SRam @ 0x"), 108);
  EXPECT_EQ(dialogs.shown.size(), 1u);  // the question only, no error
  EXPECT_EQ(sim.state(), QProcess::Running);
}

TEST_F(EndToEnd, SimulateModeServesTheVirtualControllerInProcessAndAReadSleeps) {
  Simulator simulator(simulator_options(folder.path()));
  ASSERT_TRUE(simulator.start()) << simulator.error();
  run_events_for(300);
  EXPECT_EQ(simulator.wakeups(), 0);  // nothing scheduled, nothing written: no wakeups
  // As main() starts --simulate: the MPX4250 tables go into the empty program folder before the
  // window's first activation reads Pressure.raw, then one log line says so.
  ASSERT_TRUE(write_mpx4250_tables_if_none(folder.path()));
  start({}, simulator.slave_path());
  log_simulator_pressure_tables(*app, folder.path());
  ASSERT_EQ(w().List1->count(), 1);
  EXPECT_EQ(log_text(0), " -> No pressure tables in " + folder.path().string() +
                             ": wrote the MPX4250 calibration for the virtual controller");
  EXPECT_EQ(std::filesystem::file_size(folder.path() / "PressureSensor.dat"), 251u);  // 0-250 kPa
  EXPECT_EQ(std::filesystem::file_size(folder.path() / "Pressure.raw"), 424u);        // raw 0-211
  EXPECT_EQ(c().pressure_table[211], 250);
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
  EXPECT_EQ(logged(" -> Read SRam @ 0x"), 54);
  // The simulator keeps the wire rate: 54 replies of 22 bytes at 10 bits / 19200 baud.
  EXPECT_GE(read_ms, 54 * 22 * 10 * 1000 / 19200);
  // A few turns of the event loop per reply; a wait that kept the loop busy would take
  // thousands in the 0.6 s the replies need on the paced line.
  EXPECT_GE(turns, 54);
  EXPECT_LE(turns, 54 * 6);
  // The demo tune: a shaped correction map, boost control on from 150 kPa (raw 130).
  const sim::MemoryWindow& ram = simulator.controller().working_memory();
  EXPECT_EQ(c().MSFlexGrid2.text(16, 16), correction_cell_text(ram.at(sim::kCorrectionMap + 255)));
  EXPECT_NE(c().MSFlexGrid2.text(16, 16), "0");
  EXPECT_EQ(form().panel_controls.Check3.value, 1);
  EXPECT_EQ(form().panel_controls.boost_start_text.text, "150");

  // What the controller saw: 25 % is stored as 128 + 25 x 1.27.
  write_cell(3, 5, "25");
  const std::uint32_t at = sim::kCorrectionMap + 16 * 2 + 4;
  EXPECT_EQ(simulator.controller().working_memory().at(at), 160);

  // Idle between commands: the server is not woken when nothing is due.
  const long long wakeups = simulator.wakeups();
  run_events_for(500);
  EXPECT_LE(simulator.wakeups() - wakeups, 2);

  // "Make Permanent" goes to Simulator.state in the program folder and survives a restart.
  app->run([this] { form().transfers.Command5_Click(); });
  ASSERT_TRUE(wait_until([&] { return c().Command5.back_color == kButtonFace; }));
  Simulator restarted(simulator_options(folder.path()));
  EXPECT_EQ(restarted.controller().working_memory().at(at), 160);
  EXPECT_EQ(dialogs.shown.size(), 1u);
}

}  // namespace
}  // namespace nerit::ui
