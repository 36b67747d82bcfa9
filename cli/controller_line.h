#pragma once
// The controller as nerit-cli talks to it: the connect frame, memory blocks read and written
// one at a time, each wait with a time limit and a lost answer asked again a bounded number
// of times. Failures end the command with their exit status.
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>

#include "cli/serial_line.h"
#include "files/tune_memory.h"
#include "link/frames.h"
#include "link/replies.h"

namespace nerit::cli {

// Ends a command: `exit` is its status, what() the message for standard error.
struct CliFailure : std::runtime_error {
  CliFailure(int exit_status, const std::string& text)
      : std::runtime_error(text), exit(exit_status) {}
  int exit;
};

class ControllerLine {
 public:
  // Opens `port` (CliFailure kNoController when it cannot be opened). Retries and
  // questions asked again are reported on `err`.
  ControllerLine(const std::string& port, int timeout_ms, std::ostream& err);

  static constexpr int kAttempts = 3;  // a lost answer is asked for twice more

  // Sends the connect frame; the firmware text, blanks at the end removed. CliFailure
  // kNoController when nothing answers.
  std::string connect();
  // Working-memory block at `address` (command 0x0C).
  FrameData read_block(int address);
  // Writes 16 bytes (0x0B working memory, 0x01 EEPROM) and waits for the acknowledgement.
  void write_block(std::uint8_t code, int address, const FrameData& data);
  // Sends a frame that nothing answers.
  void send(const std::string& frame) { line_.write(frame); }
  // The next decoded reply, or nothing after the time-out.
  std::optional<Reply> next_reply();

  SerialLine& line() { return line_; }
  int timeout_ms() const { return timeout_ms_; }
  const std::string& port() const { return port_; }

 private:
  [[noreturn]] void timed_out(const std::string& what) const;

  SerialLine line_;
  std::string port_;
  int timeout_ms_;
  std::ostream& err_;
};

// The 54 blocks in the order "Read Data from Unit" asks for them.
MemoryImage read_memory(ControllerLine& line);
// The 54 blocks in address order, each acknowledged.
void write_memory(ControllerLine& line, const MemoryImage& memory);
// The nine EEPROM blocks, map first, then the load axis, the settings last (the controller
// relies on this order), then the reload of the EEPROM, which nothing answers.
void write_eeprom(ControllerLine& line, const EepromImage& eeprom);
// Make Permanent, then the confirmation: a text reply with its flag set. CliFailure kRefused
// when only texts without the flag came before the time-out.
void make_permanent(ControllerLine& line);

}  // namespace nerit::cli
