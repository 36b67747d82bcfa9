// The two-point wizard: where it shows, which field the measure button fills, and the sensor
// line it writes into "Faktor:" and "Offset".
#include <tuple>

#include "tests/setup/form3_fixture.h"

namespace nerit::testing {
namespace {

class SensorWizardTest : public Form3Fixture {
 protected:
  SensorWizardTest() {
    fp.locale.decimal = ',';
    open();
  }
  void points(const std::string& u100, const std::string& p2, const std::string& u2) {
    c3.Text4[kAt100kPa].text = u100;
    c3.Text3.text = p2;
    c3.Text4[kAtP2].text = u2;
  }
};

TEST_F(SensorWizardTest, WizzardTakesTheListsPlaceUntilCalculate) {
  EXPECT_TRUE(c3.List1.visible);
  EXPECT_FALSE(c3.wizard_frame.visible);
  form3.wizard.Command4_Click();
  EXPECT_FALSE(c3.List1.visible);
  EXPECT_TRUE(c3.wizard_frame.visible);
  type_sensor("0,00315", "0,04", "10");
  form3.pressure.Command1_Click();
  EXPECT_TRUE(c3.List1.visible);
  EXPECT_FALSE(c3.wizard_frame.visible);
}

TEST_F(SensorWizardTest, MeasureCopiesTheSensorVoltageIntoTheChosenField) {
  EXPECT_TRUE(c3.Option2[kAt100kPa].value);  // chosen at first
  vars.map_volt = "1,78";
  form3.wizard.Command5_Click();
  EXPECT_EQ(std::tuple(c3.Text4[0].text, c3.Text4[1].text), std::tuple("1,78", ""));
  c3.Option2[kAt100kPa].value = false;
  c3.Option2[kAtP2].value = true;
  vars.map_volt = "3,35";
  form3.wizard.Command5_Click();
  EXPECT_EQ(std::tuple(c3.Text4[0].text, c3.Text4[1].text), std::tuple("1,78", "3,35"));
}

TEST_F(SensorWizardTest, MeasureWithoutAVoltageSaysHowToGetOne) {
  fp.dialogs.expect(
      "Nerit|Exclamation|Ok|No sensor voltage measured yet: connect and tick \"Realtimedata\" "
      "first.");
  form3.wizard.Command5_Click();
  EXPECT_EQ(c3.Text4[kAt100kPa].text, "");
}

TEST_F(SensorWizardTest, CalcWritesFaktorAndOffsetOfTheLineThroughBothPoints) {
  const struct {
    const char *u100, *p2, *u2, *faktor, *offset;
  } cases[] = {
      {"1,775", "200", "3,35", "0,00315", "0,04"},  // the MPX4250 line
      {"1,5", "200", "3,5", "0,004", "-0,1"},       // m 0.02 V/kPa, o -0.5 V
      {"2", "50", "1", "0,004", "0"},
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(k.u100);
    points(k.u100, k.p2, k.u2);
    form3.wizard.Command7_Click();
    EXPECT_EQ(std::tuple(c3.Text1[kFaktor].text, c3.Text1[kOffset].text),
              std::tuple(k.faktor, k.offset));
  }
}

TEST_F(SensorWizardTest, P2Of100kPaShowsAMessageAndChangesNothing) {
  type_sensor("0,00315", "0,04", "250");
  points("1,775", "100", "3,35");
  fp.dialogs.expect(
      "Error|Exclamation|Ok|P2 must differ from 100 kPa: two points at one pressure give no "
      "sensor line.");
  form3.wizard.Command7_Click();
  EXPECT_EQ(std::tuple(c3.Text1[0].text, c3.Text1[1].text, c3.Text1[2].text),
            std::tuple("0,00315", "0,04", "250"));
}

TEST_F(SensorWizardTest, AFieldWithoutANumberEndsCalcWithABox) {
  type_sensor("0,00315", "0,04", "250");
  points("1,775", "", "3,35");
  fp.dialogs.expect("Error|Critical|Ok|P2: \"\" is not a number.");
  click([&] { form3.wizard.Command7_Click(); });
  EXPECT_EQ(c3.Text1[kFaktor].text, "0,00315");
}

}  // namespace
}  // namespace nerit::testing
