#include "sim/frame_reader.h"

namespace nerit::sim {

namespace {

std::uint8_t byte_at(const std::string& s, std::size_t i) {
  return static_cast<std::uint8_t>(s[i]);
}

bool is_short_connect(const std::string& b) {
  if (b.size() < kShortConnectLength || byte_at(b, 1) != command::kConnect) return false;
  for (std::size_t i = 2; i < kShortConnectLength - 1; ++i) {
    if (b[i] != 0) return false;
  }
  return b[kShortConnectLength - 1] == '\r';
}

bool is_full_frame(const std::string& b) {
  return b.size() >= kCommandLength && b[20] == 0 && b[21] == '\r';
}

CommandFrame decode(const std::string& b, bool short_connect) {
  CommandFrame f;
  f.code = byte_at(b, 1);
  f.short_connect = short_connect;
  if (short_connect) return f;
  f.p1 = byte_at(b, 2);
  f.p2 = byte_at(b, 3);
  for (std::size_t i = 0; i < f.data.size(); ++i) f.data[i] = byte_at(b, 4 + i);
  return f;
}

}  // namespace

FrameReader::FrameReader(double timeout_ms) : timeout_ms_(timeout_ms) {}

std::vector<CommandFrame> FrameReader::push(double now_ms, std::uint8_t byte) {
  std::vector<CommandFrame> out = expire(now_ms);
  buffer_.push_back(static_cast<char>(byte));
  last_byte_ms_ = now_ms;
  scan(out);
  return out;
}

double FrameReader::expiry() const {
  if (timeout_ms_ <= 0 || buffer_.empty()) return -1;
  return last_byte_ms_ + timeout_ms_;
}

std::vector<CommandFrame> FrameReader::expire(double now_ms) {
  std::vector<CommandFrame> out;
  const double at = expiry();
  if (at >= 0 && now_ms >= at) give_up(out);
  return out;
}

void FrameReader::scan(std::vector<CommandFrame>& out) {
  while (!buffer_.empty()) {
    if (byte_at(buffer_, 0) != kFrameStart) {
      buffer_.erase(0, 1);
      ++discarded_;
    } else if (is_short_connect(buffer_)) {
      out.push_back(decode(buffer_, true));
      buffer_.erase(0, kShortConnectLength);
    } else if (buffer_.size() < kCommandLength) {
      break;
    } else if (is_full_frame(buffer_)) {
      out.push_back(decode(buffer_, false));
      buffer_.erase(0, kCommandLength);
    } else {
      buffer_.erase(0, 1);
      ++discarded_;
    }
  }
}

void FrameReader::give_up(std::vector<CommandFrame>& out) {
  // Everything buffered is as old as the last byte, so nothing incomplete survives.
  while (!buffer_.empty()) {
    buffer_.erase(0, 1);
    ++discarded_;
    scan(out);
  }
}

}  // namespace nerit::sim
