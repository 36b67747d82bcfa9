#include "sim/frames.h"

#include <algorithm>

namespace nerit::sim {

std::string reply_frame(std::uint8_t type, const ReplyData& data) {
  std::string out;
  out.reserve(kReplyLength);
  out.push_back(static_cast<char>(kFrameStart));
  out.push_back(static_cast<char>(type));
  for (std::uint8_t b : data) out.push_back(static_cast<char>(b));
  out.push_back('\r');
  out.push_back('\n');
  return out;
}

namespace {

ReplyData with_text_at_4(std::string_view text) {
  ReplyData data{};
  const std::size_t n = std::min<std::size_t>(text.size(), 16);
  for (std::size_t i = 0; i < n; ++i) data[2 + i] = static_cast<std::uint8_t>(text[i]);
  return data;
}

}  // namespace

std::string firmware_reply(std::string_view firmware) {
  return reply_frame(reply::kFirmware, with_text_at_4(firmware));
}

std::string block_reply(std::uint8_t type, std::uint16_t address, const Block& bytes) {
  ReplyData data{};
  data[0] = static_cast<std::uint8_t>(address >> 8);
  data[1] = static_cast<std::uint8_t>(address & 0xFF);
  std::copy(bytes.begin(), bytes.end(), data.begin() + 2);
  return reply_frame(type, data);
}

std::string text_reply(std::string_view text, bool permanent) {
  ReplyData data = with_text_at_4(text);
  data[1] = permanent ? 1 : 0;
  return reply_frame(reply::kText, data);
}

}  // namespace nerit::sim
