#pragma once
// A controller stand-in on a fake port: collects what the program writes into frames and
// answers each one as the test scripts it.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_platform.h"

namespace nerit::testing {

// A 22-byte reply: 0x55, type, 18 data bytes (frame offsets 2..19), CR LF.
std::string reply_frame(std::uint8_t type, const std::vector<std::uint8_t>& data);
// Text reply (type 0x00): text from offset 4, offset 3 = flag.
std::string text_reply(const std::string& text, std::uint8_t flag = 0);
// Firmware reply (type 0xFD) with 16 characters from offset 4.
std::string firmware_reply(const std::string& text16);

class ScriptedPeer {
 public:
  explicit ScriptedPeer(FakeSerialPort& port);

  struct Frame {
    int port;
    std::string bytes;
    long long at_ms;
  };
  // The reply to a frame, or nothing. Runs when the frame's last byte is written.
  std::function<std::optional<std::string>(const Frame& frame)> answer;
  long long delay_ms = 5;
  std::vector<Frame> frames;
  // Frame codes (byte 1) and memory addresses (bytes 2, 3) of what was received.
  std::vector<int> codes() const;
  std::vector<int> addresses() const;

 private:
  FakeSerialPort& port_;
  std::string pending_;
};

}  // namespace nerit::testing
