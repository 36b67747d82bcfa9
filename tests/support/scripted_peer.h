#pragma once
// A controller stand-in on a fake port: collects what the program writes into frames and
// answers each one as the test scripts it.
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_platform.h"

namespace nerit::testing {

class ScriptedPeer {
 public:
  struct Frame {
    int port;
    std::string bytes;
    long long at_ms;
    int code() const { return static_cast<unsigned char>(bytes[1]); }
    int address() const {
      return static_cast<unsigned char>(bytes[2]) * 256 + static_cast<unsigned char>(bytes[3]);
    }
  };

  explicit ScriptedPeer(FakeSerialPort& port) {
    port.on_output = [this, &port](int number, const std::string& chars) {
      for (char ch : chars) {
        if (pending_.empty() && ch != '\x55') continue;
        pending_ += ch;
        // Frames end in CR: 22 bytes, or 20 for the short connect frame.
        const bool short_connect = pending_.size() == 20 && pending_[1] == 0x05 && ch == '\r';
        if (pending_.size() < 22 && !short_connect) continue;
        frames.push_back({number, std::exchange(pending_, {}), port.clock().now_ms()});
        if (!answer) continue;
        if (auto reply = answer(frames.back())) port.arrive_after(delay_ms, *reply);
      }
    };
  }

  // The reply to a frame, or nothing. Runs when the frame's last byte is written.
  std::function<std::optional<std::string>(const Frame& frame)> answer;
  long long delay_ms = 5;
  std::vector<Frame> frames;

  // Frame codes (byte 1) and memory addresses (bytes 2, 3) of what was received.
  std::vector<int> codes() const { return each(&Frame::code); }
  std::vector<int> addresses() const { return each(&Frame::address); }

 private:
  std::vector<int> each(int (Frame::*field)() const) const {
    std::vector<int> out;
    for (const Frame& f : frames) out.push_back((f.*field)());
    return out;
  }
  std::string pending_;
};

}  // namespace nerit::testing
