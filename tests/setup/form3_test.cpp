// Opening and closing the base-settings window: what it shows of the program-wide values, the
// reminder on "Close", and the injector values sent once more as it goes.
#include <tuple>

#include "tests/setup/form3_fixture.h"

namespace nerit::testing {
namespace {

using Strings = std::vector<std::string>;
constexpr const char* kReminder =
    "Nerit|None|Ok|Einstellungen werden erst mit 'Make Permanent' dauerhaft übernommen";

class Form3Test : public Form3Fixture {
 protected:
  Form3Test() {
    vars.injoffset_in = 1000;
    vars.injoffset_out = 800;
    vars.injalt = 440;
    vars.injneu = 550;
    vars.zylinder = 6;
    vars.rpmfaktor = 20000000;  // as the controller's settings set it
    vars.injchannels = 15;
    vars.seq_faktor = 8;
    vars.drucksensor = 1;
  }
};

TEST_F(Form3Test, LoadShowsTheProgramWideValues) {
  open();
  EXPECT_EQ(std::tuple(c3.Text2[0].text, c3.Text2[1].text, c3.Text2[2].text, c3.Text2[3].text),
            std::tuple("1000", "800", "440", "550"));
  EXPECT_EQ(std::tuple(c3.Option1[0].value, c3.Option1[1].value, c3.Option1[2].value),
            std::tuple(false, true, false));
  EXPECT_EQ(c3.Combo2.items, (Strings{"#1", "#2", "#3", "#4", "#5", "#6"}));
  EXPECT_EQ(std::tuple(c3.Combo2.list_index, c3.Combo2.text), std::tuple(3, "#4"));
  EXPECT_EQ(c3.Combo3.items, (Strings{"/1", "/2", "/3", "/4", "/5", "/6", "/8"}));
  EXPECT_EQ(std::tuple(c3.Combo3.list_index, c3.Combo3.text), std::tuple(6, "/8"));
  EXPECT_EQ(c3.Combo1.items, (Strings{"Manuell", "MPX4250", "Toyota 1/2JZ"}));
  EXPECT_EQ(std::tuple(c3.Combo1.list_index, c3.Combo1.text), std::tuple(1, "MPX4250"));
  EXPECT_EQ(std::tuple(c3.Text1[0].text, c3.Text1[1].text, c3.Text1[2].text),
            std::tuple("0.00315", "0.04", "250"));
  EXPECT_FALSE(c3.Command2.enabled);
}

TEST_F(Form3Test, LoadShowsTheHeadingsWhereNoEntryMatches) {
  vars.injchannels = 0;
  vars.drucksensor = 7;
  vars.seq_faktor = 7;
  vars.zylinder = 5;
  open();
  EXPECT_EQ(std::tuple(c3.Combo2.list_index, c3.Combo2.text), std::tuple(-1, "#Injectors"));
  EXPECT_EQ(std::tuple(c3.Combo1.list_index, c3.Combo1.text), std::tuple(-1, "MAP-Sensor Type"));
  EXPECT_EQ(c3.Combo3.list_index, -1);
  EXPECT_EQ(std::tuple(c3.Option1[0].value, c3.Option1[1].value, c3.Option1[2].value),
            std::tuple(false, false, false));
}

TEST_F(Form3Test, LoadChangesNoProgramWideValueAndSendsNothing) {
  go_online();
  const ProgramState before = vars;
  open();
  EXPECT_EQ(vars.rpmfaktor, 20000000);  // not the quarter an option click sets
  EXPECT_EQ(
      std::tuple(vars.injchannels, vars.seq_faktor, vars.drucksensor, vars.injsizecorr),
      std::tuple(before.injchannels, before.seq_faktor, before.drucksensor, before.injsizecorr));
  EXPECT_EQ(wire(), "");
}

TEST_F(Form3Test, CloseShowsTheReminderThenUnloadSendsTheInjectorValuesOnceMore) {
  go_online();
  open();
  c3.Text2[kOffsetIn].text = "2500";  // typed, no Enter
  fp.dialogs.expect(kReminder);
  form3.Command3_Click();
  EXPECT_EQ(fp.windows.calls.back(), "unload Form3");
  EXPECT_FALSE(fp.windows.is_loaded(FormId::Form3));
  EXPECT_EQ(wire(), frame_hex(0x03, {128, 7, 208, 3, 32, 102, 15}));
  EXPECT_EQ(vars.injoffset_in, 2000);
  EXPECT_FALSE(form3.Timer1.enabled());
}

TEST_F(Form3Test, ClosingOfflineStoresTheValuesAndSendsNothing) {
  open();
  c3.Text2[kSizeNew].text = "440";
  fp.dialogs.expect(kReminder);
  form3.Command3_Click();
  EXPECT_EQ(vars.injsizecorr, 128);
  EXPECT_EQ(wire(), "");
}

TEST_F(Form3Test, UnloadWithASizeOf0ShowsNoBoxAndSendsNothing) {
  go_online();
  vars.injalt = vars.injneu = 0;  // nothing read from a controller yet
  open();
  fp.dialogs.expect(kReminder);  // the only box
  form3.Command3_Click();
  EXPECT_EQ(wire(), "");
  EXPECT_EQ(fp.dialogs.shown.size(), 1u);
}

}  // namespace
}  // namespace nerit::testing
