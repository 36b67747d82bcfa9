// Bulk transfers: the exact frames, their order, one acknowledged frame at a time, the button
// colours, the guards, a failed cell that leaves no half frame, and what a read gives back.
#include <gtest/gtest.h>

#include "link/cell_codec.h"
#include "shell/errors.h"
#include "shell/fault_boundary.h"
#include "shell/numbers.h"
#include "sim/controller.h"
#include "tests/link/link_fixture.h"
#include "tests/support/sim_wire.h"

namespace nerit::testing {
namespace {

using Ints = std::vector<int>;

class TransfersTest : public LinkFixture {
 protected:
  TransfersTest() {
    go_online();
    answer_like_controller();
    f.c.Combo1.select(1);
    auto& v = f.vars;
    v.drucksensor = 1, v.tps_min = 20, v.tps_max = 230, v.injoffset_in = 0x150;
    v.injoffset_out = 0x120, v.injalt = 440, v.injneu = 440, v.aoutmax = 255, v.zylinder = 4;
    v.injchannels = 15, v.seq_faktor = 1, v.rpmfaktor = 30000000;
    f.c.boost_enable = 1, f.c.boost_start = 100, f.c.boost_set = 128;
    f.c.Check6.value = 1, f.c.Check4.value = 0;
    for (int i = 1; i <= 16; ++i) f.c.load_points[i] = static_cast<std::int16_t>(20 * i);
    f.shell.Form_Activate();  // rpm_points from the headings 500 ... 8000
    for (int r = 1; r <= 16; ++r)
      for (int c = 1; c <= 16; ++c) f.c.MSFlexGrid3.set_text(r, c, "1000");
    f.c.MSFlexGrid2.set_text(1, 1, "100");
    f.c.MSFlexGrid2.set_text(1, 2, "-100");
    f.c.MSFlexGrid2.set_text(1, 3, "12,5");
    f.c.MSFlexGrid2.set_text(2, 1, "50");
    f.c.MSFlexGrid3.set_text(1, 1, "20");
    f.c.MSFlexGrid3.set_text(1, 2, "3000");
    // The watched button's colour each time the controller receives a frame.
    peer.answer = [this, inner = peer.answer](const ScriptedPeer::Frame& fr) {
      colours.push_back(watched->back_color);
      return inner(fr);
    };
  }

  std::string data_of(std::size_t i) const { return hex_bytes(frame_text(i).substr(4, 16)); }

