// The "Pressuresensor" frame: presets, the table "Calculate" lists, the 5 V failure, the two
// files "Save" writes byte for byte, and the main window's pressure table after it.
#include <tuple>

#include "tests/setup/form3_fixture.h"

namespace nerit::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;
constexpr const char* kSensorFile = "PressureSensor.dat";
constexpr const char* kRawFile = "Pressure.raw";

class PressureCalibrationTest : public Form3Fixture {
 protected:
  PressureCalibrationTest() { open(); }
  // The 16-bit entry of raw byte r in Pressure.raw.
  int raw_entry(const Bytes& raw, int r) const {
    return raw.at(2 * static_cast<std::size_t>(r)) | raw.at(2 * static_cast<std::size_t>(r) + 1)
                                                         << 8;
  }
  void calculate_and_save() {
    form3.pressure.Command1_Click();
    ASSERT_TRUE(c3.Command2.enabled);
    form3.pressure.Command2_Click();
  }
};

TEST_F(PressureCalibrationTest, PresetsWriteTheirValuesInTheSystemsDecimalForm) {
  fp.locale.decimal = ',';
  choose_sensor(1);
  EXPECT_EQ(c3.Combo1.text, "MPX4250");
  EXPECT_EQ(std::tuple(c3.Text1[0].text, c3.Text1[1].text, c3.Text1[2].text),
            std::tuple("0,00315", "0,04", "250"));
  choose_sensor(2);
  EXPECT_EQ(std::tuple(c3.Text1[0].text, c3.Text1[1].text, c3.Text1[2].text),
            std::tuple("0,003795", "0,134507", "227"));
  choose_sensor(0);  // "Manuell" leaves the boxes to the user
  EXPECT_EQ(std::tuple(c3.Text1[0].text, c3.Text1[1].text, c3.Text1[2].text),
            std::tuple("0,003795", "0,134507", "227"));
}

TEST_F(PressureCalibrationTest, CalculateListsEveryKpaWithItsVoltageAndRawByte) {
  choose_sensor(1);  // MPX4250 up to 250 kPa
  form3.pressure.Command1_Click();
  const auto& lines = c3.List1.items;
  ASSERT_EQ(lines.size(), 252u);
  EXPECT_EQ(lines[0], "kPa\tVoltage\tRAW");
  EXPECT_EQ(lines[1], "0\t0.20\t10");
  EXPECT_EQ(lines[101], "100\t1.78\t90");   // 1.775 V
  EXPECT_EQ(lines[251], "250\t4.14\t211");  // 4.1375 V
  EXPECT_TRUE(c3.Command2.enabled);
}

TEST_F(PressureCalibrationTest, SaveWritesTheRawByteOfEveryKpaAndTheKpaOfEveryRawByte) {
  choose_sensor(1);
  calculate_and_save();
  const Bytes sensor = file_bytes(kSensorFile);
  ASSERT_EQ(sensor.size(), 251u);
  EXPECT_EQ(std::tuple(sensor[0], sensor[100], sensor[250]), std::tuple(10, 90, 211));
  const Bytes raw = file_bytes(kRawFile);
  ASSERT_EQ(raw.size(), 2u * 211 + 2);
  EXPECT_EQ(std::tuple(raw[2 * 211], raw[2 * 211 + 1]), std::tuple(250, 0));
  EXPECT_EQ(raw_entry(raw, 90), 100);
}

TEST_F(PressureCalibrationTest, AVoltageAbove5VoltsStopsTheListAtTheLineBeforeAndWritesNothing) {
  // U = (P / 64 + 0.125) x 5: exactly 5 V at 56 kPa, above it from 57 kPa.
  type_sensor("0,015625", "0,125", "100");
  fp.dialogs.expect("Nerit|Critical|Ok|Settings failure Sensorvoltage > 5 Volt");
  form3.pressure.Command1_Click();
  ASSERT_EQ(c3.List1.items.size(), 58u);
  EXPECT_EQ(c3.List1.items.back(), "56\t5.00\t255");
  EXPECT_FALSE(c3.Command2.enabled);
  EXPECT_FALSE(file_exists(kSensorFile));
  EXPECT_FALSE(file_exists(kRawFile));
}

TEST_F(PressureCalibrationTest, SaveStoresTheSensorChoiceAndTheMainWindowsTableFollows) {
  choose_sensor(2);  // Toyota 1/2JZ up to 227 kPa
  EXPECT_EQ(f.c.pressure_table[253], 0);
  calculate_and_save();
  EXPECT_EQ(vars.drucksensor, 2);
  EXPECT_EQ(f.c.pressure_table[253], 227);  // 253.97
  EXPECT_EQ(f.c.pressure_table[131], 100);  // 131.07
}

TEST_F(PressureCalibrationTest, TypingIntoASensorBoxDisablesSave) {
  choose_sensor(1);
  form3.pressure.Command1_Click();
  ASSERT_TRUE(c3.Command2.enabled);
  c3.Text1[kMaxP].text = "25";
  form3.pressure.Text1_Change(kMaxP);
  EXPECT_FALSE(c3.Command2.enabled);
}

TEST_F(PressureCalibrationTest, SensorBoxesTakeDigitsCommaBackspaceAndEnterOnly) {
  for (int key : {'0', '5', '9', ',', '\b', '\r'})
    EXPECT_EQ(form3.pressure.Text1_KeyPress(1, key), key) << key;
  for (int key : {'.', '-', 'a', 'E', ' ', '+'})
    EXPECT_EQ(form3.pressure.Text1_KeyPress(1, key), 0) << key;
}

TEST_F(PressureCalibrationTest, ABoxWithoutAUsableNumberEndsTheActionWithABox) {
  const struct {
    const char *faktor, *offset, *max_p, *box;
  } cases[] = {
      {"0,00a315", "0,04", "250", "Faktor: \"0,00a315\" is not a number."},
      {"0,00315", "0,0,4", "250", "Offset: \"0,0,4\" is not a number."},
      {"0,00315", "0,04", "", "max P: \"\" is not a number."},
      {"0,00315", "0,04", "40000", "max P: 40000 lies outside 0-32767 kPa."},
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(k.box);
    type_sensor(k.faktor, k.offset, k.max_p);
    for (auto handler :
         {&PressureCalibration::Command1_Click, &PressureCalibration::Command2_Click}) {
      fp.dialogs.expect(std::string("Error|Critical|Ok|") + k.box);
      click([&] { (form3.pressure.*handler)(); });
    }
    EXPECT_TRUE(c3.List1.items.empty());
    EXPECT_FALSE(c3.Command2.enabled);
    EXPECT_FALSE(file_exists(kSensorFile));
  }
}

}  // namespace
}  // namespace nerit::testing
