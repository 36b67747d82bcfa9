// Main window start-up: what the load sets, what activation reads from the program folder and
// how the pressure table is rebuilt from the sensor file.
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/form1.h"
#include "shell/errors.h"
#include "shell/fault_boundary.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

using Strings = std::vector<std::string>;

class Form1Startup : public ::testing::Test {
 protected:
  testing::FakePlatform fp;
  testing::TempFolder folder;
  Program program{fp.platform, folder.path()};
  Form1& form = program.form1;
  Form1Controls& c = program.form1.c;

  // 256 little-endian 16-bit words, as the controller tool stores its pressure table.
  void write_pressure_raw(const std::vector<std::int16_t>& words) const {
    std::vector<unsigned char> bytes;
    for (std::int16_t w : words) {
      const auto u = static_cast<std::uint16_t>(w);
      bytes.push_back(static_cast<unsigned char>(u & 0xFF));
      bytes.push_back(static_cast<unsigned char>(u >> 8));
    }
    folder.write("Pressure.raw", bytes);
  }
};

TEST_F(Form1Startup, LoadFillsListsCombosMenusAndLinkLabels) {
  c.Frame1[kPanelBoostcontrol].visible = true;  // the load hides every panel again
  form.shell.Form_Load();

  EXPECT_EQ(c.List2.items, (Strings{"Injektoradjust", "Airflow Fuelcut", "Boostcontrol",
                                    "Airflow Output", "Acceleration Fuel"}));
  for (const Frame& panel : c.Frame1) EXPECT_FALSE(panel.visible) << panel.caption;

  EXPECT_EQ(c.boost_captions,
            (std::array<std::string, 3>{"Boost / kPa", "Boost / V", "Boost / Raw"}));
  EXPECT_EQ(c.tps_captions, (std::array<std::string, 3>{"TPS / %", "TPS / V", "TPS / Raw"}));
  EXPECT_EQ(form.vars.pfad, folder.path());
  EXPECT_EQ(c.caption, "Nerit: ");
  EXPECT_EQ(c.caption_prefix, "Nerit: ");

  EXPECT_EQ(c.Combo1.items, (Strings{"TPS / %", "MAP / kPa abs.", "Analog #3 / mVolt",
                                     "Airflow Karmann Vortex / Hz"}));
  EXPECT_EQ(c.Combo1.list_index, -1);

  ASSERT_EQ(c.Combo2.list_count(), 33);
  EXPECT_EQ(c.Combo2.items[0], "Deaktivieren");
  for (int n = 1; n <= 32; ++n) EXPECT_EQ(c.Combo2.items[n], std::to_string(n));
  EXPECT_EQ(c.Combo2.text, "Debugport wählen....");
  EXPECT_EQ(c.Combo2.list_index, -1);

  EXPECT_FALSE(c.Combo3.enabled);
  EXPECT_FALSE(c.Label1.enabled);
  EXPECT_FALSE(c.Text1.enabled);
  EXPECT_EQ(c.Combo3.items,
            (Strings{"Deaktiviert", "Analog #1 / TPS", "Analog #2 / Map", "Analog #3", "Analog #4",
                     "Analog #5", "Analog #6", "Analog #7", "Analog #8"}));

  struct Entry {
    const MenuItem& item;
    const char* caption;  // nullptr: caption not checked
    bool enabled;
  };
  const Form1Menus& m = c.menus;
  const Entry entries[] = {
      {m.datei, "Datei", true},
      {m.laden, "Laden", true},
      {m.speichern, "Speichern", true},
      {m.controller, "Controller", true},
      {m.autoconnect, "Autoconnect", true},
      {m.Lesen, "Read Data", true},
      {m.Schreiben, "Write Data", true},
      {m.firmwareupdate, "Firmwareupdate", true},
      {m.setup, "Setup", true},
      {m.Grundeinstellungen, "Basesettings", true},
      {m.airflowsettings, "Airflowsettings", true},
      {m.Drehzahlpunkte, "RPM Points", true},
      {m.Lastpunke, "Load Points", true},
      {m.logging, "Logging", true},
      {m.echtzeit, "Realtimedata", true},
      {m.lstart, "Start", false},
      {m.lstop, nullptr, false},
  };
  for (const Entry& e : entries) {
    if (e.caption) {
      EXPECT_EQ(e.item.caption, e.caption);
    }
    EXPECT_EQ(e.item.enabled, e.enabled) << e.item.caption;
  }

  EXPECT_EQ(c.Label4[0].caption, "offline");
  EXPECT_EQ(c.Label4[0].back_color, 255u);
  EXPECT_EQ(c.Label4[1].caption, "-");
  EXPECT_EQ(c.Label4[2].caption, "-");
  EXPECT_EQ(c.Check1.caption, "Realtimedata");
  EXPECT_FALSE(c.Check1.enabled);
  EXPECT_EQ(c.logging, 0);
}

