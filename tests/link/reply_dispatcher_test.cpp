// Replies from the controller as they arrive on the port of the composed main window: framing,
// then every reply type decoded into the log, the grids, the panels and the variables.
#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "app/form1.h"
#include "tests/support/fake_platform.h"
#include "tests/support/reply_frames.h"

namespace nerit {
namespace {

using Strings = std::vector<std::string>;
using testing::ReplyFrame;
using testing::sram_reply;

class ReplyDispatch : public ::testing::Test {
 protected:
  void SetUp() override {
    form.shell.Form_Load();
    fp.comm.present = {1};
    fp.comm.set_comm_port(1);
    fp.comm.set_port_open(true);
    vars.rpmfaktor = 30000000;
  }
  void TearDown() override {
    for (const auto& box : fp.dialogs.shown) ADD_FAILURE() << "message box: " << box.text;
  }

  // One chunk, one receive event.
  void arrive(const std::string& bytes, int event = SerialPort::kReceive) {
    fp.comm.arrive_after(1, bytes, event);
    fp.clock.advance(1);
  }
  static ReplyFrame status() { return ReplyFrame(0xFF); }
  std::string live(int row) const { return c.MSFlexGrid1.text(row, 1); }
  Strings header(const Grid& g, int from, int to) const {
    Strings s;
    for (int col = from; col <= to; ++col) s.push_back(g.text(0, col));
    return s;
  }
  Strings row_of(const Grid& g, int row, int from, int to) const {
    Strings s;
    for (int col = from; col <= to; ++col) s.push_back(g.text(row, col));
    return s;
  }

