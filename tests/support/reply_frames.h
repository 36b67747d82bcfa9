#pragma once
// Reply frames as the controller sends them: 0x55, type, 18 data bytes (offsets 2..19), CR, LF.
#include <cstdio>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

namespace nerit::testing {

class ReplyFrame {
 public:
  explicit ReplyFrame(int type) { b_[1] = static_cast<char>(type); }

  ReplyFrame& byte(int offset, int value) {
    if (offset < 2 || offset > 19) throw std::out_of_range("reply data offset");
    b_[static_cast<std::size_t>(offset)] = static_cast<char>(value);
    return *this;
  }
  // Little-endian word at offset, offset + 1.
  ReplyFrame& word(int offset, int value) {
    return byte(offset, value & 0xFF).byte(offset + 1, value >> 8);
  }
  // Status word Wk (k = 1..8): low byte at offset 2k + 2.
  ReplyFrame& status_word(int k, int value) { return word(2 * k + 2, value); }
  // Big-endian address at offsets 2 and 3.
  ReplyFrame& address(int value) { return byte(2, value >> 8).byte(3, value & 0xFF); }
  ReplyFrame& text(std::string_view chars) {
    int offset = 4;
    for (char ch : chars) byte(offset++, static_cast<unsigned char>(ch));
    return *this;
  }
  operator std::string() const { return b_; }

 private:
  std::string b_ = std::string("\x55") + std::string(19, '\0') + "\r\n";
};

// Text reply (type 0x00): the text from offset 4, byte 3 = flag (1: made permanent).
inline std::string text_reply(std::string_view text, int flag = 0) {
  return ReplyFrame(0x00).byte(3, flag).text(text);
}
inline std::string firmware_reply(std::string_view text16) {
  return ReplyFrame(0xFD).text(text16);
}

// A 0x0C reply for the block at address with the given data bytes from offset 4 (the rest zero).
inline std::string sram_reply(int address, std::initializer_list<int> data) {
  ReplyFrame f(0x0C);
  int offset = 4;
  for (int v : data) f.byte(offset++, v);
  return f.address(address);
}

// The question after a successful connect, as FakeDialogs writes boxes.
inline constexpr const char* kOnlineQuestion =
    "Online|None|YesNo|Verbunden, Daten vom Controller laden?";

// "55 0C 02 50" style, for readable comparisons of byte strings.
inline std::string hex_bytes(std::string_view bytes) {
  std::string out;
  char buf[5];
  for (unsigned char ch : bytes) {
    std::snprintf(buf, sizeof buf, out.empty() ? "%02X" : " %02X", ch);
    out += buf;
  }
  return out;
}

}  // namespace nerit::testing