TEST_F(Form1Startup, LoadLaysOutMapAndLiveGrids) {
  c.MSFlexGrid2.set_text(5, 7, "77");  // left from before: the load clears the maps
  c.MSFlexGrid3.set_text(16, 16, "3");
  form.shell.Form_Load();

  for (const Grid* g : {&c.MSFlexGrid2, &c.MSFlexGrid3}) {
    SCOPED_TRACE(g == &c.MSFlexGrid2 ? "MSFlexGrid2" : "MSFlexGrid3");
    ASSERT_EQ(g->rows(), 17);
    ASSERT_EQ(g->cols(), 17);
    for (int col = 0; col <= 16; ++col) EXPECT_EQ(g->col_width(col), 550) << col;
    EXPECT_EQ(g->text(0, 1), "500");
    EXPECT_EQ(g->text(0, 16), "8000");
    for (int i = 1; i <= 16; ++i) {
      EXPECT_EQ(g->text(0, i), std::to_string(500 * i));
      EXPECT_EQ(g->text(i, 0), "--");
      for (int col = 1; col <= 16; ++col) EXPECT_EQ(g->text(i, col), "0") << i << "," << col;
    }
  }

  const Grid& live = c.MSFlexGrid1;
  ASSERT_EQ(live.cols(), 2);
  ASSERT_EQ(live.rows(), 10);
  EXPECT_EQ(live.col_width(0), 1200);
  EXPECT_EQ(live.col_width(1), 750);
  const Strings names{"Unit",        "Drehzahl", "INJ In / µs", "INJ Out / µs", "INJ Adj. / %",
                      "Boost / kPa", "TPS / %",  "Airflow",     "Analog 3 / V", "Airflow in"};
  for (int row = 0; row < 10; ++row) EXPECT_EQ(live.text(row, 0), names[row]);
  EXPECT_EQ(live.text(0, 1), "Value");
}

