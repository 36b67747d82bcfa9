// Load types and their axes, the RPM/Load Points edits and the map enable boxes.
#include <gtest/gtest.h>

#include <cmath>

#include "shell/fault_boundary.h"
#include "tests/maps/map_fixture.h"

namespace nerit::testing {
namespace {

class MapAxesTest : public MapFixture {
 protected:
  MapAxesTest() {
    f.vars.pfad = folder.path();
    // "\PressureSensor.dat" as the sensor calibration writes it: Int(U x 51) for 0..250 kPa.
    for (int p = 0; p <= 250; ++p)
      sensor_table.push_back(static_cast<unsigned char>(std::trunc((0.00315 * p + 0.04) * 255)));
  }
  std::string column0(MapId m) { return cells(m, 1, 0, 16, 0); }
  std::string points() {
    std::string out;
    for (int r = 1; r <= 16; ++r) out += (r > 1 ? " " : "") + std::to_string(f.c.load_points[r]);
    return out;
  }
  void choose(int type) {
    f.c.Combo1.select(type);
    f.axes.Combo1_Click();
  }
  std::vector<unsigned char> sensor_table;
};

TEST_F(MapAxesTest, EachLoadTypeFillsHeadingsPointsAndTheAirflowMap) {
  f.vars.tps_min = 20;
  f.vars.tps_max = 230;

  struct Case {
    int type;
    bool sensor_table;
    const char *headings, *points;
  };
  const Case cases[] = {
      {0, false, "0|6|13|20|26|33|40|46|53|60|66|73|80|86|93|100",
       "20 34 48 62 76 90 104 118 132 146 160 174 188 202 216 230"},
      {1, false, "0|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0", "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0"},
      // MPX4250: 251 kPa entries, step Int(251 / 12) = 20; past the last kPa the last one.
      {1, true, "0|20|40|60|80|100|120|140|160|180|200|220|240|250|250|250",
       "10 26 42 58 74 90 106 122 138 154 170 186 202 211 211 211"},
      {2, false, "0|333|666|1000|1333|1666|2000|2333|2666|3000|3333|3666|4000|4333|4666|5000",
       "0 17 34 51 68 85 102 119 136 153 170 187 204 221 238 255"},
      {3, false, "50|246|443|640|836|1033|1230|1426|1623|1820|2016|2213|2410|2606|2803|3000",
       "27762 31746 32198 32372 32463 32520 32559 32587 32608 32625 32638 32650 32659 32667 "
       "32673 32679"},
  };
  for (const Case& c : cases) {
    if (c.sensor_table) folder.write("PressureSensor.dat", sensor_table);
    choose(c.type);
    EXPECT_EQ(column0(kCorr), c.headings) << c.type;
    EXPECT_EQ(column0(kAir), c.headings) << c.type;
    EXPECT_EQ(points(), c.points) << c.type;
  }
  EXPECT_TRUE(fp.dialogs.shown.empty());

  f.vars.tps_min = f.vars.tps_max = 117;  // no throttle travel: every point the same
  choose(0);
  EXPECT_EQ(points(), "117 117 117 117 117 117 117 117 117 117 117 117 117 117 117 117");
}

TEST_F(MapAxesTest, ReadingTheLoadTypeFromTheControllerFillsTheAxis) {
  go_online();
  ReplyFrame block(kReplySram);
  block.byte(4, 3);
  fp.comm.arrive_after(0, block.address(0x240));
  fp.pump.process_events();
  EXPECT_EQ(f.c.Combo1.list_index, 3);
  EXPECT_EQ(grid(kAir).text(2, 0), "246");
}

TEST_F(MapAxesTest, RpmPointsEditOpensTheHeadingRowAndClosingRefillsThePeriods) {
  f.vars.rpmfaktor = 30000000;
  f.panel_controls.Frame1[kPanelBoostcontrol].visible = true;
  f.axes.Drehzahlpunkte_Click();
  EXPECT_EQ(grid(kCorr).fixed_rows, 0);
  for (const Frame& frame : f.panel_controls.Frame1) EXPECT_FALSE(frame.visible);

  click(kCorr, 0, 3);
  type(kCorr, "7000\r");
  EXPECT_EQ(grid(kAir).text(0, 3), "1500");  // copied only when the edit closes
  EXPECT_TRUE(peer.frames.empty());

  f.axes.Drehzahlpunkte_Click();
  EXPECT_EQ(grid(kCorr).fixed_rows, 1);
  for (const Frame& frame : f.panel_controls.Frame1) EXPECT_TRUE(frame.visible);
  EXPECT_EQ(grid(kAir).text(0, 3), "7000");
  EXPECT_EQ(f.c.rpm_points[3], 4285);  // whole part of 4285.7
  EXPECT_EQ(f.c.rpm_points[1], 60000);
  EXPECT_EQ(f.c.rpm_points[16], 3750);

  // A heading of 0 fails the close.
  f.axes.Drehzahlpunkte_Click();
  grid(kCorr).set_text(0, 5, "0");
  fp.dialogs.expect("Error|Critical|Ok|Division by zero");
  EXPECT_FALSE(run_handler(fp.dialogs, [&] { f.axes.Drehzahlpunkte_Click(); }));
  EXPECT_EQ(fp.dialogs.boxes(), std::vector<std::string>{"Error|Critical|Ok|Division by zero"});
}

TEST_F(MapAxesTest, LoadPointsEditRecomputesPointsFromTheNewHeadings) {
  folder.write("PressureSensor.dat", sensor_table);
  choose(1);
  f.axes.Lastpunke_Click();
  EXPECT_EQ(grid(kCorr).fixed_cols, 0);
  for (const Frame& frame : f.panel_controls.Frame1) EXPECT_FALSE(frame.visible);

  click(kCorr, 2, 0);
  type(kCorr, "400\r");  // clamped to the MAP range on Enter
  click(kCorr, 3, 0);
  type(kCorr, "120\r");
  EXPECT_EQ(grid(kCorr).text(2, 0), "300");
  f.axes.Lastpunke_Click();
  EXPECT_EQ(grid(kCorr).fixed_cols, 1);
  for (const Frame& frame : f.panel_controls.Frame1) EXPECT_TRUE(frame.visible);
  EXPECT_EQ(column0(kAir), "0|300|120|60|80|100|120|140|160|180|200|220|240|250|250|250");
  // Past the table's last kPa the sensor's top byte.
  EXPECT_EQ(points(), "10 211 106 58 74 90 106 122 138 154 170 186 202 211 211 211");
}

TEST_F(MapAxesTest, EnableBoxesOpenAndCloseTheirMapOnRelease) {
  for (int value : {0, 1}) {
    f.c.Check6.value = value;
    f.axes.Check6_MouseUp();
    f.c.Check4.value = 1 - value;
    f.axes.Check4_MouseUp();
    EXPECT_EQ(grid(kCorr).enabled, value == 1);
    EXPECT_EQ(grid(kAir).enabled, value == 0);
  }
}

}  // namespace
}  // namespace nerit::testing
