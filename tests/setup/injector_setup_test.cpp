// Cylinders, injector channels, the sequential divisor, and the injector sizes and offsets:
// what each choice stores, and the 0x03 frame that Enter puts on the wire.
#include <tuple>

#include "tests/setup/form3_fixture.h"

namespace nerit::testing {
namespace {

class InjectorSetupTest : public Form3Fixture {
 protected:
  InjectorSetupTest() {
    vars.injchannels = 7;
    f.panel_controls.Slider1.value = 140;
    open();
  }
  void type_injectors(const std::string& in, const std::string& out, const std::string& old_size,
                      const std::string& new_size) {
    c3.Text2[kOffsetIn].text = in;
    c3.Text2[kOffsetOut].text = out;
    c3.Text2[kSizeOld].text = old_size;
    c3.Text2[kSizeNew].text = new_size;
  }
  // Enter in a box; returns the key left to insert.
  int enter(int box = kOffsetIn) { return form3.injectors.Text2_KeyPress(box, 13); }
  auto stored() const {
    return std::tuple(vars.injoffset_in, vars.injoffset_out, vars.injalt, vars.injneu,
                      vars.injsizecorr);
  }
};

TEST_F(InjectorSetupTest, CylinderOptionsSetZylinderRpmfaktorAndTheRpmAxis) {
  const struct {
    int option, zylinder;
    double rpmfaktor;
    std::int32_t at500, at8000;
  } cases[] = {
      {0, 4, 7500000, 15000, 938},  // 937.5, ties to even
      {1, 6, 5000000, 10000, 625},
      {2, 8, 3750000, 7500, 469},  // 468.75
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(k.option);
    form3.injectors.Option1_Click(k.option);
    EXPECT_EQ(vars.zylinder, k.zylinder);
    EXPECT_EQ(vars.rpmfaktor, k.rpmfaktor);
    EXPECT_EQ(f.c.rpm_points[1], k.at500);
    EXPECT_EQ(f.c.rpm_points[16], k.at8000);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(c3.Option1[i].value, i == k.option) << i;
  }
}

TEST_F(InjectorSetupTest, EachChannelEntryGivesOneBitPerActiveOutput) {
  const double masks[] = {1, 3, 7, 15, 31, 63};
  for (int n = 0; n < 6; ++n) {
    c3.Combo2.select(n);
    form3.injectors.Combo2_Click();
    EXPECT_EQ(c3.Combo2.text, "#" + std::to_string(n + 1));
    EXPECT_EQ(vars.injchannels, masks[n]) << n;
  }
}

TEST_F(InjectorSetupTest, TheDivisorAfterSlash6IsSlash8) {
  for (auto [index, entry, divisor] :
       {std::tuple(6, "/8", 8), std::tuple(5, "/6", 6), std::tuple(0, "/1", 1)}) {
    c3.Combo3.select(index);
    form3.injectors.Combo3_Click();
    EXPECT_EQ(c3.Combo3.text, entry);
    EXPECT_EQ(vars.seq_faktor, divisor) << entry;
  }
}

TEST_F(InjectorSetupTest, EnterClampsAnOffsetAbove2000AndSends2000) {
  go_online();
  type_injectors("2500", "300", "440", "550");
  EXPECT_EQ(enter(), 0);
  EXPECT_EQ(c3.Text2[kOffsetIn].text, "2000");
  EXPECT_EQ(vars.injoffset_in, 2000);
  // Slider 140; 2000 = 7, 208; 300 = 1, 44; 440 / 550 x 128 = 102.4; channels 7.
  EXPECT_EQ(wire(), frame_hex(0x03, {140, 7, 208, 1, 44, 102, 7}));
  EXPECT_EQ(fp.comm.output_calls, 22);  // one character a write
}

TEST_F(InjectorSetupTest, EnterStoresOffsetsSizesAndTheSizeRatio) {
  type_injectors("1000", "800", "440", "550");
  enter(kSizeOld);
  EXPECT_EQ(stored(), std::tuple(1000, 800, 440, 550, 102));
}

TEST_F(InjectorSetupTest, EnterWhileNotConnectedSendsNothing) {
  go_online();
  vars.connected = 0;  // the port is open, the controller has not answered
  type_injectors("1000", "800", "440", "550");
  enter();
  EXPECT_EQ(wire(), "");
  EXPECT_EQ(vars.injsizecorr, 102);
}

TEST_F(InjectorSetupTest, ASizeOf0ShowsAMessageAndNeitherStoresNorSends) {
  go_online();
  type_injectors("1000", "800", "440", "0");
  const auto before = stored();
  fp.dialogs.expect(
      "Error|Exclamation|Ok|Injectorsize old / new: a size of 0 gives no ratio. Enter both "
      "sizes, e.g. 440 / 550.");
  enter();
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(wire(), "");
}

TEST_F(InjectorSetupTest, ARatioTheControllerCannotTakeShowsAMessageAndNeitherStoresNorSends) {
  go_online();
  type_injectors("1000", "800", "1100", "550");  // 256
  const auto before = stored();
  fp.dialogs.expect(
      "Error|Exclamation|Ok|Injectorsize old / new: 1100 / 550 gives 256; the controller takes "
      "at most 255 (an old size below twice the new one).");
  enter();
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(wire(), "");
}

TEST_F(InjectorSetupTest, AnEmptyBoxShowsAMessageAndNeitherStoresNorSends) {
  go_online();
  type_injectors("1000", "", "440", "550");
  const auto before = stored();
  fp.dialogs.expect(
      "Error|Exclamation|Ok|Injectoroffset out / µs: \"\" is no number of 0 or more.");
  enter();
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(wire(), "");
}

TEST_F(InjectorSetupTest, InjectorBoxesTakeDigitsAndBackspaceAndEnterOnly) {
  for (int key : {'0', '4', '9', '\b'}) EXPECT_EQ(form3.injectors.Text2_KeyPress(2, key), key);
  for (int key : {',', '.', '-', 'a', ' '}) EXPECT_EQ(form3.injectors.Text2_KeyPress(2, key), 0);
  EXPECT_EQ(vars.injsizecorr, 0);  // no key but Enter stores anything
}

}  // namespace
}  // namespace nerit::testing
