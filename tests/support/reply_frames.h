#pragma once
// Reply frames as the controller sends them: 0x55, type, 18 data bytes, CR, LF.
#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace nerit::testing {

class ReplyFrame {
 public:
  explicit ReplyFrame(std::uint8_t type);

  ReplyFrame& byte(int offset, std::uint8_t value);
  // Little-endian word at offset, offset + 1.
  ReplyFrame& word(int offset, int value);
  // Status word Wk (k = 1..8): low byte at offset 2k + 2.
  ReplyFrame& status_word(int k, int value) { return word(2 * k + 2, value); }
  // Big-endian address at offsets 2 and 3.
  ReplyFrame& address(int value);
  // Characters from offset 4 on.
  ReplyFrame& text(std::string_view chars);

  std::string bytes() const;
  operator std::string() const { return bytes(); }

 private:
  std::array<std::uint8_t, 22> b_{};
};

// A 0x0C reply for the block at address with the given data bytes (the rest zero).
std::string sram_reply(int address, std::initializer_list<std::uint8_t> data);

// "55 0C 02 50" style, for readable comparisons of byte strings.
std::string hex_bytes(std::string_view bytes);

}  // namespace nerit::testing
