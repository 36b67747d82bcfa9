#pragma once
// Command frames to the controller and the fields of its replies. Pure: no port, no window.
// A frame is 22 bytes: 0x55, code, P1, P2, 16 data bytes, 0x00, 0x0D.
#include <array>
#include <cstdint>
#include <string>

namespace nerit {

using FrameData = std::array<std::uint8_t, 16>;

inline constexpr std::uint8_t kFrameStart = 0x55;  // "U"
inline constexpr std::size_t kFrameLength = 22;

enum Command : std::uint8_t {
  kCmdEepromWrite = 0x01,
  kCmdBlockRequest = 0x02,
  kCmdInjector = 0x03,
  kCmdBootloader = 0x04,
  kCmdConnect = 0x05,
  kCmdReloadEeprom = 0x06,
  kCmdMakePermanent = 0x08,
  kCmdAirflow = 0x09,
  kCmdBoost = 0x0A,
  kCmdSramWrite = 0x0B,
  kCmdSramRead = 0x0C,
  kCmdStream = 0x80,
};

enum ReplyType : std::uint8_t {
  kReplyText = 0x00,
  kReplyBlock = 0x02,
  kReplySram = 0x0C,
  kReplyFirmware = 0xFD,
  kReplyStatus = 0xFF,
};

std::string command_frame(std::uint8_t code, std::uint8_t p1, std::uint8_t p2,
                          const FrameData& data = {});
// Memory frames carry their address high byte first.
std::string address_frame(std::uint8_t code, int address, const FrameData& data = {});

std::string connect_frame();        // 22 bytes
std::string short_connect_frame();  // 20 bytes: two zero bytes fewer, as the second scan sends it
std::string stream_frame(std::uint8_t mode);  // 0 off, 1 status frames, 2 debug text

// A number as the low and high byte of a 16-bit field (low = v And 255, high = v \ 256);
// OverflowError when the high byte does not fit.
std::array<std::uint8_t, 2> word_bytes(double value);

}  // namespace nerit
