#include "tests/support/scripted_peer.h"

#include "tests/support/reply_frames.h"

namespace nerit::testing {

std::string reply_frame(std::uint8_t type, const std::vector<std::uint8_t>& data) {
  ReplyFrame f(type);
  for (std::size_t i = 0; i < data.size() && i < 18; ++i) f.byte(static_cast<int>(2 + i), data[i]);
  return f;
}

std::string text_reply(const std::string& text, std::uint8_t flag) {
  return ReplyFrame(0x00).byte(3, flag).text(text);
}

std::string firmware_reply(const std::string& text16) {
  return ReplyFrame(0xFD).text(text16);
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
