// libFuzzer target over the controller's replies: the receive buffer's framing and the decoding
// of a frame, with every decoded field checked against the frame's bytes.
//
// Input: chunks as the serial port delivers them, each a length byte followed by that many
// bytes (the last chunk takes what is left). Each chunk is appended to the receive buffer and
// take_frame runs after it, as on every arrival. The whole input is also decoded as one frame.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>
#include <variant>

#include "fuzz/fuzz_check.h"
#include "link/replies.h"

namespace {

using nerit::kFrameLength;

using nerit::fuzz::check;

// The ISO 8859-1 bytes a UTF-8 text stands for; nothing when the text is not UTF-8 in shortest
// form, or holds a character past U+00FF.
std::optional<std::string> utf8_to_latin1(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto lead = static_cast<unsigned char>(text[i]);
    if (lead < 0x80) {
      out += static_cast<char>(lead);
      continue;
    }
    if ((lead != 0xC2 && lead != 0xC3) || i + 1 == text.size()) return std::nullopt;
    const auto next = static_cast<unsigned char>(text[++i]);
    if ((next & 0xC0) != 0x80) return std::nullopt;
    out += static_cast<char>(((lead & 0x03) << 6) | (next & 0x3F));
  }
  return out;
}

bool is_reply_type(std::uint8_t type) {
  return type == nerit::kReplyText || type == nerit::kReplyBlock || type == nerit::kReplySram ||
         type == nerit::kReplyFirmware || type == nerit::kReplyStatus;
}

template <typename T>
const T& alternative(const nerit::Reply& reply) {
  const T* value = std::get_if<T>(&reply);
  check(value != nullptr, "the reply's alternative matches the frame's type byte");
  return *value;
}

void check_decoded(std::string_view frame) {
  const std::optional<nerit::Reply> reply = nerit::decode_reply(frame);
  if (frame.size() != kFrameLength) {
    check(!reply, "only a 22-byte frame decodes");
    return;
  }
  const auto byte = [frame](std::size_t i) { return static_cast<std::uint8_t>(frame[i]); };
  check(reply.has_value() == (byte(0) == nerit::kFrameStart && is_reply_type(byte(1))),
        "a frame decodes exactly when it starts with 0x55 and has a reply's type");
  if (!reply) return;
  const int address = byte(2) * 256 + byte(3);

  switch (byte(1)) {
    case nerit::kReplyFirmware: {
      const auto& firmware = alternative<nerit::FirmwareReply>(*reply);
      const std::optional<std::string> bytes = utf8_to_latin1(firmware.text);
      check(bytes.has_value(), "firmware text is UTF-8 of Latin-1 characters");
      check(bytes->size() == 16, "firmware text has 16 characters");
      check(*bytes == frame.substr(4, 16), "firmware text is bytes 4..19, one character a byte");
      break;
    }
    case nerit::kReplyStatus: {
      const auto& status = alternative<nerit::StatusReply>(*reply);
      for (int i = 0; i <= 20; ++i) {
        const auto at = static_cast<std::size_t>(i);
        check(status.bytes[at] == byte(at), "status bytes are the frame's first 21 bytes");
        check(status.b(i) == byte(at), "b(i) is byte i");
      }
      check(status.W[0] == 0, "W0 stays 0");
      for (std::size_t k = 1; k <= 8; ++k)
        check(status.W[k] == byte(2 * k + 3) * 256L + byte(2 * k + 2),
              "Wk is bytes 2k+2 (low) and 2k+3 (high)");
      check(status.W[8] == byte(19) * 256L + byte(18), "W8 is b19 * 256 + b18");
      break;
    }
    case nerit::kReplySram: {
      const auto& block = alternative<nerit::MemoryBlockReply>(*reply);
      check(block.address == address, "memory block address is bytes 2 (high) and 3 (low)");
      for (std::size_t i = 0; i < block.data.size(); ++i)
        check(block.data[i] == byte(4 + i), "memory block data is bytes 4..19");
      break;
    }
    case nerit::kReplyBlock: {
      const auto& block = alternative<nerit::BlockReply>(*reply);
      check(block.address == address, "0x02 reply address is bytes 2 (high) and 3 (low)");
      break;
    }
    case nerit::kReplyText: {
      const auto& text = alternative<nerit::TextReply>(*reply);
      check(text.flag == byte(3), "text flag is byte 3");
      const std::string_view data = frame.substr(4, 16);
      const std::optional<std::string> bytes = utf8_to_latin1(text.text);
      check(bytes.has_value(), "text is UTF-8 of Latin-1 characters");
      check(*bytes == data.substr(0, data.find('\0')), "text is bytes 4.. up to the first zero");
      break;
    }
    default:
      check(false, "a frame of no reply type decodes");
  }
}

// One arrival: the chunk goes onto the buffer, then a frame is cut when the buffer ends on one.
// `expected` follows what the buffer must hold, without copying it on every arrival.
void receive(std::string& rxbuffer, std::string& expected, std::string_view chunk) {
  rxbuffer += chunk;
  expected += chunk;
  const std::optional<std::string> frame = nerit::take_frame(rxbuffer);
  const bool complete = expected.size() >= kFrameLength && expected.ends_with("\r\n");
  check(frame.has_value() == complete,
        "a frame is cut exactly when the buffer holds 22 bytes or more and ends on CR LF");
  if (!frame) {
    check(rxbuffer == expected, "the buffer keeps everything until a frame is cut");
    return;
  }
  check(frame->size() == kFrameLength, "a cut frame is 22 bytes");
  check(frame->ends_with("\r\n"), "a cut frame ends on CR LF");
  check(*frame == std::string_view(expected).substr(expected.size() - kFrameLength),
        "a cut frame is the buffer's last 22 bytes");
  check(rxbuffer.empty(), "the buffer is empty after a cut");
  expected.clear();
  check_decoded(*frame);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  check_decoded(input);

  std::string rxbuffer;
  std::string expected;
  std::size_t pos = 0;
  while (pos < input.size()) {
    const std::size_t length = static_cast<unsigned char>(input[pos++]);
    const std::string_view chunk = input.substr(pos, length);
    pos += chunk.size();
    receive(rxbuffer, expected, chunk);
  }
  return 0;
}
