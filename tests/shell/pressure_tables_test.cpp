// The two pressure tables, read and written by one module.
#include "shell/pressure_tables.h"

#include <gtest/gtest.h>

#include "shell/errors.h"
#include "tests/support/fake_platform.h"

namespace nerit {
namespace {

TEST(PressureTables, RawTableReadsLittleEndianEntriesAndKeepsWhatTheFileDoesNotReach) {
  PressureTable table{};
  table[3] = 77;
  read_pressure_raw({0x2A, 0x00, 0xFF, 0xFF, 0x10}, table);
  EXPECT_EQ(table[0], 42);
  EXPECT_EQ(table[1], -1);
  EXPECT_EQ(table[2], 0);  // a lone byte is no entry
  EXPECT_EQ(table[3], 77);
}

TEST(PressureTables, SensorTableInvertsWithTheHighestPressureWinning) {
  PressureTable table{};
  read_pressure_sensor({10, 11, 11, 12}, table);
  EXPECT_EQ(table[10], 0);
  EXPECT_EQ(table[11], 2);
  EXPECT_EQ(table[12], 3);
  EXPECT_EQ(sensor_raw_at({10, 11, 11, 12}, 3), 12);
  EXPECT_EQ(sensor_raw_at({10, 11, 11, 12}, 4), std::nullopt);
  EXPECT_EQ(sensor_raw_at({10, 11, 11, 12}, -1), std::nullopt);
}

// Saving writes every pressure's byte and its inverse entry; a smaller calibration leaves the
// bytes past its end and the entries it no longer reaches.
TEST(PressureTables, SavedFilesReadBackAndASmallerSaveLeavesTheRest) {
  testing::TempFolder folder;
  const PressureFiles files(folder.path());
  EXPECT_EQ(files.sensor(), std::nullopt);
  files.save({0, 2, 2, 5});
  EXPECT_EQ(files.sensor(), (Bytes{0, 2, 2, 5}));
  EXPECT_EQ(files.raw(), (Bytes{0, 0, 0, 0, 2, 0, 0, 0, 0, 0, 3, 0}));
  files.save({1, 1});
  EXPECT_EQ(files.sensor(), (Bytes{1, 1, 2, 5}));
  PressureTable table{};
  read_pressure_raw(*files.raw(), table);
  EXPECT_EQ((std::array<int, 6>{table[0], table[1], table[2], table[3], table[4], table[5]}),
            (std::array<int, 6>{0, 1, 2, 0, 0, 3}));
}

}  // namespace
}  // namespace nerit
