#include "link/replies.h"

#include "shell/latin1.h"

namespace nerit {

std::optional<std::string> take_frame(std::string& rxbuffer) {
  if (rxbuffer.size() < kFrameLength || rxbuffer.compare(rxbuffer.size() - 2, 2, "\r\n") != 0)
    return std::nullopt;
  std::string frame = rxbuffer.substr(rxbuffer.size() - kFrameLength);
  rxbuffer.clear();
  return frame;
}

std::optional<Reply> decode_reply(std::string_view frame) {
  if (frame.size() != kFrameLength) return std::nullopt;
  std::array<std::uint8_t, 21> b{};
  for (std::size_t i = 0; i < b.size(); ++i) b[i] = static_cast<std::uint8_t>(frame[i]);
  if (b[0] != kFrameStart) return std::nullopt;
  const int address = b[2] * 256 + b[3];
  switch (b[1]) {
    case kReplyFirmware:
      return FirmwareReply{latin1_to_utf8(frame.substr(4, 16))};
    case kReplyStatus: {
      StatusReply s;
      s.bytes = b;
      for (std::size_t k = 1; k <= 8; ++k) s.W[k] = b[2 * k + 3] * 256L + b[2 * k + 2];
      return s;
    }
    case kReplySram: {
      MemoryBlockReply m;
      m.address = address;
      for (std::size_t i = 0; i < 16; ++i) m.data[i] = b[4 + i];
      return m;
    }
    case kReplyBlock:
      return BlockReply{address};
    case kReplyText: {
      const std::string_view data = frame.substr(4, 16);
      return TextReply{latin1_to_utf8(data.substr(0, data.find('\0'))), b[3]};
    }
    default:
      return std::nullopt;
  }
}

}  // namespace nerit
