#pragma once
// Replies of the controller: cutting a 22-byte frame off the receive buffer, and a frame into
// a typed reply. Pure: no port, no window, no state beyond the buffer handed in.
//
// Reply frame: 0x55, type, 18 data bytes (offsets 2..19), CR, LF. Status words are
// little-endian; addresses in memory and 0x02 replies are big-endian.
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "link/frames.h"

namespace nerit {

// Firmware identification (0xFD), the answer to a connect frame: bytes 4..19, zero bytes
// included, one character a byte.
struct FirmwareReply {
  std::string text;
};

// Status (0xFF): the frame's first 21 bytes, and the words W1..W8 (index 1..8) built from
// bytes 4..19, low byte first.
struct StatusReply {
  std::array<std::uint8_t, 21> bytes{};
  std::array<long, 9> W{};
  int b(int i) const { return bytes.at(static_cast<std::size_t>(i)); }
};

// Working-memory block (0x0C): its address and the 16 bytes from there on.
struct MemoryBlockReply {
  int address = 0;
  FrameData data{};
};

// The answer to a 0x02 block request; only its address is read.
struct BlockReply {
  int address = 0;
};

// Text message (0x00): bytes 4..19 up to the first zero byte; flag is byte 3 (1 once the
// working memory has been made permanent).
struct TextReply {
  std::string text;
  int flag = 0;
};

using Reply = std::variant<FirmwareReply, StatusReply, MemoryBlockReply, BlockReply, TextReply>;

// Called after each received chunk has been appended to the buffer. A frame is complete only
// when the buffer holds at least 22 characters and ends exactly on CR LF (so a chunk that
// carries the start of the next frame too leaves it waiting): then the last 22 characters are
// the frame, the buffer is emptied (anything before the frame goes with it) and the frame is
// returned. The buffer has no length limit.
std::optional<std::string> take_frame(std::string& rxbuffer);

// The typed reply of a 22-byte frame; nothing for a frame that does not start with 0x55, a
// type no reply has, or a frame of another length.
std::optional<Reply> decode_reply(std::string_view frame);

}  // namespace nerit
