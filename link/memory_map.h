#pragma once
// Where the controller keeps what the program reads and writes.
#include <array>

namespace nerit {

// Working memory (16-byte blocks, command codes 0x0B write / 0x0C read).
inline constexpr int kSettingsBlockA = 0x240;
inline constexpr int kSettingsBlockB = 0x250;
inline constexpr int kLoadAxisLow = 0x260;           // load_points(1..8)
inline constexpr int kLoadAxisHigh = 0x270;          // load_points(9..16)
inline constexpr int kRpmAxisLow = 0x280;            // rpm_points(1..8), speed periods
inline constexpr int kRpmAxisHigh = 0x290;           // rpm_points(9..16)
inline constexpr int kCorrectionMapAddress = 0x2A0;  // 16 rows of 16 bytes
inline constexpr int kAirflowMapAddress = 0x3A0;     // 16 rows of 32 bytes, two blocks a row
inline constexpr int kAirflowMapEnd = 0x5A0;

inline constexpr int correction_row_address(int row) {
  return kCorrectionMapAddress + 16 * (row - 1);
}
inline constexpr int airflow_row_address(int row) {
  return kAirflowMapAddress + 32 * (row - 1);
}

// "Read Data from Unit" asks for these first, then every map row; block B comes before A.
inline constexpr std::array<int, 6> kSettingsReadOrder = {
    kSettingsBlockB, kSettingsBlockA, kLoadAxisLow, kLoadAxisHigh, kRpmAxisLow, kRpmAxisHigh};

// EEPROM (command codes 0x01 write / 0x02 request): a reduced copy.
inline constexpr int kEepromSettings = 0x10;  // block A with its last byte 0
inline constexpr int kEepromLoadAxisLow = 0x20;
inline constexpr int kEepromLoadAxisHigh = 0x30;  // load_points(9..12), then zeros
inline constexpr int kEepromMap = 0x50;           // two correction rows of 8 a block, 6 blocks
inline constexpr std::array<int, 9> kEepromRequestOrder = {0x10, 0x20, 0x30, 0x50, 0x60,
                                                           0x70, 0x80, 0x90, 0xA0};

}  // namespace nerit