  const CommandButton* watched = &f.c.Command9;
  std::vector<Color> colours;
};

TEST_F(TransfersTest, WriteDataToUnitSendsFiftyFourAcknowledgedFrames) {
  f.transfers.Command9_Click();

  ASSERT_EQ(peer.frames.size(), 54u);
  EXPECT_EQ(fp.comm.written[1].size(), 54u * 22u);
  Ints expected{0x240, 0x250, 0x260, 0x270, 0x280, 0x290};
  for (int a = 0x2A0; a <= 0x590; a += 16) expected.push_back(a);
  EXPECT_EQ(peer.addresses(), expected);
  EXPECT_EQ(peer.codes(), Ints(54, kCmdSramWrite));
  for (std::size_t i = 1; i < peer.frames.size(); ++i)
    EXPECT_EQ(peer.frames[i].at_ms, peer.frames[i - 1].at_ms + peer.delay_ms) << i;

  EXPECT_EQ(hex_bytes(frame_text(0)),
            "55 0B 02 40 01 01 14 E6 50 01 20 01 B8 01 B8 01 80 00 FF 01 00 0D");
  EXPECT_EQ(data_of(1), "64 80 04 0F 01 02 32 02 32 00 01 00 00 00 00 00");
  EXPECT_EQ(data_of(2), "14 00 28 00 3C 00 50 00 64 00 78 00 8C 00 A0 00");
  EXPECT_EQ(data_of(4), "60 EA 30 75 20 4E 98 3A E0 2E 10 27 7B 21 4C 1D");  // 60000, 30000 ...
  EXPECT_EQ(data_of(6), "FF 01 8F 80 80 80 80 80 80 80 80 80 80 80 80 80");
  EXPECT_EQ(data_of(22), "D4 30 53 00 FA 00 FA 00 FA 00 FA 00 FA 00 FA 00");
  // The restore point of the tune being written, then one line per acknowledgement.
  ASSERT_EQ(f.c.List1.items.size(), 55u);
  EXPECT_EQ(f.c.List1.items.front().rfind("Restore point: ", 0), 0u);
  EXPECT_EQ(f.c.List1.items.back(), "12:00:00 -> Write SDram @ 0x590");
  EXPECT_EQ(colours, std::vector<Color>(54, kYellow));
  EXPECT_EQ(f.c.Command9.back_color, kButtonFace);

  peer.frames.clear();
  f.vars.airflowtype = 1;  // voltage output: one byte, clamped at 255
  f.c.MSFlexGrid3.set_text(1, 1, "6000");
  f.transfers.Command9_Click();
  EXPECT_EQ(data_of(22).substr(0, 14), "FF 00 99 00 33");  // 3000 mV -> 153, 1000 -> 51

  peer.frames.clear(), colours.clear();
  watched = &f.c.Command15;
  f.transfers.Command15_Click();  // "Update": the settings blocks only
  EXPECT_EQ(peer.addresses(), (Ints{0x240, 0x250}));
  EXPECT_EQ(colours, (std::vector<Color>{kYellow, kYellow}));
}

TEST_F(TransfersTest, WriteToEepromGoesMapFirstSettingsLastThenReloads) {
  watched = &f.c.Command4[0];
  f.transfers.Command4_Click(0);
  ASSERT_EQ(peer.frames.size(), 10u);
  EXPECT_EQ(peer.codes(), (Ints{1, 1, 1, 1, 1, 1, 1, 1, 1, kCmdReloadEeprom}));
  EXPECT_EQ(peer.addresses(), (Ints{0x50, 0x60, 0x70, 0x80, 0x90, 0xA0, 0x20, 0x30, 0x10, 0}));
  // Rows 1 and 2, columns 1-8: 100 % -> 255, -100 % -> 1, 12,5 -> 12 % -> 143, 0 -> 128,
  // 50 % -> 191.5 -> 192.
  EXPECT_EQ(data_of(0), "FF 01 8F 80 80 80 80 80 C0 80 80 80 80 80 80 80");
  EXPECT_EQ(data_of(7), "B4 00 C8 00 DC 00 F0 00 00 00 00 00 00 00 00 00");
  EXPECT_EQ(data_of(8), "01 01 14 E6 50 01 20 01 B8 01 B8 01 80 00 FF 00");  // byte 15 = 0
  EXPECT_EQ(frame_text(9), command_frame(kCmdReloadEeprom, 0, 0));
  EXPECT_EQ(colours[0], kRed);
  EXPECT_EQ(colours[9], kButtonFace);  // the reload goes after the colour is back
  EXPECT_EQ(f.c.MSFlexGrid2.row, 12);
  EXPECT_EQ(f.c.MSFlexGrid2.col, 8);
  peer.frames.clear();
  f.transfers.Schreiben_Click();  // the menu reloads twice
  EXPECT_EQ(peer.codes().size(), 11u);
  EXPECT_EQ(peer.codes()[9], kCmdReloadEeprom);
  EXPECT_EQ(peer.codes()[10], kCmdReloadEeprom);
}

// Only a text reply with byte 3 = 1 ends the red.
TEST_F(TransfersTest, MakePermanentStaysRedUntilTheControllerConfirms) {
  peer.answer = nullptr;
  f.transfers.Command5_Click();
  EXPECT_EQ(frame_text(0), command_frame(kCmdMakePermanent, 0, 0));
  EXPECT_EQ(f.c.Command5.back_color, kRed);
  for (const auto& [flag, colour] : {std::pair{0, kRed}, {2, kRed}, {1, kButtonFace}}) {
    fp.comm.arrive_after(40, text_reply(flag ? "Permanent" : "Busy", flag));
    fp.clock.advance(50);
    EXPECT_EQ(f.c.Command5.back_color, colour) << flag;
  }
  f.transfers.Command2_Click();  // the reload: one frame, no wait
  EXPECT_EQ(peer.frames.size(), 2u);
  EXPECT_EQ(fp.clock.now_ms(), 150);
}

TEST_F(TransfersTest, NoLoadTypeOrOfflineStopsEveryWrite) {
  f.c.Combo1.select(-1);
  for (int i = 0; i < 3; ++i) fp.dialogs.expect("Fehler|Information|Ok|Keine Lastgröße gewählt!");
  f.transfers.Command9_Click();
  f.transfers.Command15_Click();
  f.transfers.Command4_Click(0);
  EXPECT_EQ(fp.dialogs.boxes(),
            std::vector<std::string>(3, "Fehler|Information|Ok|Keine Lastgröße gewählt!"));
  f.c.Combo1.select(1);
  f.vars.connected = 0;
  f.transfers.Command9_Click();
  f.transfers.Command15_Click();
  f.transfers.Command4_Click(0);
  f.transfers.Command2_Click();
  f.transfers.Command5_Click();
  EXPECT_TRUE(peer.frames.empty());
  EXPECT_EQ(fp.dialogs.shown.size(), 3u);
  EXPECT_EQ(f.c.Command5.back_color, kButtonFace);
}

TEST_F(TransfersTest, ACellThatCannotBeSentEndsTheTransferBetweenFrames) {
  f.c.MSFlexGrid2.set_text(5, 3, "201");
  fp.dialogs.expect("Error|Critical|Ok|Overflow");
  EXPECT_FALSE(run_handler(fp.dialogs, [this] { f.transfers.Command9_Click(); }));
  EXPECT_EQ(fp.dialogs.boxes(), std::vector<std::string>{"Error|Critical|Ok|Overflow"});
  EXPECT_EQ(fp.comm.written[1].size(), 10u * 22u);  // settings, axes, rows 1-4: whole frames
  EXPECT_EQ(f.c.Command9.back_color, kButtonFace);
  f.c.MSFlexGrid2.set_text(5, 3, "0");
  f.c.MSFlexGrid3.set_text(2, 9, "0");  // an airflow frequency of zero
  fp.dialogs.expect("Error|Critical|Ok|Division by zero");
  EXPECT_FALSE(run_handler(fp.dialogs, [this] { f.transfers.Command9_Click(); }));
  EXPECT_EQ(fp.dialogs.shown.at(1).text, "Division by zero");
  EXPECT_EQ(fp.comm.written[1].size(), (10u + 25u) * 22u);  // through the first half of row 2
}

// Against the virtual controller: what is written comes back on the next read.
using RoundTripTest = LinkFixture;

TEST_F(RoundTripTest, WrittenMapsAndAxesReadBackUnchanged) {
  sim::Controller controller;
  SimWire wire(fp.comm, controller);
  fp.dialogs.expect(kOnlineQuestion, MsgAnswer::Yes);
  f.session.Command1_Click();
  ASSERT_EQ(f.vars.connected, 1);

  Grid& corr = f.c.MSFlexGrid2;
  Grid& air = f.c.MSFlexGrid3;
  for (int r = 1; r <= 16; ++r) {
    for (int c = 1; c <= 16; ++c) {
      corr.set_text(r, c, std::to_string((r * 7 + c * 3) % 151 - 50));
      air.set_text(r, c, std::to_string(20 + r * 150 + c * 13));
    }
  }
  const Grid corr_written = corr, air_written = air;
  const auto rpm_written = f.c.rpm_points;
  f.c.load_points[3] = 77;
  const auto load_written = f.c.load_points;

  f.transfers.Command9_Click();
  for (int r = 1; r <= 16; ++r)
    for (int c = 1; c <= 16; ++c) corr.set_text(r, c, "x"), air.set_text(r, c, "x");
  f.c.load_points = {};
  f.session.Command12_Click();

  for (int r = 0; r <= 16; ++r) {
    for (int c = 1; c <= 16; ++c) {
      EXPECT_EQ(corr.text(r, c), corr_written.text(r, c)) << r << "," << c;
      // Frequencies come back as the value that writes the same period word.
      if (r > 0) {
        EXPECT_EQ(airflow_bytes(val(air.text(r, c)), 0),
                  airflow_bytes(val(air_written.text(r, c)), 0))
            << r << "," << c;
      }
    }
  }
  EXPECT_EQ(f.c.rpm_points, rpm_written);
  EXPECT_EQ(f.c.load_points, load_written);
  EXPECT_EQ(fp.dialogs.shown.size(), 1u);  // only the "Online" question
}

}  // namespace
}  // namespace nerit::testing
