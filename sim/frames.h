#pragma once
// Command frames as the program sends them and the reply frames the controller answers with.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "sim/memory_window.h"

namespace nerit::sim {

inline constexpr std::uint8_t kFrameStart = 0x55;
inline constexpr std::size_t kCommandLength = 22;
inline constexpr std::size_t kShortConnectLength = 20;  // a connect frame two zero bytes short
inline constexpr std::size_t kReplyLength = 22;

namespace command {
inline constexpr std::uint8_t kEepromWrite = 0x01;
inline constexpr std::uint8_t kEepromRead = 0x02;
inline constexpr std::uint8_t kInjectorData = 0x03;
inline constexpr std::uint8_t kBootLoader = 0x04;
inline constexpr std::uint8_t kConnect = 0x05;
inline constexpr std::uint8_t kReload = 0x06;
inline constexpr std::uint8_t kPermanent = 0x08;
inline constexpr std::uint8_t kAirflow = 0x09;
inline constexpr std::uint8_t kBoost = 0x0A;
inline constexpr std::uint8_t kRamWrite = 0x0B;
inline constexpr std::uint8_t kRamRead = 0x0C;
inline constexpr std::uint8_t kStream = 0x80;
}  // namespace command

namespace reply {
inline constexpr std::uint8_t kText = 0x00;
inline constexpr std::uint8_t kEepromBlock = 0x02;
inline constexpr std::uint8_t kRamBlock = 0x0C;
inline constexpr std::uint8_t kFirmware = 0xFD;
inline constexpr std::uint8_t kStatus = 0xFF;
}  // namespace reply

struct CommandFrame {
  std::uint8_t code = 0;
  std::uint8_t p1 = 0;
  std::uint8_t p2 = 0;
  Block data{};
  bool short_connect = false;

  std::uint16_t address() const { return static_cast<std::uint16_t>(p1 << 8 | p2); }
};

// Reply data: frame offsets 2..19.
using ReplyData = std::array<std::uint8_t, 18>;

std::string reply_frame(std::uint8_t type, const ReplyData& data);
// The firmware text, cut or padded with zero bytes to 16 characters, at offsets 4..19.
std::string firmware_reply(std::string_view firmware);
// Address high and low at offsets 2 and 3, the 16 bytes at 4..19.
std::string block_reply(std::uint8_t type, std::uint16_t address, const Block& bytes);
// Text at offsets 4.. followed by zero bytes; offset 3 is 1 once settings are permanent.
std::string text_reply(std::string_view text, bool permanent = false);

}  // namespace nerit::sim
