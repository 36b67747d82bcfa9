#include "link/frames.h"

#include "shell/errors.h"
#include "shell/numbers.h"

namespace nerit {

std::string command_frame(std::uint8_t code, std::uint8_t p1, std::uint8_t p2,
                          const FrameData& data) {
  std::string f;
  f.reserve(kFrameLength);
  f += static_cast<char>(kFrameStart);
  f += static_cast<char>(code);
  f += static_cast<char>(p1);
  f += static_cast<char>(p2);
  for (std::uint8_t b : data) f += static_cast<char>(b);
  f += '\0';
  f += '\r';
  return f;
}

std::string address_frame(std::uint8_t code, int address, const FrameData& data) {
  if (address < 0 || address > 0xFFFF) throw OverflowError();
  return command_frame(code, static_cast<std::uint8_t>(address >> 8),
                       static_cast<std::uint8_t>(address & 0xFF), data);
}

std::string connect_frame() {
  return command_frame(kCmdConnect, 0, 0);
}

std::string short_connect_frame() {
  std::string f = connect_frame();
  f.erase(2, 2);
  return f;
}

std::string stream_frame(std::uint8_t mode) {
  FrameData d{};
  d[0] = mode;
  return command_frame(kCmdStream, 0, 0, d);
}

std::array<std::uint8_t, 2> word_bytes(double value) {
  const std::int32_t v = to_int32(value);
  return {static_cast<std::uint8_t>(v & 255), to_byte(v / 256)};
}

}  // namespace nerit
