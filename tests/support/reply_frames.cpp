#include "tests/support/reply_frames.h"

#include <cstdio>
#include <stdexcept>

namespace nerit::testing {

ReplyFrame::ReplyFrame(std::uint8_t type) {
  b_[0] = 0x55;
  b_[1] = type;
  b_[20] = 0x0D;
  b_[21] = 0x0A;
}

ReplyFrame& ReplyFrame::byte(int offset, std::uint8_t value) {
  if (offset < 2 || offset > 19) throw std::out_of_range("reply data offset");
  b_[static_cast<std::size_t>(offset)] = value;
  return *this;
}

ReplyFrame& ReplyFrame::word(int offset, int value) {
  byte(offset, static_cast<std::uint8_t>(value & 0xFF));
  return byte(offset + 1, static_cast<std::uint8_t>((value >> 8) & 0xFF));
}

ReplyFrame& ReplyFrame::address(int value) {
  byte(2, static_cast<std::uint8_t>((value >> 8) & 0xFF));
  return byte(3, static_cast<std::uint8_t>(value & 0xFF));
}

ReplyFrame& ReplyFrame::text(std::string_view chars) {
  int offset = 4;
  for (char ch : chars) byte(offset++, static_cast<std::uint8_t>(ch));
  return *this;
}

std::string ReplyFrame::bytes() const {
  return std::string(b_.begin(), b_.end());
}

std::string sram_reply(int address, std::initializer_list<std::uint8_t> data) {
  ReplyFrame f(0x0C);
  f.address(address);
  int offset = 4;
  for (std::uint8_t v : data) f.byte(offset++, v);
  return f;
}

std::string hex_bytes(std::string_view bytes) {
  std::string out;
  for (char ch : bytes) {
    char buf[4];
    std::snprintf(buf, sizeof buf, "%02X", static_cast<unsigned char>(ch));
    if (!out.empty()) out += ' ';
    out += buf;
  }
  return out;
}

}  // namespace nerit::testing
