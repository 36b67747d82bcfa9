// The data log: its file name in the system's date and time forms, the exact bytes written,
// the menu states around it, the failures, and a recording against the virtual controller.
#include "files/data_log.h"

#include <gtest/gtest.h>

#include <fstream>

#include "shell/fault_boundary.h"
#include "shell/numbers.h"
#include "sim/controller.h"
#include "tests/link/link_fixture.h"
#include "tests/support/sim_wire.h"

namespace nerit::testing {
namespace {

using Strings = std::vector<std::string>;

std::string read_text(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(DataLogFormat, RowsJoinSevenValuesWithSemicolonsInTheSystemsDecimalForm) {
  const DataLogValues v{2500, 12.5, 3000, -3, 150, 42, 0};
  EXPECT_EQ(data_log_row(v, '.'), "2500;12.5;3000;-3;150;42;0");
  EXPECT_EQ(data_log_row(v, ','), "2500;12,5;3000;-3;150;42;0");
}

TEST(DataLogFormat, TheStatusTextCountsRowsAndTime) {
  EXPECT_EQ(recording_status("DataLog_a.csv", 1, 999), "DataLog_a.csv · 1 row · 0:00:00");
  EXPECT_EQ(recording_status("DataLog_a.csv", 3721, 3723000),
            "DataLog_a.csv · 3721 rows · 1:02:03");
}

class DataLogTest : public LinkFixture {
 protected:
  DataLogTest() {
    go_online();
    f.vars.rpmfaktor = 30000000;
    for (int raw = 0; raw < 256; ++raw) f.c.pressure_table[raw] = static_cast<std::int16_t>(raw);
    f.vars.tps_min = 20, f.vars.tps_max = 220;
  }
  void stream(int on) {
    f.c.Check1.value = on;
    f.stream.Check1_Click();
  }
  // A status frame: speed period, injector in and out, MAP and throttle bytes, adjust, airflow.
  void status(int period, int in, int out, int map, int tps, int adjust, int airflow) {
    fp.comm.arrive_after(20, ReplyFrame(0xFF)
                                 .status_word(4, period)
                                 .status_word(2, in)
                                 .status_word(3, out)
                                 .byte(5, map)
                                 .byte(4, tps)
                                 .byte(12, adjust)
                                 .status_word(6, airflow));
    fp.clock.advance(20);
  }
  std::string menus() const {
    return std::string("Start ") + (f.c.menus.lstart.enabled ? "1" : "0") + " Stop " +
           (f.c.menus.lstop.enabled ? "1" : "0") + " logging " + std::to_string(f.c.logging);
  }
  std::filesystem::path log_file(const std::string& name = "DataLog_15-11-2026_12-00-00.csv") {
    return folder.path() / name;
  }
  static constexpr const char* kHeader = "Drehzahl  Inj_in  Inj_out Inj_adj MAP TPS Airflow\r\n";
};

TEST_F(DataLogTest, TheFileIsNamedFromAnEnglishDateAndTime) {
  fp.locale.date_pattern = "M/d/yyyy";
  fp.locale.clock_pattern = "h:mm:ss AP";
  fp.clock.advance(3 * 3600 * 1000 + 5000);
  stream(1);
  f.data_log.lstart_Click();
  EXPECT_TRUE(std::filesystem::exists(log_file("DataLog_11-15-2026_3-00-05 PM.csv")));
}

TEST_F(DataLogTest, StartWritesTheHeaderAndEachStatusFrameOneCrLfRow) {
  stream(1);
  f.data_log.lstart_Click();
  EXPECT_EQ(menus(), "Start 0 Stop 1 logging 1");
  status(10000, 250, 300, 200, 120, 128, 83);
  status(6000, 1000, 1100, 101, 20, 0, 0);
  status(1000, 0, 65535, 255, 250, 255, 100);  // 30000 rpm is a spike: the speed before stays
  f.data_log.lstop_Click();
  EXPECT_EQ(menus(), "Start 1 Stop 0 logging 0");
  EXPECT_FALSE(f.data_log.recording());
  EXPECT_EQ(read_text(log_file()), std::string(kHeader) +
                                       "3000;1000;1200;0;100;50;3012\r\n"
                                       "5000;4000;4400;-100;1;0;0\r\n"
                                       "5000;0;262140;99;155;100;2500\r\n");
}

TEST_F(DataLogTest, ASecondRecordingInTheSameSecondOverwritesTheFirst) {
  stream(1);
  f.data_log.lstart_Click();
  status(10000, 250, 300, 200, 120, 128, 83);
  f.data_log.lstop_Click();
  fp.clock.advance(900);  // 12:00:00.960
  f.data_log.lstart_Click();
  f.data_log.lstop_Click();
  EXPECT_EQ(read_text(log_file()), kHeader);
}

TEST_F(DataLogTest, StreamOffWhileRecordingKeepsTheFileOpenUntilTheStreamIsBack) {
  stream(1);
  f.data_log.lstart_Click();
  status(10000, 250, 300, 200, 120, 128, 83);
  stream(0);
  EXPECT_EQ(menus(), "Start 0 Stop 1 logging 1");
  EXPECT_TRUE(f.data_log.recording());
  fp.clock.advance(1000);
  stream(1);
  EXPECT_EQ(menus(), "Start 1 Stop 1 logging 1");
  status(6000, 1000, 1100, 101, 20, 0, 0);
  f.data_log.lstop_Click();
  EXPECT_EQ(read_text(log_file()), std::string(kHeader) +
                                       "3000;1000;1200;0;100;50;3012\r\n"
                                       "5000;4000;4400;-100;1;0;0\r\n");
}

TEST_F(DataLogTest, AFileThatCannotBeCreatedIsAnErrorAndLoggingStaysOff) {
  stream(1);
  f.vars.pfad = folder.path() / "missing";
  fp.dialogs.expect("Error|Critical|Ok|Cannot create the data log " +
                    (folder.path() / "missing" / "DataLog_15-11-2026_12-00-00.csv").string());
  run_handler(fp.dialogs, [&] { f.data_log.lstart_Click(); });
  EXPECT_EQ(menus(), "Start 1 Stop 0 logging 0");
  status(10000, 250, 300, 200, 120, 128, 83);
  EXPECT_FALSE(f.data_log.recording());
}

TEST_F(DataLogTest, TheProgramsEndClosesTheFile) {
  stream(1);
  f.data_log.lstart_Click();
  status(10000, 250, 300, 200, 120, 128, 83);
  f.shell.Form_Unload();
  EXPECT_FALSE(f.data_log.recording());
  EXPECT_EQ(read_text(log_file()), std::string(kHeader) + "3000;1000;1200;0;100;50;3012\r\n");
}

TEST_F(DataLogTest, TheStatusTextFollowsTheRecording) {
  stream(1);
  EXPECT_EQ(f.data_log.status_text(), "");
  f.data_log.lstart_Click();
  status(10000, 250, 300, 200, 120, 128, 83);
  fp.clock.advance(64980);
  EXPECT_EQ(f.data_log.status_text(), "DataLog_15-11-2026_12-00-00.csv · 1 row · 0:01:05");
  f.data_log.lstop_Click();
  EXPECT_EQ(f.data_log.status_text(), "");
}

// Against the virtual controller: every status frame it sent while the log recorded is one
// row, with the values worked out here from the frame's bytes.
TEST(DataLogEndToEnd, EveryFrameTheControllerSentIsOneRow) {
  FakePlatform fp;
  TempFolder folder;
  std::vector<std::uint8_t> raw_table;  // Pressure.raw: raw byte r holds r + 50 kPa
  for (int r = 0; r < 256; ++r)
    raw_table.push_back(static_cast<std::uint8_t>((r + 50) & 0xFF)),
        raw_table.push_back(static_cast<std::uint8_t>((r + 50) >> 8));
  folder.write("Pressure.raw", raw_table);
  Program program{fp.platform, folder.path()};
  Form1& f = program.form1;
  f.Form_Load();
  f.shell.Form_Activate();
  sim::Controller controller;
  SimWire wire(fp.comm, controller);
  fp.dialogs.expect(kOnlineQuestion, MsgAnswer::Yes);
  f.session.Command1_Click();  // connects and reads the tune: four cylinders, throttle 20..230
  ASSERT_EQ(f.vars.connected, 1);

  f.c.Check1.value = 1;
  f.stream.Check1_Click();
  fp.clock.advance(500);
  f.data_log.lstart_Click();
  std::vector<std::string> frames;
  wire.on_emit = [&](const std::string& bytes) {
    if (f.c.logging == 1 && bytes.size() == 22 && bytes[1] == '\xFF') frames.push_back(bytes);
  };
  fp.clock.advance(3000);
  f.data_log.lstop_Click();
  ASSERT_GE(frames.size(), 55u);  // 20 a second

  std::string expected = "Drehzahl  Inj_in  Inj_out Inj_adj MAP TPS Airflow\r\n";
  double rpm = 0;
  for (const std::string& fr : frames) {
    auto b = [&](int i) { return static_cast<double>(static_cast<unsigned char>(fr[i])); };
    auto w = [&](int k) { return b(2 * k + 2) + 256 * b(2 * k + 3); };
    if (w(4) > 0 && std::trunc(30000000 / w(4)) < 9000) rpm = std::trunc(30000000 / w(4));
    const double tps = std::clamp(std::trunc((b(4) - 20) * (100.0 / 210)), 0.0, 100.0);
    expected += data_log_row({rpm, 4 * w(2), 4 * w(3), round_half_even(b(12) * 100 / 128 - 100),
                              b(5) + 50 - 100, tps, w(6) ? std::trunc(250000 / w(6)) : 0},
                             '.') +
                "\r\n";
  }
  EXPECT_EQ(read_text(f.data_log.file()), expected);
}

}  // namespace
}  // namespace nerit::testing
