#pragma once
// The main window's side of the wire: frames out one character at a time, the wait for the
// controller's acknowledgement, and the link's log lines. Every sender goes through here.
#include <cstdint>
#include <string>

#include "link/frames.h"
#include "link/link_state.h"
#include "shell/controls.h"
#include "shell/platform.h"

namespace nerit {

class Wire {
 public:
  Wire(ListBox& log_list, LinkState& link, Platform& platform)
      : log_list_(log_list), link_(link), p_(platform) {}

  // Writes a whole frame, one character per output call, nothing in between.
  void send(const std::string& frame);
  // reply_done = 0, then lets events run until the dispatcher (or Timer3) sets it to 1. A port
  // that closes meanwhile ends the wait with LinkLost: nothing could answer any more.
  void wait_for_reply();
  // One 16-byte block at an address: write_addr = address, then the frame, built completely
  // before its first byte goes out. Nothing waits for the acknowledgement.
  void send_block(std::uint8_t code, int address, const FrameData& data);
  // send_block, the guard timer (if any) switched on, then the wait for the acknowledgement.
  void write_block(std::uint8_t code, int address, const FrameData& data, Timer* guard = nullptr);
  // A log line: the current time, then the text (which starts with " -> ").
  void log(const std::string& text);

 private:
  ListBox& log_list_;
  LinkState& link_;
  Platform& p_;
};

}  // namespace nerit
