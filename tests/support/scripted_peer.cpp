#include "tests/support/scripted_peer.h"

namespace nerit::testing {

std::string reply_frame(std::uint8_t type, const std::vector<std::uint8_t>& data) {
  std::string f(22, '\0');
  f[0] = 0x55;
  f[1] = static_cast<char>(type);
  for (std::size_t i = 0; i < data.size() && i < 18; ++i) f[2 + i] = static_cast<char>(data[i]);
  f[20] = '\r';
  f[21] = '\n';
  return f;
}

std::string text_reply(const std::string& text, std::uint8_t flag) {
  std::vector<std::uint8_t> data(18, 0);
  data[1] = flag;
  for (std::size_t i = 0; i < text.size() && i < 16; ++i)
    data[2 + i] = static_cast<std::uint8_t>(text[i]);
  return reply_frame(0x00, data);
}

std::string firmware_reply(const std::string& text16) {
  std::vector<std::uint8_t> data(18, 0);
  for (std::size_t i = 0; i < text16.size() && i < 16; ++i)
    data[2 + i] = static_cast<std::uint8_t>(text16[i]);
  return reply_frame(0xFD, data);
}

ScriptedPeer::ScriptedPeer(FakeSerialPort& port) : port_(port) {
  port_.on_output = [this](int number, const std::string& chars) {
    for (char ch : chars) {
      if (pending_.empty() && static_cast<unsigned char>(ch) != 0x55) continue;
      pending_ += ch;
      // Frames end in CR: 22 bytes, or 20 for the short connect frame.
      const bool short_connect = pending_.size() == 20 && pending_[1] == 0x05 && ch == '\r';
      if (pending_.size() < 22 && !short_connect) continue;
      Frame f{number, pending_, port_.clock().now_ms()};
      pending_.clear();
      frames.push_back(f);
      if (!answer) continue;
      if (auto reply = answer(f)) port_.arrive_after(delay_ms, *reply);
    }
  };
}

std::vector<int> ScriptedPeer::codes() const {
  std::vector<int> out;
  for (const Frame& f : frames) out.push_back(static_cast<unsigned char>(f.bytes[1]));
  return out;
}

std::vector<int> ScriptedPeer::addresses() const {
  std::vector<int> out;
  for (const Frame& f : frames)
    out.push_back(static_cast<unsigned char>(f.bytes[2]) * 256 +
                  static_cast<unsigned char>(f.bytes[3]));
  return out;
}

}  // namespace nerit::testing
