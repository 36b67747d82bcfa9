// Switching the controller's streams: the mode frames, what the status stream locks and frees,
// the menu's double send, the debug stream, the boost row of the live table and the chart.
#include "live/stream.h"

#include "tests/link/link_fixture.h"

namespace nerit::testing {
namespace {

class StreamTest : public LinkFixture {
 protected:
  // Mode frames on the wire, as hex.
  std::vector<std::string> sent() const {
    std::vector<std::string> out;
    for (const auto& fr : peer.frames) out.push_back(hex_bytes(fr.bytes));
    return out;
  }
  // Enabled states of what the stream locks and frees, as one text.
  std::string locks() const {
    const auto n = [](bool b) { return std::string(b ? "1" : "0"); };
    const Form1Menus& m = f.c.menus;
    return "Command4 " + n(f.c.Command4[0].enabled) + " Command2 " + n(f.c.Command2.enabled) +
           " controller " + n(m.controller.enabled) + " echtzeit checked " + n(m.echtzeit.checked) +
           " lstart " + n(m.lstart.enabled) + " freeze " + n(f.live_controls.chart_freeze.enabled);
  }
  LiveStream& stream = f.stream;
};

std::string zeros_frame(int mode) {
  std::string s = "55 80 00 00 0" + std::to_string(mode);
  for (int i = 0; i < 15; ++i) s += " 00";
  return s + " 00 0D";
}

TEST_F(StreamTest, OfflineTheBoxSendsAndLocksNothing) {
  fp.comm.present.insert(1);
  fp.comm.set_port_open(true);  // a port open, but no controller has answered
  f.c.Check1.value = 1;
  stream.Check1_Click();
  f.live_controls.Check7.value = 1;
  stream.Check7_Click();
  EXPECT_TRUE(peer.frames.empty());
  EXPECT_EQ(locks(), "Command4 1 Command2 1 controller 1 echtzeit checked 0 lstart 0 freeze 0");
  EXPECT_EQ(f.c.Check1.value, 1);  // the box stays as the user left it
}

TEST_F(StreamTest, TickedTheStatusStreamStartsAndLocksEveryWrite) {
  go_online();
  f.c.Command4.push_back(CommandButton{"Write to EEProm"});  // every element of the array
  f.c.Check1.value = 1;
  stream.Check1_Click();
  EXPECT_EQ(sent(), std::vector<std::string>{zeros_frame(1)});
  EXPECT_EQ(locks(), "Command4 0 Command2 0 controller 0 echtzeit checked 1 lstart 1 freeze 1");
  EXPECT_FALSE(f.c.Command4[1].enabled);
  EXPECT_TRUE(f.chart.running());
}

TEST_F(StreamTest, ClearedTheStreamStopsAndEverythingIsFreeAgain) {
  go_online();
  f.c.Check1.value = 1;
  stream.Check1_Click();
  f.c.menus.logging.checked = true;
  stream.chart_freeze_Click();
  f.c.Check1.value = 0;
  stream.Check1_Click();
  EXPECT_EQ(sent(), (std::vector<std::string>{zeros_frame(1), zeros_frame(0)}));
  EXPECT_EQ(locks(), "Command4 1 Command2 1 controller 1 echtzeit checked 0 lstart 0 freeze 0");
  EXPECT_FALSE(f.c.menus.logging.checked);
  EXPECT_FALSE(f.live_controls.chart_freeze.checked);  // a frozen chart thaws
  EXPECT_FALSE(f.chart.running());
  EXPECT_FALSE(f.chart.frozen());
}

TEST_F(StreamTest, TheMenuEntryFlipsTheBoxAndSendsItsFrameTwice) {
  go_online();
  stream.echtzeit_Click();
  EXPECT_EQ(f.c.Check1.value, 1);
  EXPECT_EQ(sent(), (std::vector<std::string>{zeros_frame(1), zeros_frame(1)}));
  EXPECT_TRUE(f.c.menus.echtzeit.checked);
  peer.frames.clear();
  stream.echtzeit_Click();
  EXPECT_EQ(f.c.Check1.value, 0);
  EXPECT_EQ(sent(), (std::vector<std::string>{zeros_frame(0), zeros_frame(0)}));
  EXPECT_FALSE(f.c.menus.echtzeit.checked);
}

TEST_F(StreamTest, DebugDataSwitchesModeTwoAndChangesNothingElse) {
  go_online();
  const std::string before = locks();
  for (int value : {1, 0}) {
    f.live_controls.Check7.value = value;
    stream.Check7_Click();
  }
  EXPECT_EQ(sent(), (std::vector<std::string>{zeros_frame(2), zeros_frame(0)}));
  EXPECT_EQ(locks(), before);
}

TEST_F(StreamTest, ClicksOnTheBoostRowCycleItsUnit) {
  Grid& g = f.live_controls.MSFlexGrid1;
  std::vector<std::string> captions;
  for (int click = 0; click < 4; ++click) {
    g.set_current(5, 1);
    stream.MSFlexGrid1_Click();
    captions.push_back(g.text(5, 0) + " " + std::to_string(f.live_controls.boost_display));
  }
  EXPECT_EQ(captions, (std::vector<std::string>{"Boost / V 2", "Boost / Raw 3", "Boost / kPa 1",
                                                "Boost / V 2"}));
  g.set_current(6, 1);
  stream.MSFlexGrid1_Click();
  EXPECT_EQ(g.text(5, 0), "Boost / V");
  EXPECT_EQ(g.text(6, 0), "TPS / %");
  EXPECT_EQ(f.live_controls.boost_display, 2);
}

TEST_F(StreamTest, TheChartSamplesStatusFramesOnlyWhileTheStreamRunsUnfrozen) {
  go_online();
  f.vars.rpmfaktor = 30000000;
  const std::string frame = ReplyFrame(0xFF).status_word(4, 10000).status_word(3, 500);
  auto arrive = [&] {
    fp.comm.arrive_after(10, frame);
    fp.clock.advance(10);
  };
  arrive();  // before the stream runs
  f.c.Check1.value = 1;
  stream.Check1_Click();
  arrive();
  arrive();
  stream.chart_freeze_Click();
  arrive();
  stream.chart_freeze_Click();
  arrive();
  ASSERT_EQ(f.chart.samples().size(), 3u);
  EXPECT_EQ(f.chart.samples()[0].t_ms, 20);
  EXPECT_EQ(f.chart.samples()[2].t_ms, 50);
  EXPECT_EQ(f.chart.samples()[0].v, (std::array<double, kChartCount>{3000, 2000, -100, 0}));
}

}  // namespace
}  // namespace nerit::testing
