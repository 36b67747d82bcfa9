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
  explicit ScriptedPeer(FakeSerialPort& port);

  struct Frame {
    int port;
    std::string bytes;
    long long at_ms;
    int code() const { return static_cast<unsigned char>(bytes[1]); }
    int address() const {
      return static_cast<unsigned char>(bytes[2]) * 256 + static_cast<unsigned char>(bytes[3]);
    }
  };
  // The reply to a frame, or nothing. Runs when the frame's last byte is written.
  std::function<std::optional<std::string>(const Frame& frame)> answer;
  long long delay_ms = 5;
  std::vector<Frame> frames;
  std::vector<int> codes() const;
  std::vector<int> addresses() const;

 private:
  FakeSerialPort& port_;
  std::string pending_;
};

}  // namespace nerit::testing
