#pragma once
// Where the controller keeps its settings, axes and maps, in working memory and in EEPROM.
#include <cstddef>
#include <cstdint>

namespace nerit::sim {

// Working memory.
inline constexpr std::uint16_t kRamFirst = 0x0240;
inline constexpr std::size_t kRamSize = 0x0360;  // 0x0240-0x059F
inline constexpr std::uint16_t kBlockA = 0x0240;
inline constexpr std::uint16_t kBlockB = 0x0250;
inline constexpr std::uint16_t kLoadAxis = 0x0260;       // 16 words, low byte first
inline constexpr std::uint16_t kSpeedAxis = 0x0280;      // 16 periods, low byte first
inline constexpr std::uint16_t kCorrectionMap = 0x02A0;  // 16 load rows x 16 speed columns
inline constexpr std::uint16_t kAirflowMap = 0x03A0;     // 16 x 16 words, 32 bytes a load row

// EEPROM: the reduced copy the controller starts its working memory from.
inline constexpr std::uint16_t kEepromFirst = 0x0010;
inline constexpr std::size_t kEepromSize = 0x00A0;  // 0x0010-0x00AF
inline constexpr std::uint16_t kEeBlockA = 0x0010;
inline constexpr std::uint16_t kEeLoadAxis = 0x0020;       // load points 1-12
inline constexpr std::uint16_t kEeCorrectionMap = 0x0050;  // rows 1-12, columns 1-8
inline constexpr int kEeLoadPoints = 12;
inline constexpr int kEeMapRows = 12;
inline constexpr int kEeMapColumns = 8;

inline constexpr int kAxisPoints = 16;

// Offsets inside settings block A.
namespace block_a {
inline constexpr int kLoadType = 0;
inline constexpr int kPressureSensor = 1;
inline constexpr int kTpsMin = 2;
inline constexpr int kTpsMax = 3;
inline constexpr int kOffsetIn = 4;   // word
inline constexpr int kOffsetOut = 6;  // word
inline constexpr int kInjOld = 8;     // word
inline constexpr int kInjNew = 10;    // word
inline constexpr int kInjSizeCorr = 12;
inline constexpr int kAirflowType = 13;
inline constexpr int kAoutMax = 14;
inline constexpr int kBoostEnable = 15;  // not kept in EEPROM
}  // namespace block_a

// Offsets inside settings block B.
namespace block_b {
inline constexpr int kBoostStart = 0;
inline constexpr int kBoostSet = 1;
inline constexpr int kCylinders = 2;
inline constexpr int kInjChannels = 3;
inline constexpr int kMapFlags = 4;
inline constexpr int kAccelFirst = 5;  // five bytes
inline constexpr int kSeqFactor = 10;
}  // namespace block_b

inline constexpr std::uint8_t kCorrectionMapActive = 0x01;
inline constexpr std::uint8_t kAirflowMapActive = 0x02;

}  // namespace nerit::sim
