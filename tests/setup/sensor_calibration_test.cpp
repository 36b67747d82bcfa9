// The pressure sensor's line into raw bytes, its presets, and the MPX4250 tables the virtual
// controller's sensor needs.
#include "setup/sensor_calibration.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <vector>

#include "shell/errors.h"
#include "shell/pressure_tables.h"
#include "sim/sensors.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

// Raw = whole part of (faktor x P + offset) x 5 x 51, worked out by hand.
TEST(SensorRaw, IsTheWholePartOfTheVoltsTimes51) {
  struct Case {
    double faktor, offset, p;
    int raw;
  };
  const Case cases[] = {
      {0.00315, 0.04, 0, 10},          // 0.2 V: 10.2
      {0.00315, 0.04, 100, 90},        // 1.775 V: 90.525
      {0.00315, 0.04, 150, 130},       // 2.5625 V: 130.6875
      {0.00315, 0.04, 250, 211},       // 4.1375 V: 211.0125
      {0.003795, 0.134507, 0, 34},     // 0.672535 V: 34.299
      {0.003795, 0.134507, 227, 253},  // 4.97986 V: 253.973
      {0, 1.002, 0, 255},              // 5.01 V: 255.51, above 5 V and not refused
  };
  for (const Case& c : cases)
    EXPECT_EQ(sensor_raw(c.faktor, c.offset, c.p), c.raw) << c.faktor << " " << c.p;
}

TEST(SensorRaw, ANegativeVoltageReadsZero) {
  // faktor 0.004, offset -0.1: -0.5 V at 0 kPa, -0.1 V at 20, 0.02 V at 26, 0.3 V at 40.
  const std::vector<std::uint8_t> raws = calibration_raws(0.004, -0.1, 40);
  ASSERT_EQ(raws.size(), 41u);
  EXPECT_EQ(std::tuple(raws[0], raws[20], raws[26], raws[40]), std::tuple(0, 0, 1, 15));
}

TEST(SensorRaw, PastAByteIsAnOverflow) {
  EXPECT_THROW(sensor_raw(0.01, 0.5, 60), OverflowError);  // 5.5 V: 280.5
}

// The virtual controller's MAP sensor reads exactly what the MPX4250 table says.
TEST(CalibrationRaws, Mpx4250MatchesTheVirtualControllersSensor) {
  const std::vector<std::uint8_t> raws = calibration_raws(0.00315, 0.04, 250);
  for (int p = 0; p <= 250; ++p) EXPECT_EQ(raws[p], sim::map_sensor_raw(p)) << p << " kPa";
}

TEST(Mpx4250Tables, AreWrittenIntoAFolderWithoutPressureTables) {
  testing::TempFolder folder;
  EXPECT_TRUE(write_mpx4250_tables_if_none(folder.path()));
  const PressureFiles files(folder.path());
  const auto sensor = files.sensor();
  ASSERT_TRUE(sensor);
  EXPECT_EQ(*sensor, calibration_raws(0.00315, 0.04, 250));
  const auto raw = files.raw();
  ASSERT_TRUE(raw);
  ASSERT_EQ(raw->size(), 2u * 211 + 2);  // up to the entry of raw 211
  // Entries of raw r: the highest kPa reading r, little-endian; raws no kPa reads stay 0.
  EXPECT_EQ(std::tuple((*raw)[2 * 211], (*raw)[2 * 211 + 1]), std::tuple(250, 0));
  EXPECT_EQ(std::tuple((*raw)[2 * 130], (*raw)[2 * 90], (*raw)[2 * 10]), std::tuple(150, 100, 0));
  EXPECT_EQ(std::tuple((*raw)[2 * 9], (*raw)[2 * 9 + 1]), std::tuple(0, 0));
}

TEST(Mpx4250Tables, AreNotWrittenWhenEitherTableExists) {
  struct Case {
    const char* kept;
    bool kept_is_raw;
  };
  for (const Case& c : {Case{"PressureSensor.dat", false}, Case{"Pressure.raw", true}}) {
    testing::TempFolder folder;
    folder.write(c.kept, {1, 2, 3});
    EXPECT_FALSE(write_mpx4250_tables_if_none(folder.path())) << c.kept;
    const PressureFiles files(folder.path());
    EXPECT_EQ(c.kept_is_raw ? files.raw() : files.sensor(), (Bytes{1, 2, 3})) << c.kept;
    EXPECT_EQ(c.kept_is_raw ? files.sensor() : files.raw(), std::nullopt) << c.kept;
  }
}

}  // namespace
}  // namespace nerit