TEST_F(Form1Startup, LoadStartsNoTimerAndTouchesNeitherPortNorUser) {
  form.shell.Form_Load();

  const Timer* timers[] = {&c.Timer1, &c.Timer2, &c.Timer3, &c.Timer4, &c.Timer5};
  const int intervals[] = {250, 250, 500, 0, 2500};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(timers[i]->interval(), intervals[i]) << "Timer" << i + 1;
    EXPECT_FALSE(timers[i]->enabled()) << "Timer" << i + 1;
  }
  EXPECT_TRUE(fp.clock.idle());
  fp.clock.advance(10'000);
  for (const Timer* t : timers) EXPECT_EQ(fp.timers.ticks(*t), 0);
  EXPECT_EQ(fp.timers.ticks(program.form4.Timer1), 0);

  EXPECT_EQ(fp.comm.output_calls, 0);
  EXPECT_TRUE(fp.comm.written.empty());
  EXPECT_TRUE(fp.comm.open_attempts.empty());
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

TEST(ProgramStateStart, EveryVariableStartsAtZeroOrEmpty) {
  const ProgramState v;
  EXPECT_TRUE(v.pfad.empty());
  EXPECT_TRUE(v.map_volt.empty());
  EXPECT_TRUE(v.tps_in_volt.empty());
  EXPECT_EQ(v.seq_faktor, 0);
  for (int n : {v.connected, v.port, v.debugmode, v.fokus}) EXPECT_EQ(n, 0);
  for (double d : {v.comport, v.drucksensor, v.tps_min, v.tps_max, v.tps_raw, v.tps_in, v.drehzahl,
                   v.rpmfaktor, v.injsizecorr, v.injchannels, v.zylinder, v.injin_alt, v.injout_alt,
                   v.injoffset_in, v.injoffset_out, v.injalt, v.injneu, v.airflowtype, v.aoutmax})
    EXPECT_EQ(d, 0.0);
}

TEST_F(Form1Startup, ActivateWithoutPressureFileKeepsZeroTableAndSetsFolder) {
  form.shell.Form_Load();
  form.vars.pfad = "/somewhere/else";
  EXPECT_TRUE(run_handler(fp.dialogs, [&] { form.shell.Form_Activate(); }));
  EXPECT_EQ(form.vars.pfad, folder.path());
  for (std::int16_t v : c.pressure_table) EXPECT_EQ(v, 0);
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

TEST_F(Form1Startup, ActivateReadsPressureRawAndReloadsItWhenChanged) {
  form.shell.Form_Load();
  std::vector<std::int16_t> words(256);
  for (int i = 0; i < 256; ++i) words[i] = static_cast<std::int16_t>(3 * i - 100);  // 33: -1
  words[200] = static_cast<std::int16_t>(0x8000);
  write_pressure_raw(words);

  form.shell.Form_Activate();
  EXPECT_EQ(c.pressure_table[0], -100);
  EXPECT_EQ(c.pressure_table[33], -1);
  EXPECT_EQ(c.pressure_table[34], 2);
  EXPECT_EQ(c.pressure_table[200], -32768);
  EXPECT_EQ(c.pressure_table[255], 665);
  for (int i = 0; i < 256; ++i) EXPECT_EQ(c.pressure_table[i], words[i]) << i;
  for (int i = 256; i <= 400; ++i) EXPECT_EQ(c.pressure_table[i], 0) << i;

  for (int i = 0; i < 256; ++i) words[i] = static_cast<std::int16_t>(32767 - 255 * i);
  write_pressure_raw(words);
  form.shell.Form_Activate();
  EXPECT_EQ(c.pressure_table[0], 32767);
  EXPECT_EQ(c.pressure_table[255], 32767 - 255 * 255);
  for (int i = 0; i < 256; ++i) EXPECT_EQ(c.pressure_table[i], words[i]) << i;
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

TEST_F(Form1Startup, ActivateDividesRpmFactorByHeadingsTiesToEven) {
  struct Case {
    double rpmfaktor;
    std::array<std::int32_t, 16> points;  // columns 1..16 with headings 500..8000
  };
  const Case cases[] = {
      {30'000'000,
       {60000, 30000, 20000, 15000, 12000, 10000, 8571, 7500, 6667, 6000, 5455, 5000, 4615, 4286,
        4000, 3750}},
      {1250, {2, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},  // 2.5 -> 2, 0.5 -> 0
      {1750, {4, 2, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},  // 3.5 -> 4, column 7: 0.5 -> 0
  };
  form.shell.Form_Load();
  for (const Case& k : cases) {
    SCOPED_TRACE(k.rpmfaktor);
    form.vars.rpmfaktor = k.rpmfaktor;
    form.shell.Form_Activate();
    EXPECT_EQ(c.rpm_points[0], 0);
    for (int i = 1; i <= 16; ++i) EXPECT_EQ(c.rpm_points[i], k.points[i - 1]) << "column " << i;
  }
}

TEST_F(Form1Startup, ActivateWithZeroHeadingFailsWithDivisionByZero) {
  form.shell.Form_Load();
  form.vars.rpmfaktor = 30'000'000;
  c.MSFlexGrid2.set_text(0, 5, "0");
  EXPECT_THROW(form.shell.Form_Activate(), DivisionByZeroError);

  EXPECT_FALSE(run_handler(fp.dialogs, [&] { form.shell.Form_Activate(); }));
  ASSERT_EQ(fp.dialogs.shown.size(), 1u);
  EXPECT_EQ(fp.dialogs.shown[0].text, "Division by zero");
  EXPECT_EQ(fp.dialogs.shown[0].icon, MsgIcon::Critical);
  EXPECT_EQ(fp.dialogs.shown[0].buttons, MsgButtons::Ok);
  EXPECT_EQ(fp.dialogs.shown[0].title, "Error");

  // The program goes on: with the heading fixed the next activation succeeds.
  c.MSFlexGrid2.set_text(0, 5, "2500");
  EXPECT_TRUE(run_handler(fp.dialogs, [&] { form.shell.Form_Activate(); }));
  EXPECT_EQ(c.rpm_points[5], 12000);
  EXPECT_EQ(fp.dialogs.shown.size(), 1u);
}

TEST_F(Form1Startup, ReloadPressureMapsEachSensorByteToTheHighestKpa) {
  form.shell.Form_Load();
  // MPX4250 preset: raw(P) = whole part of ((0.00315 * P + 0.04) * 5 * 51), P = 0..250 kPa.
  std::vector<unsigned char> raw;
  for (int p = 0; p <= 250; ++p)
    raw.push_back(static_cast<unsigned char>(std::trunc((0.00315 * p + 0.04) * 5 * 51)));
  ASSERT_EQ(raw[250], 211);
  ASSERT_EQ(raw[1], 11);
  ASSERT_EQ(raw[2], 11);
  folder.write("PressureSensor.dat", raw);

  form.shell.reload_pressure();
  EXPECT_EQ(c.pressure_table[211], 250);
  EXPECT_EQ(c.pressure_table[10], 0);     // P = 0
  EXPECT_EQ(c.pressure_table[11], 2);     // P = 1 and 2 share a byte
  EXPECT_EQ(c.pressure_table[206], 245);  // P = 244 and 245
  EXPECT_EQ(c.pressure_table[12], 3);
  for (int b : {0, 9, 212, 255, 300}) EXPECT_EQ(c.pressure_table[b], 0) << b;  // no pressure
  for (int p = 0; p <= 250; ++p) {
    const bool highest = p == 250 || raw[p + 1] != raw[p];
    if (highest) {
      EXPECT_EQ(c.pressure_table[raw[p]], p) << "P " << p;
    }
  }
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

}  // namespace
}  // namespace nerit
