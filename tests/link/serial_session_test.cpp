// Finding the controller, the debug port, the block reads and the link timers, on the
// virtual clock with a scripted controller (and with the virtual controller for a lost reply).
#include <gtest/gtest.h>

#include <algorithm>

#include "shell/fault_boundary.h"
#include "sim/controller.h"
#include "tests/link/link_fixture.h"
#include "tests/support/sim_wire.h"

namespace nerit::testing {
namespace {

using Ints = std::vector<int>;
using Strings = std::vector<std::string>;

const char kFailed[] = "Error|Critical|Ok|Verbindung fehlgeschlagen!";

class SessionTest : public LinkFixture {
 protected:
  // The link as the window shows it: "caption colour|caption|caption|port|..." with the port
  // open or closed, Combo2 and Check1 when enabled, and the connected flag.
  std::string face() const {
    const auto& l = f.c.Label4;
    const std::map<Color, std::string> names{{kRed, "red"}, {kGreen, "green"}, {kYellow, "yellow"}};
    return l[0].caption + " " + names.at(l[0].back_color) + "|" + l[1].caption + "|" +
           l[2].caption + (fp.comm.port_open() ? "|open" : "|closed") +
           (f.c.Combo2.enabled ? "|Combo2" : "") + (f.c.Check1.enabled ? "|Check1" : "") +
           "|connected " + std::to_string(f.vars.connected);
  }
};

// Ports 1-25, twice: with nothing attached every open fails; a silent port gets the connect
// frame, one character per write, and a quarter second.
TEST_F(SessionTest, ScanTriesFiftyPortsThenFails) {
  f.c.Combo2.enabled = false;
  fp.dialogs.expect(kFailed);
  f.session.Command1_Click();
  Ints expected;
  for (int n = 0; n < 50; ++n) expected.push_back(n % 25 + 1);
  EXPECT_EQ(fp.comm.open_attempts, expected);
  EXPECT_EQ(fp.dialogs.boxes(), Strings{kFailed});
  EXPECT_EQ(face(), "offline red|-|-|closed|Combo2|connected 0");

  for (int p = 1; p <= 25; ++p) fp.comm.present.insert(p);
  fp.dialogs.expect(kFailed);
  f.session.Command1_Click();
  EXPECT_EQ(fp.comm.opened.size(), 50u);
  EXPECT_EQ(fp.clock.now_ms(), 50 * 250);
  EXPECT_EQ(fp.comm.written[7], connect_frame() + connect_frame());
  EXPECT_EQ(fp.comm.settings(), "19200,N,8,1");
  EXPECT_EQ(fp.comm.output_calls, 50 * 22);
  EXPECT_EQ(fp.dialogs.boxes(), Strings(2, kFailed));
}

TEST_F(SessionTest, APortTheUserMayNotOpenIsNamedInTheLogWithTheWayToAccess) {
  fp.comm.denied.insert(3);
  fp.dialogs.expect(kFailed);
  f.session.Command1_Click();
  const auto& log = f.c.List1.items;
  const std::string expected =
      "12:00:00 -> Port 3: No permission to open /dev/fake3. On Linux your user must be in the "
      "'dialout' group: run 'sudo usermod -aG dialout $USER' and log in again. If it is, another "
      "program (ModemManager, for one) may hold the port.";
  EXPECT_EQ(std::count(log.begin(), log.end(), expected), 2);  // once in each of the two scans
}

TEST_F(SessionTest, ConnectsToTheFirstPortThatAnswersInTimeAndAsksToRead) {
  fp.comm.present = {2, 5};
  peer.delay_ms = 100;
  peer.answer = [](const ScriptedPeer::Frame& fr) -> std::optional<std::string> {
    if (fr.port == 5) return firmware_reply("Nerit TEST 1.00 ");
    return std::nullopt;
  };
  f.c.Combo2.select(0);
  fp.dialogs.expect(kOnlineQuestion, MsgAnswer::No);
  f.session.Command1_Click();
  EXPECT_EQ(fp.comm.opened, (Ints{2, 5}));
  EXPECT_EQ(fp.clock.now_ms(), 250 + 100);
  EXPECT_EQ(face(), "online green|Port: 5|Nerit TEST 1.00 |open|Check1|connected 1");
  EXPECT_EQ(f.c.Combo2.list_index, -1);
  EXPECT_EQ(fp.dialogs.boxes(),
            Strings{"Online|None|YesNo|Verbunden, Daten vom Controller laden?"});
  EXPECT_EQ(peer.frames.size(), 2u);  // No: nothing read
}

TEST_F(SessionTest, ALateReplyIsDecodedAfterTheScanMovedOn) {
  fp.comm.present = {2, 3};
  peer.answer = [this](const ScriptedPeer::Frame& fr) -> std::optional<std::string> {
    // Port 2 answers after 300 ms, when the scan already waits on port 3.
    if (fr.port == 2)
      fp.comm.arrive_after(300, firmware_reply("Nerit TEST 1.00 "), SerialPort::kReceive, -1);
    return std::nullopt;
  };
  fp.dialogs.expect(kOnlineQuestion, MsgAnswer::No);
  f.session.Command1_Click();
  EXPECT_EQ(face(), "online green|Port: 3|Nerit TEST 1.00 |open|Check1|connected 1");
  EXPECT_EQ(fp.clock.now_ms(), 300);
}

TEST_F(SessionTest, ConnectWhileOnlineDisconnectsAndTheFirmwareMenuHandsThePortOver) {
  go_online();
  f.c.Combo2.enabled = false;
  f.session.Command1_Click();
  EXPECT_EQ(face(), "offline red|Connection|Closed|closed|Combo2|connected 0");
  EXPECT_TRUE(peer.frames.empty());
  go_online(7);
  f.c.Combo2.enabled = false;
  f.session.firmwareupdate_Click();
  EXPECT_EQ(f.vars.comport, 7);
  EXPECT_EQ(face(), "offline red|Connection|Closed|closed|connected 0");
  EXPECT_EQ(fp.windows.calls.back(), "show Form2");
}

TEST_F(SessionTest, SecondScanSendsTheShortFrameAndLeavesASilentPortOpen) {
  fp.comm.present = {1, 2, 3};
  f.session.autoconnect2();
  EXPECT_EQ(fp.comm.opened, Ints{1});  // the open port blocks every later number
  EXPECT_EQ(fp.comm.written[1], short_connect_frame());
  EXPECT_EQ(face(), "offline red|-|-|open|Combo2|connected 0");
  fp.comm.set_port_open(false);
  fp.comm.present = {4};
  answer_like_controller();
  f.session.autoconnect2();  // goes online without asking
  EXPECT_EQ(face(), "online green|Port: 4|Nerit TEST 1.00 |open|Combo2|Check1|connected 1");
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

TEST_F(SessionTest, DebugPortOpensByHandEntryZeroClosesItAndConnectLeavesIt) {
  fp.comm.present = {3};
  f.c.Combo2.select(3);
  f.session.Combo2_Click();
  EXPECT_EQ(fp.comm.comm_port(), 3);
  EXPECT_EQ(face(), "Debug yellow|-|-|open|Combo2|connected 0");
  EXPECT_TRUE(fp.comm.written.empty());
  // Connect leaves debug mode and goes straight on to a scan.
  fp.dialogs.expect(kFailed);
  f.session.Command1_Click();
  EXPECT_EQ(f.vars.debugmode, 0);
  EXPECT_EQ(fp.comm.opened, (Ints{3, 3, 3}));
  EXPECT_EQ(fp.dialogs.boxes(), Strings{kFailed});
  go_online();  // entry 0 while online: the port closes, the program stays connected
  f.vars.debugmode = 1;
  f.c.Combo2.select(0);
  f.session.Combo2_Click();
  EXPECT_EQ(face(), "Offline red|Connection|Closed|closed|Combo2|connected 1");
  EXPECT_EQ(f.vars.debugmode, 0);
  fp.comm.set_port_open(true);
  f.c.Combo2.select(-1);
  f.session.Combo2_Click();  // nothing chosen: nothing happens
  EXPECT_TRUE(fp.comm.port_open());
}

// The main window's port runs at 19200,N,8,1 however it is opened, even before any scan.
TEST_F(SessionTest, ADebugPortChosenBeforeAnyScanOpensAt19200) {
  fp.comm.present = {2};
  f.c.Combo2.select(2);
  f.session.Combo2_Click();
  EXPECT_EQ(fp.comm.opened_settings, Strings{"19200,N,8,1"});
}

// The adapter unplugged while online, in a read: one log line, offline as after a disconnect,
// the read ends and nothing comes back every 2.5 s.
TEST_F(SessionTest, AVanishedDeviceTakesTheLinkOfflineOnceAndEndsTheRead) {
  go_online(3);
  f.c.Label4[0] = {"online", kGreen};
  f.c.Combo2.enabled = false;
  peer.answer = nullptr;  // the controller is silent: the read waits
  fp.comm.vanish_after(100);
  f.c.Command5.back_color = kRed;  // a Make Permanent still unconfirmed
  EXPECT_FALSE(run_handler(fp.dialogs, [this] { f.session.Command12_Click(); }));
  EXPECT_EQ(fp.clock.now_ms(), 100);
  EXPECT_EQ(face(), "offline red|Connection|Closed|closed|Combo2|connected 0");
  EXPECT_EQ(f.c.List1.items, Strings{"12:00:00 -> Port 3 (fake3) closed: device removed"});
  for (const CommandButton* b : {&f.c.Command12, &f.c.Command5})
    EXPECT_EQ(b->back_color, kButtonFace) << b->caption;
  EXPECT_FALSE(f.c.Timer5.enabled());
  fp.clock.advance(10000);
  EXPECT_EQ(f.c.List1.items.size(), 1u);
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

// Closed when nothing was connected: the log line only.
TEST_F(SessionTest, APortClosingOfflineIsOnlyLogged) {
  fp.comm.present = {4};
  fp.comm.set_comm_port(4);
  fp.comm.set_port_open(true);
  fp.comm.vanish_after(5);
  fp.clock.advance(5);
  EXPECT_EQ(f.c.List1.items, Strings{"12:00:00 -> Port 4 (fake4) closed: device removed"});
  EXPECT_EQ(face(), "offline red|-|-|closed|Combo2|connected 0");
}

// A failure in the middle of a read stops its guard timer and gives the button its face back.
TEST_F(SessionTest, AReadThatFailsLeavesTimer5OffAndTheButtonRestored) {
  go_online();
  answer_like_controller();
  fp.comm.on_output = [this, inner = fp.comm.on_output](int port, const std::string& chars) {
    inner(port, chars);
    if (peer.frames.size() == 3) throw SerialError("write failed");
  };
  fp.dialogs.expect("Error|Critical|Ok|write failed");
  EXPECT_FALSE(run_handler(fp.dialogs, [this] { f.session.Command12_Click(); }));
  EXPECT_FALSE(f.c.Timer5.enabled());
  EXPECT_EQ(f.c.Command12.back_color, kButtonFace);
}

TEST_F(SessionTest, ReadsOfflineSendNothingAndTheMenuReadRequestsTheEepromBlocks) {
  f.session.Command12_Click();
  f.session.Lesen_Click();
  EXPECT_TRUE(fp.comm.written.empty());
  EXPECT_FALSE(f.c.Timer5.enabled());
  go_online();
  answer_like_controller();
  f.session.Lesen_Click();
  EXPECT_EQ(peer.addresses(), (Ints{0x10, 0x20, 0x30, 0x50, 0x60, 0x70, 0x80, 0x90, 0xA0}));
  EXPECT_EQ(frame_text(0), address_frame(kCmdBlockRequest, 0x10));
}

// Timer3 ends a wait once; Timer1 asks for a status frame.
TEST_F(SessionTest, TimerActions) {
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
}

// "Read Data from Unit" against the virtual controller, paced, which loses its tenth reply:
// Timer5 restarts the whole read inside the waiting one; when that ends, the first goes on.
TEST_F(SessionTest, ReadRequestsFiftyFourBlocksOneAtATimeAndRecoversADroppedReply) {
  sim::Options options;
  options.paced = true;
  options.faults.drop_replies = {10};
  sim::Controller controller(options);
  controller.memory().ram.set(0x2A0, 255);  // row 1, column 1: +100 %
  SimWire wire(fp.comm, controller);
  go_online();
  f.vars.rpmfaktor = 30000000;
  Color during = 0;
  fp.clock.schedule(1000, [&] { during = f.c.Command12.back_color; });
  f.session.Command12_Click();

  Ints order{0x250, 0x240, 0x260, 0x270, 0x280, 0x290};
  for (int a = 0x2A0; a <= 0x590; a += 16) order.push_back(a);
  const auto& frames = controller.frames_received();
  ASSERT_EQ(frames.size(), 10u + 54u + 44u);
  for (std::size_t i = 0; i < frames.size(); ++i) {
    EXPECT_EQ(frames[i].frame.code, kCmdSramRead);
    EXPECT_EQ(frames[i].frame.address(), order[i < 10 ? i : i < 64 ? i - 10 : i - 54]) << i;
    // One at a time: each request goes out when the reply to the one before has arrived.
    if (i > 0 && i != 10) {
      EXPECT_GE(frames[i].at_ms, frames[i - 1].at_ms + 22 * sim::kByteMs) << i;
    }
  }
  EXPECT_EQ(frames[10].at_ms, 2500);
  EXPECT_EQ(std::count(f.c.List1.items.begin(), f.c.List1.items.end(),
                       "12:00:02 -> Communication Timeout"),
            1);
  EXPECT_EQ(f.c.List1.items.front(), "12:00:00 -> Read SRam @ 0x250");
  EXPECT_EQ(f.c.MSFlexGrid2.text(0, 16), "8000");
  EXPECT_EQ(f.c.MSFlexGrid2.text(1, 1), "100");
  EXPECT_EQ(f.c.MSFlexGrid2.text(16, 16), "0");
  EXPECT_EQ(f.c.Combo1.list_index, controller.working_memory().at(0x240));
  EXPECT_EQ(f.vars.tps_max, controller.working_memory().at(0x243));
  EXPECT_EQ(during, kYellow);
  EXPECT_EQ(f.c.Command12.back_color, kButtonFace);
  EXPECT_FALSE(f.c.Timer5.enabled());
}

}  // namespace
}  // namespace nerit::testing
