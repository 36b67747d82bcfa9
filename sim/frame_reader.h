#pragma once
// Cuts command frames out of the bytes the program writes. Bytes before a 0x55 are dropped;
// a 0x55 that does not start a valid frame is dropped and the search goes on after it. A
// partial frame left without a new byte for the timeout is given up the same way, so a stray
// 0x55 cannot hold a following frame back for ever.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "sim/frames.h"

namespace nerit::sim {

class FrameReader {
 public:
  explicit FrameReader(double timeout_ms = 0);  // 0: partial frames wait for ever

  // One byte that arrived at now_ms; returns the frames it completes.
  std::vector<CommandFrame> push(double now_ms, std::uint8_t byte);
  // When a partial frame times out, or -1.
  double expiry() const;
  // Gives up a timed-out partial frame; returns any complete frames found behind it.
  std::vector<CommandFrame> expire(double now_ms);
  void reset() { buffer_.clear(); }

  std::size_t pending() const { return buffer_.size(); }
  std::size_t discarded() const { return discarded_; }

 private:
  void scan(std::vector<CommandFrame>& out);
  void give_up(std::vector<CommandFrame>& out);

  double timeout_ms_;
  double last_byte_ms_ = 0;
  std::string buffer_;
  std::size_t discarded_ = 0;
};

}  // namespace nerit::sim