  testing::FakePlatform fp;
  testing::TempFolder folder;
  Program program{fp.platform, folder.path()};
  Form1& form = program.form1;
  Form1Controls& c = form.c;
  ProgramState& vars = form.vars;
  LinkState& link = form.link;
};

const std::string kFirmware =
    ReplyFrame(0xFD).address(0x0102).text("Nerit SIM V1.00 ");  // any bytes 2 and 3

// --- framing ---------------------------------------------------------------------------------

TEST_F(ReplyDispatch, FrameInTwoChunksIsDecodedOnceWhenItsCrLfArrives) {
  arrive(kFirmware.substr(0, 10));
  EXPECT_TRUE(c.List1.items.empty());
  EXPECT_EQ(vars.connected, 0);
  EXPECT_EQ(link.rxbuffer, kFirmware.substr(0, 10));

  arrive(kFirmware.substr(10));
  EXPECT_EQ(c.List1.items, Strings{"12:00:00->  online Firmware: Nerit SIM V1.00 "});
  EXPECT_EQ(vars.connected, 1);
  EXPECT_TRUE(link.rxbuffer.empty());
}

TEST_F(ReplyDispatch, OnlyTheLastTwentyTwoCharactersAreTheFrame) {
  const std::string frame = sram_reply(0x2A0, {255});
  arrive(kFirmware.substr(0, 8) + frame);  // 30 characters
  EXPECT_EQ(c.List1.items, Strings{"12:00:00 -> Read SRam @ 0x2A0"});
  EXPECT_EQ(c.MSFlexGrid2.text(1, 1), "100");
  EXPECT_EQ(vars.connected, 0);
  EXPECT_TRUE(link.rxbuffer.empty());
}

TEST_F(ReplyDispatch, FrameWithAnotherStartByteIsDroppedWithTheBuffer) {
  std::string frame = kFirmware;
  frame[0] = 'u';
  arrive(frame);
  EXPECT_TRUE(c.List1.items.empty());
  EXPECT_EQ(vars.connected, 0);
  EXPECT_EQ(c.Label4[2].caption, "-");
  EXPECT_TRUE(link.rxbuffer.empty());
}

TEST_F(ReplyDispatch, ChunkEndingInsideTheNextFrameWaitsAndKeepsOnlyTheLastFrame) {
  const std::string first = sram_reply(0x2A0, {255, 255});
  const std::string second = sram_reply(0x2B0, {1, 64});
  arrive(first + second.substr(0, 5));
  EXPECT_TRUE(c.List1.items.empty());
  EXPECT_EQ(link.rxbuffer.size(), 27u);

  arrive(second.substr(5));
  EXPECT_EQ(c.List1.items, Strings{"12:00:00 -> Read SRam @ 0x2B0"});
  EXPECT_EQ(row_of(c.MSFlexGrid2, 1, 1, 2), (Strings{"0", "0"}));
  EXPECT_EQ(row_of(c.MSFlexGrid2, 2, 1, 3), (Strings{"-100", "-50", "-101"}));
  EXPECT_TRUE(link.rxbuffer.empty());
}

TEST_F(ReplyDispatch, OverrunAndOverflowEventsChangeNothing) {
  for (int event : {SerialPort::kOverrun, SerialPort::kRxOverflow}) {
    link.rxbuffer = kFirmware;  // a whole frame waiting: only a receive event may cut it
    arrive(kFirmware, event);
    EXPECT_EQ(link.rxbuffer, kFirmware) << event;
    EXPECT_TRUE(c.List1.items.empty()) << event;
    EXPECT_EQ(vars.connected, 0) << event;
  }
}

TEST_F(ReplyDispatch, DebugTextLineEndsWithACarriageReturnChunk) {
  const struct {
    int debugmode;
    Strings lines;
    std::string left;
  } cases[] = {{1, {"RPM 100"}, ""}, {0, {}, "RPM 100\r"}};
  for (const auto& k : cases) {
    c.List1.clear();
    link.rxbuffer.clear();
    vars.debugmode = k.debugmode;
    arrive("RPM 100");
    EXPECT_TRUE(c.List1.items.empty());
    arrive("\r");
    EXPECT_EQ(c.List1.items, k.lines) << k.debugmode;
    EXPECT_EQ(link.rxbuffer, k.left) << k.debugmode;
  }
}

// --- firmware --------------------------------------------------------------------------------

TEST_F(ReplyDispatch, FirmwareReplyGoesOnlineWithItsSixteenCharacters) {
  arrive(kFirmware);
  EXPECT_EQ(c.List1.items, Strings{"12:00:00->  online Firmware: Nerit SIM V1.00 "});
  EXPECT_EQ(c.Label4[2].caption, "Nerit SIM V1.00 ");
  EXPECT_EQ(vars.connected, 1);

  arrive(ReplyFrame(0xFD).text("V2"));  // zero bytes are part of the text
  EXPECT_EQ(c.Label4[2].caption, std::string("V2") + std::string(14, '\0'));
}

// --- status ----------------------------------------------------------------------------------

TEST_F(ReplyDispatch, StatusLogLineShowsBytesFourToNineteenInHex) {
  const int bytes[16] = {0x00, 0x01, 0x0A, 0xFF, 0x10, 0x7F, 0x80, 0x0F,
                         0xF0, 0x03, 0x30, 0xAB, 0xCD, 0xEF, 0x02, 0x20};
  ReplyFrame f = status();
  for (int i = 0; i < 16; ++i) f.byte(4 + i, static_cast<std::uint8_t>(bytes[i]));
  arrive(f);
  arrive(status());
  EXPECT_EQ(c.List1.items,
            (Strings{"12:00:00 -> Status:  0 1 A FF 10 7F 80 F F0 3 30 AB CD EF 2 20",
                     "12:00:00 -> Status:  0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0"}));
}

TEST_F(ReplyDispatch, EngineSpeedRejectsSpikesAndAZeroPeriod) {
  const struct {
    double rpmfaktor;
    int w4;
    double drehzahl;
  } steps[] = {
      {30000000, 10000, 3000},  // new speed
      {30000000, 3333, 3000},   // 9000.9: kept
      {30000000, 3334, 8998},   // 8998.2: taken, whole part
      {18000000, 2000, 8998},   // exactly 9000: kept
      {30000000, 0, 8998},      // no period: kept, the frame goes on
  };
  for (const auto& s : steps) {
    vars.rpmfaktor = s.rpmfaktor;
    arrive(status().status_word(4, s.w4).status_word(2, s.w4 / 2));
    EXPECT_EQ(vars.drehzahl, s.drehzahl) << s.w4;
    EXPECT_EQ(live(1), std::to_string(static_cast<int>(s.drehzahl))) << s.w4;
    EXPECT_EQ(live(2), std::to_string(s.w4 / 2 * 4)) << s.w4;
  }
}

TEST_F(ReplyDispatch, LiveRowsOfOneStatusFrame) {
  c.pressure_table[200] = 250;
  vars.tps_min = 20;
  vars.tps_max = 220;
  using Edit = std::function<void(ReplyFrame&)>;
  using Setup = std::function<void()>;
  const struct {
    const char* name;
    Setup setup;
    Edit edit;
    int row;
    const char* text;
  } cases[] = {
      {"inj in", {}, [](ReplyFrame& f) { f.status_word(2, 250); }, 2, "1000"},
      {"inj out", {}, [](ReplyFrame& f) { f.status_word(3, 65535); }, 3, "262140"},
      {"adjust 128", {}, [](ReplyFrame& f) { f.byte(12, 128); }, 4, "0"},
      {"adjust 0", {}, [](ReplyFrame& f) { f.byte(12, 0); }, 4, "-100"},
      {"adjust 255", {}, [](ReplyFrame& f) { f.byte(12, 255); }, 4, "99"},
      {"adjust 192", {}, [](ReplyFrame& f) { f.byte(12, 192); }, 4, "50"},
      {"adjust tie down", {}, [](ReplyFrame& f) { f.byte(12, 48); }, 4, "-62"},  // -62.5
      {"adjust tie up", {}, [](ReplyFrame& f) { f.byte(12, 16); }, 4, "-88"},    // -87.5
      {"boost kPa", {}, [](ReplyFrame& f) { f.byte(5, 200); }, 5, "150"},
      {"boost kPa table 0", {}, [](ReplyFrame& f) { f.byte(5, 7); }, 5, "-100"},
      {"boost volts", [this] { c.boost_display = 2; }, [](ReplyFrame& f) { f.byte(5, 255); }, 5,
       "5.00"},
      {"boost volts comma",
       [this] {
         c.boost_display = 2;
         fp.locale.decimal = ',';
       },
       [](ReplyFrame& f) { f.byte(5, 128); }, 5, "2,51"},
      {"boost raw", [this] { c.boost_display = 3; }, [](ReplyFrame& f) { f.byte(5, 200); }, 5,
       "200"},
      {"tps below", {}, [](ReplyFrame& f) { f.byte(4, 10); }, 6, "0"},
      {"tps just below", {}, [](ReplyFrame& f) { f.byte(4, 19); }, 6, "0"},
      {"tps above", {}, [](ReplyFrame& f) { f.byte(4, 250); }, 6, "100"},
      {"tps half", {}, [](ReplyFrame& f) { f.byte(4, 120); }, 6, "50"},
      {"tps whole part", {}, [](ReplyFrame& f) { f.byte(4, 27); }, 6, "3"},
      {"airflow none", {}, [](ReplyFrame& f) { f.status_word(6, 0); }, 7, "0"},
      {"airflow 83", {}, [](ReplyFrame& f) { f.status_word(6, 83); }, 7, "3012"},
      {"analog other type", [this] { c.Combo1.select(1); }, [](ReplyFrame& f) { f.byte(16, 51); },
       8, "--"},
      {"analog no type", {}, [](ReplyFrame& f) { f.byte(16, 51); }, 8, "--"},
      {"analog", [this] { c.Combo1.select(2); }, [](ReplyFrame& f) { f.byte(16, 128); }, 8, "2.51"},
      {"analog full", [this] { c.Combo1.select(2); }, [](ReplyFrame& f) { f.byte(16, 255); }, 8,
       "5.00"},
      {"airflow in none", {}, [](ReplyFrame& f) { f.status_word(8, 0); }, 9, "0"},
      {"airflow in", {}, [](ReplyFrame& f) { f.status_word(8, 12500); }, 9, "20"},
      {"airflow in slow", {}, [](ReplyFrame& f) { f.status_word(8, 65535); }, 9, "3"},
  };
  for (const auto& k : cases) {
    c.boost_display = 1;
    fp.locale.decimal = '.';
    c.Combo1.select(-1);
    if (k.setup) k.setup();
    ReplyFrame f = status();
    k.edit(f);
    arrive(f);
    EXPECT_EQ(live(k.row), k.text) << k.name;
  }
}

TEST_F(ReplyDispatch, StatusKeepsVoltsAndThrottleVariables) {
  vars.tps_min = 20;
  vars.tps_max = 220;
  fp.locale.decimal = ',';
  arrive(status().byte(4, 120).byte(5, 51));
  EXPECT_EQ(vars.map_volt, "1,00");
  EXPECT_EQ(vars.tps_in_volt, "2,35");
  EXPECT_EQ(vars.tps_raw, 120);
  EXPECT_EQ(vars.tps_in, 50);
}

TEST_F(ReplyDispatch, EqualThrottleCalibrationKeepsTpsAndGoesOn) {
  vars.tps_min = vars.tps_max = 100;
  vars.tps_in = 42;
  arrive(status().byte(4, 150).status_word(6, 83));
  EXPECT_EQ(vars.tps_in, 42);
  EXPECT_EQ(live(6), "42");
  EXPECT_EQ(live(7), "3012");
}

TEST_F(ReplyDispatch, HighlightFollowsTheOperatingCellWhenItMoves) {
  std::vector<std::pair<int, int>> calls;
  form.dispatcher.hooks.highlight = [&](int r, int col) { calls.emplace_back(r, col); };
  using Calls = std::vector<std::pair<int, int>>;
  const struct {
    int check2, fokus, b13;
    Calls expected;
  } steps[] = {
      {0, 0, 0x23, {}},        // not ticked: nothing, the index is still remembered
      {1, 0, 0x23, {}},        // ticked, same index
      {1, 0, 0x30, {{4, 1}}},  // column 0 is raised to 1
      {1, 0, 0x30, {}},        // same index again
      {1, 0, 0x23, {{3, 3}}},   {1, 1, 0x45, {{3, 3}}},  // keyboard focus: row and column kept
      {1, 0, 0xFF, {{16, 15}}},
  };
  for (const auto& s : steps) {
    calls.clear();
    c.Check2.value = s.check2;
    vars.fokus = s.fokus;
    arrive(status().byte(13, static_cast<std::uint8_t>(s.b13)));
    EXPECT_EQ(calls, s.expected) << s.b13;
  }
}

TEST_F(ReplyDispatch, AutomapGetsSpeedLoadByTypeAndAirflowIn) {
  struct Call {
    double speed, load, value;
  };
  std::vector<Call> calls;
  form.dispatcher.hooks.automap = [&](double s, double l, double v) { calls.push_back({s, l, v}); };
  c.pressure_table[200] = 250;
  vars.tps_min = 20;
  vars.tps_max = 220;
  const std::string frame = status()
                                .status_word(4, 10000)   // 3000 rpm
                                .byte(4, 120)            // 50 %
                                .byte(5, 200)            // 250 kPa absolute
                                .byte(16, 51)            // 1000 mV
                                .status_word(6, 83)      // out 3012 Hz
                                .status_word(8, 12500);  // in 20 Hz

  arrive(frame);
  EXPECT_TRUE(calls.empty()) << "Automap not ticked";

  c.Check5.value = 1;
  const double loads[] = {50, 250, 1000, 20};
  for (int index = 0; index < 4; ++index) {
    calls.clear();
    c.Combo1.select(index);
    arrive(frame);
    ASSERT_EQ(calls.size(), 1u) << index;
    EXPECT_EQ(calls[0].speed, 3000) << index;
    EXPECT_EQ(calls[0].load, loads[index]) << index;
    EXPECT_EQ(calls[0].value, 20) << index;
  }
}

TEST_F(ReplyDispatch, LogRowGetsTheSevenValuesOfEveryStatusFrame) {
  std::vector<std::vector<double>> rows;
  form.dispatcher.hooks.log_row = [&](const LiveRow& r) {
    rows.push_back({r.drehzahl, r.inj_in_us, r.inj_out_us, r.adjust_percent, r.boost_kpa, r.tps_in,
                    r.airflow_out_hz});
  };
  c.pressure_table[200] = 250;
  vars.tps_min = 20;
  vars.tps_max = 220;
  arrive(status()
             .status_word(4, 10000)
             .status_word(2, 1000)
             .status_word(3, 1500)
             .byte(12, 192)
             .byte(5, 200)
             .byte(4, 120)
             .status_word(6, 83));
  arrive(status().byte(12, 128).byte(4, 10));
  EXPECT_EQ(rows, (std::vector<std::vector<double>>{{3000, 4000, 6000, 50, 150, 50, 3012},
                                                    {3000, 0, 0, 0, -100, 0, 0}}));
}

// --- SRAM blocks -----------------------------------------------------------------------------

TEST_F(ReplyDispatch, EverySramBlockIsLoggedAndAcknowledged) {
  for (int address :
       {0x240, 0x250, 0x260, 0x270, 0x280, 0x290, 0x2A0, 0x390, 0x3A0, 0x3B0, 0x590}) {
    c.List1.clear();
    link.reply_done = 0;
    arrive(sram_reply(address, {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
    char expected[64];
    std::snprintf(expected, sizeof expected, "12:00:00 -> Read SRam @ 0x%X", address);
    EXPECT_EQ(c.List1.items, Strings{expected});
    EXPECT_EQ(link.reply_done, 1) << expected;
  }
}

TEST_F(ReplyDispatch, SettingsBlockOne) {
  const struct {
    int airflowtype, boost;
    const char* caption;
    int combo3;
    bool analog, boost_on;
  } cases[] = {
      {0, 1, "Airflow Out: Karman Vortex 20-3000 Hz", 0, false, true},
      {1, 0, "Airflow Out: Voltage 0-5000 mV", 1, true, false},
      {3, 2, "Airflow Out: Voltage 0-5000 mV", 3, true, false},
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(k.airflowtype);
    c.Check3.value = k.boost_on ? 0 : 1;
    c.Frame1[kPanelBoostcontrol].enabled = !k.boost_on;
    c.Combo3.enabled = k.analog ? false : true;
    arrive(sram_reply(0x240, {3, 2, 20, 220, 0x50, 0x01, 0x34, 0x12, 0xE8, 0x03, 0x20, 0x03, 160,
                              static_cast<std::uint8_t>(k.airflowtype), 200,
                              static_cast<std::uint8_t>(k.boost)}));
    EXPECT_EQ(c.Combo1.list_index, 3);
    EXPECT_EQ(vars.drucksensor, 2);
    EXPECT_EQ(vars.tps_min, 20);
    EXPECT_EQ(vars.tps_max, 220);
    EXPECT_EQ(vars.injoffset_in, 336);
    EXPECT_EQ(vars.injoffset_out, 0x1234);
    EXPECT_EQ(vars.injalt, 1000);
    EXPECT_EQ(vars.injneu, 800);
    EXPECT_EQ(vars.injsizecorr, 160);
    EXPECT_EQ(vars.airflowtype, k.airflowtype);
    EXPECT_EQ(vars.aoutmax, 200);
    EXPECT_EQ(c.Frame1[kPanelAirflowOutput].caption, k.caption);
    EXPECT_EQ(c.OptionFrequency.value, !k.analog);
    EXPECT_EQ(c.OptionAnalog.value, k.analog);
    EXPECT_EQ(c.Combo3.list_index, k.combo3);
    EXPECT_EQ(c.Combo3.enabled, k.analog);
    EXPECT_EQ(c.Check3.value, k.boost_on ? 1 : 0);
    EXPECT_EQ(c.Frame1[kPanelBoostcontrol].enabled, k.boost_on);
  }
}

TEST_F(ReplyDispatch, SettingsBlockTwo) {
  const struct {
    int zylinder, flags;
    double rpmfaktor;
    int check6, check4;
  } cases[] = {
      {4, 0x01, 30000000, 1, 0},
      {6, 0x02, 20000000, 0, 1},
      {8, 0x03, 15000000, 1, 1},
      {5, 0xFC, 12345, 0, 0},
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(k.zylinder);
    vars.rpmfaktor = 12345;
    c.Check6.value = 1 - k.check6;
    c.Check4.value = 1 - k.check4;
    c.accel_param[2] = 77;
    arrive(sram_reply(0x250, {40, 128, static_cast<std::uint8_t>(k.zylinder), 4,
                              static_cast<std::uint8_t>(k.flags), 5, 100, 6, 120, 30}));
    EXPECT_EQ(c.boost_start, 40);
    EXPECT_EQ(c.boost_set, 128);
    EXPECT_EQ(vars.zylinder, k.zylinder);
    EXPECT_EQ(vars.rpmfaktor, k.rpmfaktor);
    EXPECT_EQ(vars.injchannels, 4);
    EXPECT_EQ(c.Check6.value, k.check6);
    EXPECT_EQ(c.Check4.value, k.check4);
    EXPECT_EQ(c.accel_param, (std::array<double, 6>{5, 100, 77, 6, 120, 30}));
    const Strings labels{c.Label8[0].caption, c.Label8[1].caption, c.Label8[2].caption,
                         c.Label8[3].caption, c.Label8[4].caption, c.Label8[5].caption};
    EXPECT_EQ(labels, (Strings{"5", "100", "10", "6", "120", "30"}));
    EXPECT_EQ(c.HScroll1[1].value, 100);
    EXPECT_EQ(c.HScroll1[5].value, 30);
  }
}

TEST_F(ReplyDispatch, LoadAxisBlocksFillLoadPoints) {
  arrive(sram_reply(0x260,
                    {0x14, 0x00, 0x40, 0x01, 0x34, 0x12, 0xA7, 0x7F, 0, 0, 1, 0, 0xFF, 0, 0, 1}));
  arrive(sram_reply(0x270, {1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8}));
  EXPECT_EQ(c.load_points,
            (std::array<std::int16_t, 17>{0, 20, 320, 0x1234, 32679, 0, 1, 255, 256, 0x0101, 0x0202,
                                          0x0303, 0x0404, 0x0505, 0x0606, 0x0707, 0x0808}));
}

TEST_F(ReplyDispatch, RpmAxisBlocksFillPointsAndBothHeadingsInHundreds) {
  // Whole hundreds, ties to even: 1250 -> 1200, 750 -> 800, 3750 -> 3800, 6250 -> 6200.
  const int first[8] = {60000, 7317, 24000, 40000, 30000, 10000, 6000, 3750};
  const int second[8] = {5000, 4000, 8000, 4800, 8571, 8572, 6667, 6122};
  auto block = [](int address, const int* periods) {
    ReplyFrame f(0x0C);
    f.address(address);
    for (int k = 0; k < 8; ++k) f.word(4 + 2 * k, periods[k]);
    return f.bytes();
  };
  arrive(block(0x280, first));
  const Strings low{"500", "4100", "1200", "800", "1000", "3000", "5000", "8000"};
  EXPECT_EQ(header(c.MSFlexGrid2, 1, 8), low);
  EXPECT_EQ(header(c.MSFlexGrid3, 1, 8), low);
  EXPECT_EQ(header(c.MSFlexGrid2, 9, 9), Strings{"4500"});  // not this block's

  arrive(block(0x290, second));
  const Strings high{"6000", "7500", "3800", "6200", "3500", "3500", "4500", "4900"};
  EXPECT_EQ(header(c.MSFlexGrid2, 9, 16), high);
  EXPECT_EQ(header(c.MSFlexGrid3, 9, 16), high);
  EXPECT_EQ(header(c.MSFlexGrid2, 1, 8), low);
  for (int k = 0; k < 8; ++k) {
    EXPECT_EQ(c.rpm_points[static_cast<std::size_t>(k + 1)], first[k]);
    EXPECT_EQ(c.rpm_points[static_cast<std::size_t>(k + 9)], second[k]);
  }
}

TEST_F(ReplyDispatch, CorrectionMapBlocksFillTheirRow) {
  arrive(
      sram_reply(0x2A0, {128, 255, 0, 1, 64, 192, 127, 129, 96, 200, 50, 2, 254, 130, 131, 160}));
  arrive(sram_reply(0x390, {255, 0}));
  EXPECT_EQ(row_of(c.MSFlexGrid2, 1, 1, 16),
            (Strings{"0", "100", "-101", "-100", "-50", "50", "-1", "1", "-25", "57", "-61", "-99",
                     "99", "2", "2", "25"}));
  EXPECT_EQ(row_of(c.MSFlexGrid2, 16, 1, 3), (Strings{"100", "-101", "-101"}));
  EXPECT_EQ(row_of(c.MSFlexGrid2, 2, 1, 2), (Strings{"0", "0"}));
  EXPECT_EQ(row_of(c.MSFlexGrid3, 1, 1, 2), (Strings{"0", "0"}));
}

TEST_F(ReplyDispatch, AirflowMapBlocksFillHalfRowsByOutputType) {
  const std::initializer_list<std::uint8_t> pairs = {0xD4, 0x30, 0x53, 0x00, 0x32, 0x00, 0xE8, 0x03,
                                                     0x01, 0x00, 0xFF, 0x00, 0x80, 0x12, 0,    0};
  vars.airflowtype = 0;
  arrive(sram_reply(0x3A0, pairs));
  arrive(sram_reply(0x590, pairs));
  const Strings hz{"20", "3012", "5000", "250", "250000", "980", "52.78", "0"};
  EXPECT_EQ(row_of(c.MSFlexGrid3, 1, 1, 8), hz);
  EXPECT_EQ(row_of(c.MSFlexGrid3, 1, 9, 9), Strings{"0"});
  EXPECT_EQ(row_of(c.MSFlexGrid3, 16, 9, 16), hz);
  EXPECT_EQ(row_of(c.MSFlexGrid2, 1, 1, 1), Strings{"0"});

  vars.airflowtype = 1;
  arrive(sram_reply(0x3B0, pairs));
  arrive(sram_reply(0x580, pairs));
  const Strings mv{"4157", "1627", "980", "4549", "20", "5000", "2510", "0"};
  EXPECT_EQ(row_of(c.MSFlexGrid3, 1, 9, 16), mv);
  EXPECT_EQ(row_of(c.MSFlexGrid3, 16, 1, 8), mv);
  EXPECT_EQ(row_of(c.MSFlexGrid3, 1, 1, 8), hz);
}

// --- text, 0x02 and other replies ------------------------------------------------------------

TEST_F(ReplyDispatch, TextRepliesAreLoggedAndAcknowledged) {
  link.write_addr = 0x2A0;
  const struct {
    std::string text;
    const char* line;
  } cases[] = {
      {"Write SDram", "12:00:00 -> Write SDram @ 0x2A0"},
      {"EEProm written", "12:00:00 -> EEProm written"},
      {std::string("OK\0Write SDram", 14), "12:00:00 -> OK"},
      {"Write SDram ok", "12:00:00 -> Write SDram ok"},
      {"ABCDEFGHIJKLMNOP", "12:00:00 -> ABCDEFGHIJKLMNOP"},
  };
  for (const auto& k : cases) {
    c.List1.clear();
    link.reply_done = 0;
    arrive(ReplyFrame(0x00).text(k.text));
    EXPECT_EQ(c.List1.items, Strings{k.line});
    EXPECT_EQ(link.reply_done, 1) << k.line;
  }
}

TEST_F(ReplyDispatch, TextReplyWithByteThreeOneRestoresMakePermanent) {
  c.Command5.back_color = 255;
  arrive(ReplyFrame(0x00).byte(3, 0).text("Done"));
  EXPECT_EQ(c.Command5.back_color, 255u);
  arrive(ReplyFrame(0x00).byte(3, 2).text("Done"));
  EXPECT_EQ(c.Command5.back_color, 255u);
  arrive(ReplyFrame(0x00).byte(3, 1).text("Done"));
  EXPECT_EQ(c.Command5.back_color, 0x8000000Fu);
}

TEST_F(ReplyDispatch, BlockReplyOnlyAcknowledgesAndUnknownTypesAreIgnored) {
  arrive(ReplyFrame(0x77).address(0x250).text("Write SDram"));
  EXPECT_EQ(link.reply_done, 0);
  EXPECT_TRUE(c.List1.items.empty());

  arrive(ReplyFrame(0x02).address(0x2A0).text("\x80\x80"));
  EXPECT_EQ(link.reply_done, 1);
  EXPECT_TRUE(c.List1.items.empty());
  EXPECT_EQ(c.MSFlexGrid2.text(1, 1), "0");
}

}  // namespace
}  // namespace nerit
