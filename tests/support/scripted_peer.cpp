#include "tests/support/scripted_peer.h"

namespace nerit::testing {

ScriptedPeer::ScriptedPeer(FakeSerialPort& port) : port_(port) {
  port_.on_output = [this](int number, const std::string& chars) {
    for (char ch : chars) {
      if (pending_.empty() && ch != '\x55') continue;
      pending_ += ch;
      // Frames end in CR: 22 bytes, or 20 for the short connect frame.
      const bool short_connect = pending_.size() == 20 && pending_[1] == 0x05 && ch == '\r';
      if (pending_.size() < 22 && !short_connect) continue;
      frames.push_back({number, std::exchange(pending_, {}), port_.clock().now_ms()});
      if (!answer) continue;
      if (auto reply = answer(frames.back())) port_.arrive_after(delay_ms, *reply);
    }
  };
}

std::vector<int> ScriptedPeer::codes() const {
  std::vector<int> out;
  for (const Frame& f : frames) out.push_back(f.code());
  return out;
}

std::vector<int> ScriptedPeer::addresses() const {
  std::vector<int> out;
  for (const Frame& f : frames) out.push_back(f.address());
  return out;
}

}  // namespace nerit::testing
