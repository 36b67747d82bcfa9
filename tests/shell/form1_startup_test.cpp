// Main window start-up: what the load sets and what activation reads from the program folder.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "app/form1.h"
#include "shell/errors.h"
#include "shell/fault_boundary.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

using Strings = std::vector<std::string>;

class Form1Startup : public ::testing::Test {
 protected:
  Form1Startup() { form.Form_Load(); }

  testing::FakePlatform fp;
  testing::TempFolder folder;
  Program program{fp.platform, folder.path()};
  Form1& form = program.form1;
  Form1Controls& c = program.form1.c;
  PanelControls& pc = program.form1.panel_controls;
  LiveControls& lc = program.form1.live_controls;
};

TEST_F(Form1Startup, LoadFillsListsMenusGridsAndLinkLabelsAndStartsNothing) {
  pc.Frame1[kPanelBoostcontrol].visible = true;  // a second load hides every panel and clears
  c.MSFlexGrid2.set_text(5, 7, "77");            // the maps again
  c.MSFlexGrid3.set_text(16, 16, "3");
  form.Form_Load();

  EXPECT_EQ(pc.List2.items, (Strings{"Injektoradjust", "Airflow Fuelcut", "Boostcontrol",
                                     "Airflow Output", "Acceleration Fuel"}));
  for (const Frame& panel : pc.Frame1) EXPECT_FALSE(panel.visible) << panel.caption;
  EXPECT_EQ(lc.boost_captions,
            (std::array<std::string, 3>{"Boost / kPa", "Boost / V", "Boost / Raw"}));
  EXPECT_EQ(lc.tps_captions, (std::array<std::string, 3>{"TPS / %", "TPS / V", "TPS / Raw"}));
  EXPECT_EQ(form.vars.pfad, folder.path());
  EXPECT_EQ(c.caption, "Nerit: ");
  EXPECT_EQ(c.Combo1.items, (Strings{"TPS / %", "MAP / kPa abs.", "Analog #3 / mVolt",
                                     "Airflow Karmann Vortex / Hz"}));
  EXPECT_EQ(c.Combo1.list_index, -1);
  Strings debug_ports{"Deaktivieren"};
  for (int n = 1; n <= 32; ++n) debug_ports.push_back(std::to_string(n));
  EXPECT_EQ(c.Combo2.items, debug_ports);
  EXPECT_EQ(c.Combo2.text, "Debugport wählen....");
  EXPECT_EQ(c.Combo2.list_index, -1);
  EXPECT_FALSE(pc.Combo3.enabled || pc.Label1.enabled || pc.Text1.enabled ||
               pc.clamp_label.enabled);
  EXPECT_TRUE(pc.OptionFrequency.value);
  EXPECT_FALSE(pc.OptionAnalog.value);
  EXPECT_EQ(pc.Combo3.items,
            (Strings{"Deaktiviert", "Analog #1 / TPS", "Analog #2 / Map", "Analog #3", "Analog #4",
                     "Analog #5", "Analog #6", "Analog #7", "Analog #8"}));

  const Form1Menus& m = c.menus;
  Strings captions;
  for (const MenuItem* item :
       {&m.datei, &m.laden, &m.speichern, &m.controller, &m.autoconnect, &m.Lesen, &m.Schreiben,
        &m.firmwareupdate, &m.setup, &m.Grundeinstellungen, &m.airflowsettings, &m.Drehzahlpunkte,
        &m.Lastpunke, &m.logging, &m.echtzeit}) {
    captions.push_back(item->caption);
    EXPECT_TRUE(item->enabled) << item->caption;
  }
  EXPECT_EQ(captions,
            (Strings{"Datei", "Laden", "Speichern", "Controller", "Autoconnect", "Read Data",
                     "Write Data", "Firmwareupdate", "Setup", "Basesettings", "Airflowsettings",
                     "RPM Points", "Load Points", "Logging", "Realtimedata"}));
  EXPECT_EQ(m.lstart.caption, "Start");
  EXPECT_FALSE(m.lstart.enabled || m.lstop.enabled || c.Check1.enabled);
  EXPECT_EQ((Strings{c.Label4[0].caption, c.Label4[1].caption, c.Label4[2].caption}),
            (Strings{"offline", "-", "-"}));
  EXPECT_EQ(c.Label4[0].back_color, kRed);

  for (const Grid* g : {&c.MSFlexGrid2, &c.MSFlexGrid3}) {
    ASSERT_EQ(g->rows(), 17);
    ASSERT_EQ(g->cols(), 17);
    for (int i = 0; i <= 16; ++i) {
      EXPECT_EQ(g->col_width(i), 550) << i;
      if (i == 0) continue;
      EXPECT_EQ(g->text(0, i), std::to_string(500 * i));
      EXPECT_EQ(g->text(i, 0), "--");
      for (int col = 1; col <= 16; ++col) EXPECT_EQ(g->text(i, col), "0") << i << "," << col;
    }
  }
  const Grid& live = lc.MSFlexGrid1;
  ASSERT_EQ(live.rows(), 10);
  ASSERT_EQ(live.cols(), 2);
  EXPECT_EQ(live.col_width(0), 1200);
  EXPECT_EQ(live.col_width(1), 750);
  const Strings names{"Unit",        "Drehzahl", "INJ In / µs", "INJ Out / µs", "INJ Adj. / %",
                      "Boost / kPa", "TPS / %",  "Airflow",     "Analog 3 / V", "Airflow in"};
  for (int row = 0; row < 10; ++row) EXPECT_EQ(live.text(row, 0), names[row]);
  EXPECT_EQ(live.text(0, 1), "Value");

  EXPECT_TRUE(fp.clock.idle());  // no timer runs
  EXPECT_TRUE(fp.comm.open_attempts.empty());
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

// 256 little-endian 16-bit words; without the file the table keeps its values.
TEST_F(Form1Startup, ActivateReadsPressureRawWhenThereIsOne) {
  form.vars.pfad = "/somewhere/else";
  form.shell.Form_Activate();
  EXPECT_EQ(form.vars.pfad, folder.path());
  EXPECT_EQ(c.pressure_table, decltype(c.pressure_table){});
  for (const int step : {3, -255}) {
    std::vector<std::int16_t> words(256);
    std::vector<unsigned char> bytes;
    for (int i = 0; i < 256; ++i) {
      words[i] = static_cast<std::int16_t>(step * i + (step > 0 ? -100 : 32767));  // 33: -1
      if (step > 0 && i == 200) words[i] = static_cast<std::int16_t>(0x8000);
      bytes.push_back(static_cast<unsigned char>(words[i] & 0xFF));
      bytes.push_back(static_cast<unsigned char>(static_cast<std::uint16_t>(words[i]) >> 8));
    }
    folder.write("Pressure.raw", bytes);
    form.shell.Form_Activate();
    for (int i = 0; i < 256; ++i) EXPECT_EQ(c.pressure_table[i], words[i]) << i;
    for (int i = 256; i <= 400; ++i) EXPECT_EQ(c.pressure_table[i], 0) << i;
  }
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

// Periods rounded to the nearest: 30000000 / 4500 = 6666.67 -> 6667.
TEST_F(Form1Startup, ActivateDividesRpmFactorByTheHeadings) {
  form.vars.rpmfaktor = 30'000'000;
  form.shell.Form_Activate();
  EXPECT_EQ(std::vector<std::int32_t>(c.rpm_points.begin() + 1, c.rpm_points.end()),
            (std::vector<std::int32_t>{60000, 30000, 20000, 15000, 12000, 10000, 8571, 7500, 6667,
                                       6000, 5455, 5000, 4615, 4286, 4000, 3750}));
  c.MSFlexGrid2.set_text(0, 5, "0");
  fp.dialogs.expect("Error|Critical|Ok|Division by zero");
  EXPECT_FALSE(run_handler(fp.dialogs, [&] { form.shell.Form_Activate(); }));
  EXPECT_EQ(fp.dialogs.boxes(), Strings{"Error|Critical|Ok|Division by zero"});
}

}  // namespace
}  // namespace nerit
