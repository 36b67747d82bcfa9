// Finding the controller, the debug port, the block reads and the link timers, on the
// virtual clock with a scripted controller.
#include <gtest/gtest.h>

#include "shell/errors.h"
#include "shell/fault_boundary.h"
#include "sim/controller.h"
#include "tests/link/link_fixture.h"
#include "tests/support/sim_wire.h"

namespace nerit::testing {
namespace {

using SessionTest = LinkFixture;

std::vector<int> read_order() {
  std::vector<int> order{0x250, 0x240, 0x260, 0x270, 0x280, 0x290};
  for (int a = 0x2A0; a <= 0x590; a += 16) order.push_back(a);
  return order;
}

TEST_F(SessionTest, ScanWithNothingAttachedTriesFiftyPortsThenFails) {
  f.session.Command1_Click();
  std::vector<int> expected;
  for (int round = 0; round < 2; ++round)
    for (int port = 1; port <= 25; ++port) expected.push_back(port);
  EXPECT_EQ(fp.comm.open_attempts, expected);
  ASSERT_EQ(fp.dialogs.shown.size(), 1u);
  EXPECT_EQ(fp.dialogs.shown[0].text, "Verbindung fehlgeschlagen!");
  EXPECT_EQ(fp.dialogs.shown[0].title, "Error");
  EXPECT_EQ(fp.dialogs.shown[0].icon, MsgIcon::Critical);
  EXPECT_EQ(f.c.Label4[0].caption, "offline");
  EXPECT_EQ(f.c.Label4[0].back_color, kRed);
  EXPECT_TRUE(f.c.Combo2.enabled);
  EXPECT_FALSE(fp.comm.port_open());
  EXPECT_EQ(f.vars.connected, 0);
}

TEST_F(SessionTest, SilentPortsAreEachGivenTheConnectFrameAndAQuarterSecond) {
  for (int p = 1; p <= 25; ++p) fp.comm.present.insert(p);
  f.session.Command1_Click();
  EXPECT_EQ(fp.comm.opened.size(), 50u);
  EXPECT_EQ(fp.clock.now_ms(), 50 * 250);
  EXPECT_EQ(fp.comm.written[7], connect_frame() + connect_frame());
  EXPECT_EQ(fp.comm.settings(), "19200,N,8,1");
  EXPECT_EQ(fp.comm.output_calls, 50 * 22);  // one character per write
}

TEST_F(SessionTest, ConnectsToTheFirstPortThatAnswersInTime) {
  fp.comm.present = {2, 5};
  peer.delay_ms = 100;
  peer.answer = [](const ScriptedPeer::Frame& fr) -> std::optional<std::string> {
    if (fr.port == 5) return firmware_reply("Nerit TEST 1.00 ");
    return std::nullopt;
  };
  f.session.Command1_Click();
  EXPECT_EQ(fp.comm.opened, (std::vector<int>{2, 5}));
  EXPECT_EQ(fp.comm.written[5], connect_frame());
  EXPECT_EQ(fp.clock.now_ms(), 250 + 100);
  EXPECT_EQ(f.vars.connected, 1);
  EXPECT_EQ(f.vars.port, 5);
  EXPECT_TRUE(fp.comm.port_open());
  EXPECT_EQ(f.c.Label4[0].caption, "online");
  EXPECT_EQ(f.c.Label4[0].back_color, kGreen);
  EXPECT_EQ(f.c.Label4[1].caption, "Port: 5");
  EXPECT_EQ(f.c.Label4[2].caption, "Nerit TEST 1.00 ");
  EXPECT_TRUE(f.c.Check1.enabled);
  EXPECT_EQ(f.c.Combo2.list_index, -1);
  EXPECT_FALSE(f.c.Combo2.enabled);
  ASSERT_EQ(fp.dialogs.shown.size(), 1u);
  EXPECT_EQ(fp.dialogs.shown[0].text, "Verbunden, Daten vom Controller laden?");
  EXPECT_EQ(fp.dialogs.shown[0].title, "Online");
  EXPECT_EQ(fp.dialogs.shown[0].buttons, MsgButtons::YesNo);
  EXPECT_EQ(peer.frames.size(), 2u);  // No: nothing read
}

TEST_F(SessionTest, YesAfterConnectingReadsEverything) {
  fp.comm.present = {1};
  answer_like_controller();
  fp.dialogs.answers = {MsgAnswer::Yes};
  f.session.Command1_Click();
  ASSERT_EQ(peer.frames.size(), 1u + 54u);
  EXPECT_EQ(peer.codes()[1], kCmdSramRead);
  const std::vector<int> addresses = peer.addresses();
  EXPECT_EQ(std::vector<int>(addresses.begin() + 1, addresses.end()), read_order());
}

TEST_F(SessionTest, ALateReplyIsDecodedAfterTheScanMovedOn) {
  fp.comm.present = {2, 3};
  peer.answer = [this](const ScriptedPeer::Frame& fr) -> std::optional<std::string> {
    // Port 2 answers after 300 ms, when the scan already waits on port 3.
    if (fr.port == 2) fp.comm.arrive_after(300, firmware_reply("Nerit TEST 1.00 "), 2, true);
    return std::nullopt;
  };
  f.session.Command1_Click();
  EXPECT_EQ(f.vars.connected, 1);
  EXPECT_EQ(f.vars.port, 3);
  EXPECT_EQ(f.c.Label4[1].caption, "Port: 3");
  EXPECT_EQ(fp.clock.now_ms(), 300);
}

TEST_F(SessionTest, PressingConnectWhileOnlineDisconnects) {
  go_online();
  f.c.Combo2.enabled = false;
  f.session.Command1_Click();
  EXPECT_FALSE(fp.comm.port_open());
  EXPECT_EQ(f.vars.connected, 0);
  EXPECT_EQ(f.c.Label4[0].caption, "offline");
  EXPECT_EQ(f.c.Label4[0].back_color, kRed);
  EXPECT_EQ(f.c.Label4[1].caption, "Connection");
  EXPECT_EQ(f.c.Label4[2].caption, "Closed");
  EXPECT_TRUE(f.c.Combo2.enabled);
  EXPECT_TRUE(peer.frames.empty());
}

TEST_F(SessionTest, SecondScanSendsTheShortFrameAndLeavesASilentPortOpen) {
  fp.comm.present = {1, 2, 3};
  f.session.autoconnect2();
  EXPECT_EQ(fp.comm.opened, std::vector<int>{1});  // the open port blocks every later number
  EXPECT_EQ(fp.comm.written[1], short_connect_frame());
  EXPECT_EQ(fp.comm.written[1].size(), 20u);
  EXPECT_TRUE(fp.comm.port_open());
  EXPECT_EQ(f.c.Label4[0].caption, "offline");
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

TEST_F(SessionTest, SecondScanGoesOnlineWithoutAsking) {
  fp.comm.present = {4};
  answer_like_controller();
  f.session.autoconnect2();
  EXPECT_EQ(f.c.Label4[0].caption, "online");
  EXPECT_EQ(f.c.Label4[1].caption, "Port: 4");
  EXPECT_TRUE(f.c.Check1.enabled);
  EXPECT_TRUE(fp.dialogs.shown.empty());
  EXPECT_EQ(f.c.Combo2.text, "Debugport wählen....");
}

TEST_F(SessionTest, DebugPortOpensByHandAndConnectLeavesIt) {
  fp.comm.present = {3};
  f.c.Combo2.select(3);
  f.session.Combo2_Click();
  EXPECT_TRUE(fp.comm.port_open());
  EXPECT_EQ(fp.comm.comm_port(), 3);
  EXPECT_EQ(f.vars.debugmode, 1);
  EXPECT_EQ(f.c.Label4[0].caption, "Debug");
  EXPECT_EQ(f.c.Label4[0].back_color, kYellow);
  EXPECT_TRUE(fp.comm.written.empty());

  // Debug text lines end when a CR arrives on its own.
  fp.comm.arrive_after(10, "RPM 2500 TPS 12");
  fp.comm.arrive_after(11, "\r");
  fp.clock.advance(20);
  ASSERT_EQ(f.c.List1.list_count(), 1);
  EXPECT_EQ(f.c.List1.items[0], "RPM 2500 TPS 12");

  // Connect leaves debug mode and goes straight on to a scan.
  f.session.Command1_Click();
  EXPECT_EQ(f.vars.debugmode, 0);
  EXPECT_EQ(fp.comm.opened, (std::vector<int>{3, 3, 3}));
  EXPECT_EQ(fp.dialogs.shown.back().text, "Verbindung fehlgeschlagen!");
}

TEST_F(SessionTest, DebugEntryZeroClosesThePortButKeepsConnected) {
  go_online();
  f.c.Combo2.select(0);
  f.session.Combo2_Click();
  EXPECT_FALSE(fp.comm.port_open());
  EXPECT_EQ(f.vars.connected, 1);
  EXPECT_EQ(f.c.Label4[0].caption, "Offline");
  EXPECT_EQ(f.c.Label4[0].back_color, kRed);

  fp.comm.set_port_open(true);
  f.c.Combo2.select(-1);
  f.session.Combo2_Click();  // nothing chosen: nothing happens
  EXPECT_TRUE(fp.comm.port_open());
}

TEST_F(SessionTest, ReadDataFromUnitRequestsFiftyFourBlocksOneAtATime) {
  go_online();
  answer_like_controller();
  memory[0x2A0] = 255;  // row 1, column 1: +100 %
  record_colour(f.c.Command12);
  f.session.Command12_Click();
  EXPECT_EQ(peer.addresses(), read_order());
  EXPECT_EQ(frame_text(0), address_frame(kCmdSramRead, 0x250));
  // One request at a time: each goes out when the reply to the one before has arrived.
  for (std::size_t i = 1; i < peer.frames.size(); ++i)
    EXPECT_EQ(peer.frames[i].at_ms, peer.frames[i - 1].at_ms + peer.delay_ms);
  EXPECT_EQ(colours.front(), kYellow);
  EXPECT_EQ(f.c.Command12.back_color, kButtonFace);
  EXPECT_FALSE(f.c.Timer5.enabled());
  EXPECT_EQ(f.c.MSFlexGrid2.text(1, 1), "100");
  EXPECT_EQ(f.c.List1.items.front(), "12:00:00 -> Read SRam @ 0x250");
  EXPECT_EQ(f.c.List1.list_count(), 54);
}

TEST_F(SessionTest, ALostReplyIsRecoveredByTheTimeoutTimer) {
  go_online();
  answer_like_controller();
  auto inner = peer.answer;
  peer.answer = [&](const ScriptedPeer::Frame& fr) -> std::optional<std::string> {
    if (peer.frames.size() == 10) return std::nullopt;  // the tenth reply is lost
    return inner(fr);
  };
  f.session.Command12_Click();
  // The whole read restarts inside the waiting one; when it ends, the first goes on.
  ASSERT_EQ(peer.frames.size(), 10u + 54u + 44u);
  EXPECT_EQ(peer.frames[10].at_ms, 2500);
  EXPECT_EQ(peer.addresses()[10], 0x250);
  EXPECT_EQ(peer.addresses()[64], read_order()[10]);
  int timeouts = 0;
  for (const auto& line : f.c.List1.items) timeouts += line == "12:00:02 -> Communication Timeout";
  EXPECT_EQ(timeouts, 1);
  EXPECT_EQ(f.c.Command12.back_color, kButtonFace);
  EXPECT_FALSE(f.c.Timer5.enabled());
}

TEST_F(SessionTest, ReadDataMenuRequestsTheEepromBlocks) {
  go_online();
  answer_like_controller();
  f.session.Lesen_Click();
  EXPECT_EQ(peer.addresses(),
            (std::vector<int>{0x10, 0x20, 0x30, 0x50, 0x60, 0x70, 0x80, 0x90, 0xA0}));
  EXPECT_EQ(frame_text(0), address_frame(kCmdBlockRequest, 0x10));
}

TEST_F(SessionTest, OfflineReadsSendNothingAndDoNotWait) {
  f.session.Command12_Click();
  f.session.Lesen_Click();
  EXPECT_TRUE(fp.comm.written.empty());
  EXPECT_FALSE(f.c.Timer5.enabled());
}

TEST_F(SessionTest, FirmwareMenuHandsThePortOver) {
  go_online(7);
  f.session.firmwareupdate_Click();
  EXPECT_EQ(f.vars.comport, 7);
  EXPECT_FALSE(fp.comm.port_open());
  EXPECT_EQ(f.vars.connected, 0);
  EXPECT_EQ(f.c.Label4[0].caption, "offline");
  EXPECT_EQ(f.c.Label4[1].caption, "Connection");
  EXPECT_EQ(f.c.Label4[2].caption, "Closed");
  EXPECT_EQ(fp.windows.calls.back(), "show Form2");
}

TEST_F(SessionTest, TimersHaveTheirIntervalsAndActions) {
  EXPECT_EQ(f.c.Timer1.interval(), 250);
  EXPECT_EQ(f.c.Timer2.interval(), 250);
  EXPECT_EQ(f.c.Timer3.interval(), 500);
  EXPECT_EQ(f.c.Timer4.interval(), 0);
  EXPECT_EQ(f.c.Timer5.interval(), 2500);

  f.c.Timer3.set_enabled(true);
  fp.clock.advance(499);
  EXPECT_EQ(f.link.reply_done, 0);
  fp.clock.advance(1);
  EXPECT_EQ(f.link.reply_done, 1);
  EXPECT_FALSE(f.c.Timer3.enabled());

  go_online();
  f.c.Timer1.set_enabled(true);
  fp.clock.advance(250);
  EXPECT_EQ(fp.comm.written[1], stream_frame(0));

  f.c.Timer4.set_enabled(true);
  fp.clock.advance(10000);
  EXPECT_EQ(fp.timers.ticks(f.c.Timer4), 0);
}

TEST_F(SessionTest, LogClickClearsIt) {
  f.c.List1.add_item("x");
  f.session.List1_Click();
  EXPECT_EQ(f.c.List1.list_count(), 0);
}

TEST_F(SessionTest, ClosingTheWindowDuringAWaitEndsEveryNestedHandler) {
  go_online();  // nothing answers
  fp.clock.schedule(6000, [this] { f.shell.Form_Unload(); });
  EXPECT_THROW(run_handler(fp.dialogs, [this] { f.session.Command12_Click(); }), ProgramClosing);
  EXPECT_EQ(fp.windows.calls.back(), "end");
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

}  // namespace
}  // namespace nerit::testing

namespace nerit::testing {
namespace {

class SessionOnSimTest : public LinkFixture {
 protected:
  sim::Options options() {
    sim::Options o;
    o.paced = true;
    o.faults.drop_replies = {10};
    return o;
  }
  sim::Controller controller{options()};
  SimWire wire{fp.comm, controller};
};

TEST_F(SessionOnSimTest, ReadRecoversFromADroppedReplyAndFillsTheWindow) {
  go_online();
  f.vars.rpmfaktor = 30000000;
  f.session.Command12_Click();
  EXPECT_EQ(controller.frames_received().size(), 108u);
  EXPECT_EQ(f.c.MSFlexGrid2.text(0, 16), "8000");
  EXPECT_EQ(f.c.MSFlexGrid2.text(16, 16), "0");
  EXPECT_EQ(f.c.Combo1.list_index, controller.working_memory().at(0x240));
  int timeouts = 0;
  for (const auto& line : f.c.List1.items) timeouts += line.ends_with(" -> Communication Timeout");
  EXPECT_EQ(timeouts, 1);
  // After the restart at 2.5 s, 98 replies of 22 bytes each at the wire rate (the virtual
  // clock counts whole milliseconds, so each may end up to 1 ms later).
  const double reply_ms = 22 * sim::kByteMs;
  EXPECT_GE(fp.clock.now_ms(), 2500 + 98 * reply_ms);
  EXPECT_LE(fp.clock.now_ms(), 2500 + 98 * (reply_ms + 1));
}

}  // namespace
}  // namespace nerit::testing
