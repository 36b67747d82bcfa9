// The tuning panels on the composed main window: the frame each change sends, the reminder
// box, the labels, the diagnostic file and the failures that send nothing.
#include <fstream>

#include "shell/fault_boundary.h"
#include "tests/link/link_fixture.h"

namespace nerit::testing {
namespace {

using Strings = std::vector<std::string>;

constexpr const char* kReminder =
    "Nerit|None|Ok|Einstellungen werden erst mit 'Make Permanent' dauerhaft übernommen";

class PanelsTest : public LinkFixture {
 protected:
  PanelsTest() {
    auto& v = f.vars;
    v.zylinder = 4, v.injchannels = 15, v.seq_faktor = 1;
    f.c.boost_start = 100, f.c.boost_set = 128;
    f.c.Check6.value = 1;
  }
  std::vector<std::string> sent() const {
    std::vector<std::string> out;
    for (const auto& fr : peer.frames) out.push_back(hex_bytes(fr.bytes));
    return out;
  }
  // A handler as the window runs it: a failure becomes the "Error" box.
  void click(const std::function<void()>& handler) { run_handler(fp.dialogs, handler); }
  std::vector<std::uint8_t> file_bytes(const std::string& name) const {
    std::ifstream in(folder.path() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  // PressureSensor.dat whose byte of P kPa is P + 3, for 0..250 kPa.
  void write_sensor_table() const {
    std::vector<unsigned char> bytes;
    for (int p = 0; p <= 250; ++p) bytes.push_back(static_cast<unsigned char>(p + 3));
    folder.write("PressureSensor.dat", bytes);
  }
  PanelControls& pc = f.panel_controls;
};

// "55 0A 00 00" + the data bytes given + zeros + "00 0D".
std::string frame_hex(const std::string& head, const std::vector<int>& data) {
  std::string s = head;
  for (int i = 0; i < 16; ++i) {
    char b[4];
    std::snprintf(b, sizeof b, " %02X", i < static_cast<int>(data.size()) ? data[i] : 0);
    s += b;
  }
  return s + " 00 0D";
}

// --- acceleration fuel -----------------------------------------------------------------------

TEST_F(PanelsTest, DraggingABarShowsItsValueAndSendsNothing) {
  go_online();
  pc.HScroll1[4].value = 77;
  f.acceleration_fuel.HScroll1_Scroll(4);
  EXPECT_EQ(pc.Label8[4].caption, "77");
  EXPECT_EQ(f.c.accel_param, (std::array<double, 6>{2, 50, 10, 2, 77, 0}));
  EXPECT_TRUE(peer.frames.empty());
}

TEST_F(PanelsTest, AChangedBarSendsBlockBWithoutWaiting) {
  go_online();
  answer_like_controller();
  pc.HScroll1[1].value = 200;
  f.acceleration_fuel.HScroll1_Change(1);
  EXPECT_EQ(sent(), Strings{frame_hex("55 0B 02 50", {100, 128, 4, 15, 1, 2, 200, 2, 50, 0, 1})});
  EXPECT_EQ(f.link.write_addr, 0x250);
  EXPECT_TRUE(f.c.List1.items.empty());  // returned before the acknowledgement came
  fp.clock.advance(10);
  EXPECT_EQ(f.c.List1.items, Strings{"12:00:00 -> Write SDram @ 0x250"});
}

// --- boost control ---------------------------------------------------------------------------

TEST_F(PanelsTest, BoostApplySendsStartByteAndSetRoundedToEven) {
  go_online();
  write_sensor_table();
  pc.Check3.value = 1;
  f.boost.Check3_MouseUp();
  pc.boost_start_text.text = "150";
  pc.boost_set_text.text = "50";  // 127.5
  fp.dialogs.expect(kReminder);
  f.boost.Command7_Click();
  EXPECT_EQ(sent(), Strings{frame_hex("55 0A 00 00", {1, 153, 128})});
  EXPECT_EQ(f.c.boost_start, 153);
  EXPECT_EQ(f.c.boost_set, 127.5);
}

TEST_F(PanelsTest, BoostApplyOfflineShowsTheReminderAndKeepsTheValues) {
  write_sensor_table();
  pc.boost_start_text.text = "0";
  pc.boost_set_text.text = "100";
  fp.dialogs.expect(kReminder);
  f.boost.Command7_Click();
  EXPECT_TRUE(peer.frames.empty());
  EXPECT_EQ(f.c.boost_start, 3);
  EXPECT_EQ(f.c.boost_set, 255);
}

TEST_F(PanelsTest, BoostValuesTheControllerCannotTakeEndWithAMessageAndSendNothing) {
  go_online();
  const struct {
    bool table;
    const char *start, *set, *box;
  } cases[] = {
      {false, "100", "50",
       "No pressure-sensor table (PressureSensor.dat) in %: calibrate the MAP sensor in "
       "Basesettings first."},
      {true, "251", "50",
       "Start / kPa: 251 kPa lies outside the pressure-sensor table (0-250 kPa)."},
      {true, "-1", "50", "Start / kPa: -1 kPa lies outside the pressure-sensor table (0-250 kPa)."},
      {true, "100", "101", "Set / %: 101 % gives 257.55; the controller takes 0-100 %."},
      {true, "100", "-1", "Set / %: -1 % gives -2.55; the controller takes 0-100 %."},
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(k.box);
    if (k.table) write_sensor_table();
    std::string box = k.box;
    if (const auto at = box.find('%'); !k.table) box.replace(at, 1, folder.path().string());
    pc.boost_start_text.text = k.start;
    pc.boost_set_text.text = k.set;
    fp.dialogs.expect("Error|Critical|Ok|" + box);
    click([&] { f.boost.Command7_Click(); });
    EXPECT_TRUE(peer.frames.empty());
    EXPECT_EQ(f.c.boost_start, 100);
    EXPECT_EQ(f.c.boost_set, 128);
  }
}

TEST_F(PanelsTest, TheBoostBoxStoresItsValueAndItsFieldsFollowIt) {
  for (int value : {1, 0}) {
    pc.Check3.value = value;
    f.boost.Check3_MouseUp();
    EXPECT_EQ(f.c.boost_enable, value);
    EXPECT_EQ(pc.boost_start_text.enabled, value == 1);
    EXPECT_EQ(pc.Combo4.enabled, value == 1);
    EXPECT_EQ(pc.solenoid_injector6.enabled, value == 1);
  }
  EXPECT_TRUE(peer.frames.empty());
}

TEST_F(PanelsTest, SettingsFromTheControllerFillTheBoostFields) {
  go_online();
  auto arrive = [&](const std::string& reply) {
    fp.comm.arrive_after(1, reply);
    fp.clock.advance(1);
  };
  arrive(sram_reply(0x250, {153, 128, 4, 15, 1}));
  EXPECT_EQ(pc.boost_start_text.text, "");  // no pressure table yet: no kPa to show
  EXPECT_EQ(pc.boost_set_text.text, "50");
  f.c.pressure_table[153] = 250;
  arrive(sram_reply(0x250, {153, 255, 4, 15, 1}));
  EXPECT_EQ(pc.boost_start_text.text, "250");
  EXPECT_EQ(pc.boost_set_text.text, "100");
  for (int enable : {1, 0}) {
    arrive(sram_reply(0x240, {1, 1, 20, 230, 0, 0, 0, 0, 0xB8, 1, 0xB8, 1, 128, 0, 255, enable}));
    EXPECT_EQ(pc.Check3.value, enable);
    EXPECT_EQ(pc.boost_set_text.enabled, enable == 1);
    EXPECT_EQ(pc.Frame1[kPanelBoostcontrol].enabled, enable == 1);
  }
}

// --- airflow output --------------------------------------------------------------------------

TEST_F(PanelsTest, VoltageOutputTakesTheInputAndTheClamp) {
  pc.Combo3.select(3);
  pc.Text1.text = "2500";
  f.airflow.OptionAnalog_Click();
  EXPECT_EQ(f.vars.airflowtype, 3);
  EXPECT_EQ(f.vars.aoutmax, 127);
  EXPECT_EQ(pc.Frame1[kPanelAirflowOutput].caption, "Airflow Out: Voltage 0-5000 mV");
  EXPECT_TRUE(pc.Combo3.enabled && pc.Label1.enabled && pc.Text1.enabled);
  pc.Combo3.select(5);
  f.airflow.Combo3_Click();
  EXPECT_EQ(f.vars.airflowtype, 5);
}

TEST_F(PanelsTest, FrequencyOutputLocksTheVoltageFields) {
  pc.Combo3.select(3);
  f.airflow.OptionAnalog_Click();
  f.airflow.OptionFrequency_Click();
  EXPECT_EQ(f.vars.airflowtype, 0);
  EXPECT_EQ(pc.Combo3.list_index, 0);
  EXPECT_EQ(pc.Frame1[kPanelAirflowOutput].caption, "Airflow Out: Karman Vortex 20-3000 Hz");
  EXPECT_FALSE(pc.Combo3.enabled || pc.Label1.enabled || pc.Text1.enabled);
}

TEST_F(PanelsTest, AirflowApplySendsTheOutputKindAndClampForBothKinds) {
  go_online();
  pc.Combo3.select(2);
  pc.Text1.text = "5000";
  pc.OptionAnalog.value = true;
  fp.dialogs.expect(kReminder);
  f.airflow.Command6_Click();
  pc.OptionAnalog.value = false;
  pc.OptionFrequency.value = true;
  f.airflow.OptionFrequency_Click();
  fp.dialogs.expect(kReminder);
  f.airflow.Command6_Click();
  EXPECT_EQ(sent(),
            (Strings{frame_hex("55 09 00 00", {2, 255}), frame_hex("55 09 00 00", {0, 255})}));
}

TEST_F(PanelsTest, AirflowApplyOfflineOnlyReminds) {
  fp.dialogs.expect(kReminder);
  f.airflow.Command6_Click();
  EXPECT_TRUE(peer.frames.empty());
}

TEST_F(PanelsTest, TheClampFieldTakesDigitsMinusAndBackspaceOnly) {
  std::string kept;
  for (char key : std::string("12a,-5.e ") + '\b')
    kept += static_cast<char>(f.airflow.Text1_KeyPress(key));
  EXPECT_EQ(kept, std::string("12\0\0-5\0\0\0\b", 10));
}

TEST_F(PanelsTest, EnterWritesTheClampAsATaggedDoubleAtTheStartOfTestBin) {
  folder.write("test.bin", {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i', 'j', 'k', 'l'});
  pc.Text1.text = "2500";
  EXPECT_EQ(f.airflow.Text1_KeyPress(13), 0);
  EXPECT_EQ(file_bytes("test.bin"),
            (std::vector<std::uint8_t>{5, 0, 0, 0, 0, 0, 0, 0x88, 0xA3, 0x40, 'k', 'l'}));
  pc.Text1.text = "-1";
  f.airflow.Text1_KeyPress(13);
  EXPECT_EQ(file_bytes("test.bin"),
            (std::vector<std::uint8_t>{5, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0xBF, 'k', 'l'}));
}

TEST_F(PanelsTest, AFailedDiagnosticWriteIsAnErrorBoxAndChangesNothing) {
  f.vars.pfad = folder.path() / "gone";
  pc.Text1.text = "100";
  const double aoutmax = f.vars.aoutmax;
  fp.dialogs.expect("Error|Critical|Ok|Cannot open " +
                    (folder.path() / "gone" / "test.bin").string());
  click([&] { f.airflow.Text1_KeyPress(13); });
  EXPECT_EQ(pc.Text1.text, "100");
  EXPECT_EQ(f.vars.aoutmax, aoutmax);
}

// --- manual injector adjust ------------------------------------------------------------------

TEST_F(PanelsTest, TheSliderLabelShowsWholePercentAroundOneHundredTwentyEight) {
  const std::pair<int, const char*> cases[] = {{128, "0%"},  {0, "-100%"}, {255, "99%"},
                                               {64, "-50%"}, {1, "-99%"},  {140, "9%"}};
  for (const auto& [value, text] : cases) {
    pc.Slider1.value = value;
    f.injector.Slider1_Scroll();
    EXPECT_EQ(pc.Label6.caption, text) << value;
  }
  EXPECT_TRUE(peer.frames.empty());
}

TEST_F(PanelsTest, ASliderChangeSendsTheInjectorFrameHighBytesFirstAndLogsThreeLines) {
  go_online();
  auto& v = f.vars;
  v.injoffset_in = 0x0123, v.injoffset_out = 0x0456, v.injalt = 440, v.injneu = 550;
  pc.Slider1.value = 140;
  f.injector.Slider1_Change();
  EXPECT_EQ(v.injsizecorr, 102);
  EXPECT_EQ(sent(), Strings{frame_hex("55 03 00 00", {140, 0x01, 0x23, 0x04, 0x56, 102, 15})});
  EXPECT_EQ(f.c.List1.items, (Strings{"Injoffset in / out: 291 / 1110",
                                      "Injsize alt / neu: 440 / 550", "Adjust: 9%"}));
}

TEST_F(PanelsTest, OfflineASliderChangeOnlyLogs) {
  f.vars.injalt = f.vars.injneu = 440;
  pc.Slider1.value = 0;
  f.injector.Slider1_Change();
  EXPECT_TRUE(peer.frames.empty());
  EXPECT_EQ(f.vars.injsizecorr, 128);
  EXPECT_EQ(f.c.List1.items.back(), "Adjust: -100%");
}

}  // namespace
}  // namespace nerit::testing
