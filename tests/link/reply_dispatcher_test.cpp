// Replies from the controller as they arrive on the port of the composed main window: framing,
// then every reply type decoded into the log, the grids, the panels and the variables.
#include <array>

#include "tests/link/link_fixture.h"

namespace nerit::testing {
namespace {

using Strings = std::vector<std::string>;

class ReplyDispatch : public LinkFixture {
 protected:
  ReplyDispatch() {
    fp.comm.present = {1};
    fp.comm.set_port_open(true);
    vars.rpmfaktor = 30000000;
    c.pressure_table[200] = 250;
    vars.tps_min = 20;
    vars.tps_max = 220;
  }
  void TearDown() override {
    for (const auto& box : fp.dialogs.shown) ADD_FAILURE() << "message box: " << box.text;
  }

  // One chunk, one receive (or other) event.
  void arrive(const std::string& bytes, int event = SerialPort::kReceive) {
    fp.comm.arrive_after(1, bytes, event);
    fp.clock.advance(1);
  }
  std::string live(int row) const { return f.live_controls.MSFlexGrid1.text(row, 1); }
  static Strings cells(const Grid& g, int row, int from, int to) {
    Strings s;
    for (int col = from; col <= to; ++col) s.push_back(g.text(row, col));
    return s;
  }

  Form1Controls& c = f.c;
  ProgramState& vars = f.vars;
  LinkState& link = f.link;
};

TEST_F(ReplyDispatch, FramesAreCutFromChunksEndingInCrLf) {
  const std::string fw = ReplyFrame(0xFD).address(0x0102).text("Nerit SIM V1.00 ");
  std::string wrong_start = fw;
  wrong_start[0] = 'u';
  const std::string a = sram_reply(0x2A0, {255, 255}), b = sram_reply(0x2B0, {1, 64});
  const std::string online = "12:00:00->  online Firmware: Nerit SIM V1.00 ";
  const int rx = SerialPort::kReceive;
  const struct {
    int debugmode, event;
    std::string waiting;  // in the buffer before
    Strings chunks, lines;
    std::string left;
  } cases[] = {
      // A frame in two chunks is decoded once, when its CR LF arrives; of 30 characters the last
      // 22 are the frame; a frame with another start byte goes with the buffer.
      {0, rx, "", {fw.substr(0, 10), fw.substr(10)}, {online}, ""},
      {0, rx, "", {fw.substr(0, 8) + a}, {"12:00:00 -> Read SRam @ 0x2A0"}, ""},
      {0, rx, "", {a + b.substr(0, 5), b.substr(5)}, {"12:00:00 -> Read SRam @ 0x2B0"}, ""},
      {0, rx, "", {wrong_start}, {}, ""},
      // Only a receive event may cut a frame.
      {0, SerialPort::kOverrun, fw, {""}, {}, fw},
      // In debug mode a CR chunk of its own ends a text line.
      {1, rx, "", {"RPM 100", "\r"}, {"RPM 100"}, ""},
      {0, rx, "", {"RPM 100", "\r"}, {}, "RPM 100\r"}};
  for (const auto& k : cases) {
    SCOPED_TRACE(k.chunks[0]);
    c.List1.clear();
    link.rxbuffer = k.waiting;
    vars.debugmode = k.debugmode;
    for (const std::string& chunk : k.chunks) arrive(chunk, k.event);
    EXPECT_EQ(c.List1.items, k.lines);
    EXPECT_EQ(link.rxbuffer, k.left);
  }
  EXPECT_EQ(cells(c.MSFlexGrid2, 1, 1, 2), (Strings{"100", "100"}));
  EXPECT_EQ(cells(c.MSFlexGrid2, 2, 1, 3), (Strings{"-100", "-50", "-101"}));
  EXPECT_EQ(vars.connected, 1);
  arrive(ReplyFrame(0xFD).text("V2"));  // the firmware text: 16 characters, zeros included
  EXPECT_EQ(c.Label4[2].caption, std::string("V2") + std::string(14, '\0'));
}

// The controller's texts are one byte a character: bytes 0x80-0xFF show as the characters of
// the same code, so 16 bytes are always 16 characters.
TEST_F(ReplyDispatch, ControllerTextMapsEveryByteToOneCharacter) {
  const std::string fw("Nerit \xB5V\xE4\xFF\x80\xC3\xA4 1.", 16);
  arrive(ReplyFrame(0xFD).text(fw));
  const std::string shown = "Nerit µVäÿ\u0080Ã¤ 1.";
  EXPECT_EQ(c.Label4[2].caption, shown);
  std::size_t characters = 0;
  for (unsigned char ch : c.Label4[2].caption) characters += (ch & 0xC0) != 0x80;
  EXPECT_EQ(characters, 16u);
  EXPECT_EQ(c.List1.items.back(), "12:00:00->  online Firmware: " + shown);
  arrive(text_reply("Gr\xFC\xDF"));
  EXPECT_EQ(c.List1.items.back(), "12:00:00 -> Grüß");
  vars.debugmode = 1;
  arrive(
      "T=\xB0"
      "C");
  arrive("\r");
  EXPECT_EQ(c.List1.items.back(), "T=°C");
}

// --- status ----------------------------------------------------------------------------------

// Byte (or, above 255, word) `value` at `offset`; live row `row` then shows `text`. Speeds of
// 9000 and more are spikes and a zero period is no speed: the speed before stays.
TEST_F(ReplyDispatch, StatusFrameLogLineAndLiveRows) {
  arrive(ReplyFrame(0xFF).text(
      std::string("\x00\x01\x0A\xFF\x10\x7F\x80\x0F\xF0\x03\x30\xAB\xCD\xEF\x02\x20", 16)));
  EXPECT_EQ(c.List1.items,
            Strings{"12:00:00 -> Status:  0 1 A FF 10 7F 80 F F0 3 30 AB CD EF 2 20"});
  vars.rpmfaktor = 18000000;
  const struct {
    int boost_display;
    char separator;
    int load_type, offset, value, row;
    const char* text;
  } cases[] = {
      {1, '.', -1, 10, 10000, 1, "1800"},  {1, '.', -1, 10, 1999, 1, "1800"},  // 9004.5
      {1, '.', -1, 10, 2001, 1, "8995"},   {1, '.', -1, 10, 2000, 1, "8995"},  // 8995.5, 9000
      {1, '.', -1, 10, 0, 1, "8995"},      {1, '.', -1, 6, 250, 2, "1000"},
      {1, '.', -1, 8, 65535, 3, "262140"}, {1, '.', -1, 12, 0, 4, "-100"},
      {1, '.', -1, 12, 48, 4, "-62"},      {1, '.', -1, 12, 16, 4, "-88"},  // -62.5, -87.5
      {1, '.', -1, 5, 200, 5, "150"},      {2, ',', -1, 5, 128, 5, "2,51"},
      {3, '.', -1, 5, 200, 5, "200"},      {1, '.', -1, 4, 10, 6, "0"},  // TPS below the minimum
      {1, '.', -1, 4, 250, 6, "100"},      {1, '.', -1, 4, 27, 6, "3"},  // above the maximum
      {1, '.', -1, 14, 0, 7, "0"},         {1, '.', -1, 14, 83, 7, "3012"},  // W6 = 0
      {1, '.', 1, 16, 51, 8, "--"},        {1, '.', 2, 16, 128, 8, "2.51"},
      {1, '.', -1, 18, 65535, 9, "3"},
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(::testing::Message() << "offset " << k.offset << " value " << k.value);
    f.live_controls.boost_display = k.boost_display;
    fp.locale.decimal = k.separator;
    c.Combo1.select(k.load_type);
    ReplyFrame frame(0xFF);
    k.value > 255 ? frame.word(k.offset, k.value) : frame.byte(k.offset, k.value);
    arrive(frame);
    EXPECT_EQ(live(k.row), k.text);
  }
  EXPECT_EQ(vars.drehzahl, 8995);
  // Equal throttle calibration: the throttle value stays, the rest of the frame goes on.
  fp.locale.decimal = ',';
  vars.tps_min = vars.tps_max = 100;
  vars.tps_in = 42;
  arrive(ReplyFrame(0xFF).byte(4, 120).byte(5, 51).status_word(6, 83));
  EXPECT_EQ(vars.map_volt, "1,00");
  EXPECT_EQ(vars.tps_in_volt, "2,35");
  EXPECT_EQ(vars.tps_raw, 120);
  EXPECT_EQ(live(6), "42");
  EXPECT_EQ(live(7), "3012");
}

// Not ticked: nothing, the index is still remembered; ticked, same index: nothing; column 0 is
// raised to 1; with keyboard focus the row and column are kept.
TEST_F(ReplyDispatch, HighlightFollowsTheOperatingCellWhenItMoves) {
  using Calls = std::vector<std::pair<int, int>>;
  Grid& g = c.MSFlexGrid2;
  const struct {
    int check2, fokus, b13;
    Calls expected;
  } steps[] = {
      {0, 0, 0x23, {}},       {1, 0, 0x23, {}},       {1, 0, 0x30, {{4, 1}}},   {1, 0, 0x30, {}},
      {1, 0, 0x23, {{3, 3}}}, {1, 1, 0x45, {{3, 3}}}, {1, 0, 0xFF, {{16, 15}}},
  };
  for (const auto& s : steps) {
    SCOPED_TRACE(s.b13);
    g.set_all_back_color(0x123456);  // a green cell afterwards is one the step marked
    f.map_controls.Check2.value = s.check2;
    vars.fokus = s.fokus;
    arrive(ReplyFrame(0xFF).byte(13, s.b13));
    Calls calls;
    for (int r = 0; r < g.rows(); ++r)
      for (int col = 0; col < g.cols(); ++col)
        if (g.back_color(r, col) == kGreen) calls.emplace_back(r, col);
    EXPECT_EQ(calls, s.expected);
  }
}

// 3000 rpm, TPS 50 %, 250 kPa, 1000 mV, in 20 Hz; the load as the chosen load type counts it
// picks the airflow cell that gets the airflow input.
TEST_F(ReplyDispatch, AutomapGetsTheLoadOfItsType) {
  const double loads[4] = {50, 250, 1000, 20};
  f.maps.automap_rpm[2] = 3000;
  for (int i = 0; i < 4; ++i) f.maps.automap_load[static_cast<std::size_t>(3 + i)] = loads[i];
  Grid& g = c.MSFlexGrid3;
  ReplyFrame frame(0xFF);
  frame.status_word(4, 10000).byte(4, 120).byte(5, 200).byte(16, 51).status_word(8, 12500);
  arrive(frame);  // Automap not ticked
  EXPECT_EQ(cells(g, 3, 2, 2), Strings{"0"});
  f.map_controls.Check5.value = 1;
  for (int index = 0; index < 4; ++index) {
    SCOPED_TRACE(index);
    c.Combo1.select(index);
    arrive(frame);
    EXPECT_EQ(cells(g, 3 + index, 1, 3), (Strings{"0", "20", "0"}));
    EXPECT_EQ(g.back_color(3 + index, 2), kYellow);
  }
}

// --- SRAM blocks -----------------------------------------------------------------------------

// The airflow-output panel: caption|frequency and analog options|Combo3 index and enabled; then
// the boost check box and panel.
TEST_F(ReplyDispatch, SettingsBlockOne) {
  const struct {
    int airflowtype, boost;
    const char* panels;
  } cases[] = {
      {0, 1, "Airflow Out: Karman Vortex 20-3000 Hz|1 0|0 0|1 1"},
      {3, 2, "Airflow Out: Voltage 0-5000 mV|0 1|3 1|0 0"},
  };
  for (const auto& k : cases) {
    f.panel_controls.Check3.value = k.boost == 1 ? 0 : 1;  // the opposite of what the block sets
    f.panel_controls.Frame1[kPanelBoostcontrol].enabled = f.panel_controls.Combo3.enabled =
        k.boost != 1;
    link.reply_done = 0;
    arrive(sram_reply(0x240, {3, 2, 20, 220, 0x50, 0x01, 0x34, 0x12, 0xE8, 0x03, 0x20, 0x03, 160,
                              k.airflowtype, 200, k.boost}));
    EXPECT_EQ(link.reply_done, 1);
    EXPECT_EQ(c.Combo1.list_index, 3);
    EXPECT_EQ((std::vector<double>{vars.drucksensor, vars.tps_min, vars.tps_max, vars.injoffset_in,
                                   vars.injoffset_out, vars.injalt, vars.injneu, vars.injsizecorr,
                                   vars.airflowtype, vars.aoutmax}),
              (std::vector<double>{2, 20, 220, 336, 0x1234, 1000, 800, 160,
                                   static_cast<double>(k.airflowtype), 200}));
    const auto n = [](int v) { return std::to_string(v); };
    EXPECT_EQ(f.panel_controls.Text1.text, "3922");  // clamp of 200: 3921.6 mV and up
    EXPECT_EQ(f.panel_controls.Frame1[kPanelAirflowOutput].caption + "|" +
                  n(f.panel_controls.OptionFrequency.value) + " " +
                  n(f.panel_controls.OptionAnalog.value) + "|" +
                  n(f.panel_controls.Combo3.list_index) + " " + n(f.panel_controls.Combo3.enabled) +
                  "|" + n(f.panel_controls.Check3.value) + " " +
                  n(f.panel_controls.Frame1[kPanelBoostcontrol].enabled),
              k.panels);
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
    arrive(sram_reply(0x250, {40, 128, k.zylinder, 4, k.flags, 5, 100, 6, 120, 30}));
    EXPECT_EQ((std::vector<double>{c.boost_start, c.boost_set, vars.zylinder, vars.rpmfaktor,
                                   vars.injchannels}),
              (std::vector<double>{40, 128, static_cast<double>(k.zylinder), k.rpmfaktor, 4}));
    EXPECT_EQ(c.Check6.value, k.check6);
    EXPECT_EQ(c.Check4.value, k.check4);
    EXPECT_EQ(c.accel_param, (std::array<double, 6>{5, 100, 77, 6, 120, 30}));
    Strings labels;
    for (const Label& l : f.panel_controls.Label8) labels.push_back(l.caption);
    EXPECT_EQ(labels, (Strings{"5", "100", "10", "6", "120", "30"}));
    EXPECT_EQ(f.panel_controls.HScroll1[1].value, 100);
    EXPECT_EQ(f.panel_controls.HScroll1[5].value, 30);
  }
}

// Speed headings in whole hundreds, ties to even: 1250 -> 1200, 750 -> 800, 3750 -> 3800.
TEST_F(ReplyDispatch, AxisBlocksFillLoadAndRpmPointsAndBothHeadings) {
  arrive(sram_reply(0x260,
                    {0x14, 0x00, 0x40, 0x01, 0x34, 0x12, 0xA7, 0x7F, 0, 0, 1, 0, 0xFF, 0, 0, 1}));
  arrive(sram_reply(0x270, {1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8}));
  EXPECT_EQ(c.load_points,
            (std::array<std::int16_t, 17>{0, 20, 320, 0x1234, 32679, 0, 1, 255, 256, 0x0101, 0x0202,
                                          0x0303, 0x0404, 0x0505, 0x0606, 0x0707, 0x0808}));
  const int periods[16] = {60000, 7317, 24000, 40000, 30000, 10000, 6000, 3750,
                           5000,  4000, 8000,  4800,  8571,  8572,  6667, 6122};
  for (int half = 0; half < 2; ++half) {
    ReplyFrame frame(0x0C);
    for (int k = 0; k < 8; ++k) frame.word(4 + 2 * k, periods[8 * half + k]);
    arrive(frame.address(0x280 + 16 * half));
    EXPECT_EQ(c.MSFlexGrid2.text(0, 9), half == 0 ? "4500" : "6000");  // 0x290's, not 0x280's
  }
  const Strings headings{"500",  "4100", "1200", "800",  "1000", "3000", "5000", "8000",
                         "6000", "7500", "3800", "6200", "3500", "3500", "4500", "4900"};
  EXPECT_EQ(cells(c.MSFlexGrid2, 0, 1, 16), headings);
  EXPECT_EQ(cells(c.MSFlexGrid3, 0, 1, 16), headings);
  for (int k = 0; k < 16; ++k) EXPECT_EQ(c.rpm_points[k + 1], periods[k]) << k;
}

// Correction rows take one block each; airflow half rows show by output type.
TEST_F(ReplyDispatch, MapBlocksFillTheirRows) {
  arrive(
      sram_reply(0x2A0, {128, 255, 0, 1, 64, 192, 127, 129, 96, 200, 50, 2, 254, 130, 131, 160}));
  arrive(sram_reply(0x390, {255, 0}));
  EXPECT_EQ(cells(c.MSFlexGrid2, 1, 1, 16),
            (Strings{"0", "100", "-101", "-100", "-50", "50", "-1", "1", "-25", "57", "-61", "-99",
                     "99", "2", "2", "25"}));
  EXPECT_EQ(cells(c.MSFlexGrid2, 16, 1, 3), (Strings{"100", "-101", "-101"}));
  EXPECT_EQ(cells(c.MSFlexGrid2, 2, 1, 2), (Strings{"0", "0"}));

  const std::initializer_list<int> pairs = {0xD4, 0x30, 0x53, 0x00, 0x32, 0x00, 0xE8, 0x03,
                                            0x01, 0x00, 0xFF, 0x00, 0x80, 0x12, 0,    0};
  vars.airflowtype = 0;
  arrive(sram_reply(0x3A0, pairs));
  arrive(sram_reply(0x590, pairs));
  const Strings hz{"20", "3012", "5000", "250", "250000", "980", "52.78", "0"};
  EXPECT_EQ(cells(c.MSFlexGrid3, 1, 1, 8), hz);
  EXPECT_EQ(cells(c.MSFlexGrid3, 1, 9, 9), Strings{"0"});
  EXPECT_EQ(cells(c.MSFlexGrid3, 16, 9, 16), hz);
  vars.airflowtype = 1;
  arrive(sram_reply(0x3B0, pairs));
  arrive(sram_reply(0x580, pairs));
  const Strings mv{"4157", "1627", "980", "4549", "20", "5000", "2510", "0"};
  EXPECT_EQ(cells(c.MSFlexGrid3, 1, 9, 16), mv);
  EXPECT_EQ(cells(c.MSFlexGrid3, 16, 1, 8), mv);
  EXPECT_EQ(cells(c.MSFlexGrid3, 1, 1, 8), hz);
}

// Texts up to their first zero ("Write SDram" with its address: see the transfers); 0x02 is an
// acknowledgement only; an unknown type is ignored.
TEST_F(ReplyDispatch, TextBlockAndUnknownReplies) {
  for (const std::string& text : {std::string("OK\0Write SDram", 14), std::string("Write SDram ok"),
                                  std::string("ABCDEFGHIJKLMNOP")}) {
    c.List1.clear();
    link.reply_done = 0;
    arrive(ReplyFrame(0x00).text(text));
    EXPECT_EQ(c.List1.items, Strings{"12:00:00 -> " + text.substr(0, text.find('\0'))});
    EXPECT_EQ(link.reply_done, 1);
  }
  c.List1.clear();
  link.reply_done = 0;
  arrive(ReplyFrame(0x77).address(0x250).text("Write SDram"));
  EXPECT_EQ(link.reply_done, 0);
  arrive(ReplyFrame(0x02).address(0x2A0).text("\x80\x80"));
  EXPECT_EQ(link.reply_done, 1);
  EXPECT_TRUE(c.List1.items.empty());
  EXPECT_EQ(c.MSFlexGrid2.text(1, 1), "0");
}

}  // namespace
}  // namespace nerit::testing
