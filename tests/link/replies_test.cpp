// Reply frames cut from the receive buffer and decoded into typed replies.
#include "link/replies.h"

#include <gtest/gtest.h>

#include "tests/support/reply_frames.h"

namespace nerit::testing {
namespace {

template <class T>
T decoded(const std::string& frame) {
  const std::optional<Reply> reply = decode_reply(frame);
  EXPECT_TRUE(reply && std::holds_alternative<T>(*reply)) << hex_bytes(frame);
  return reply && std::holds_alternative<T>(*reply) ? std::get<T>(*reply) : T{};
}

// A frame only when the buffer ends on CR LF with 22 characters or more; then the last 22.
TEST(ReplyFraming, CutsTheLast22CharactersWhenTheBufferEndsOnCrLf) {
  const std::string frame = firmware_reply("ABCDEFGHIJKLMNOP");
  std::string buffer = frame.substr(0, 21);
  EXPECT_EQ(take_frame(buffer), std::nullopt);
  buffer += frame.substr(21);
  EXPECT_EQ(take_frame(buffer), frame);
  EXPECT_EQ(buffer, "");
  buffer = "xyz\r\n" + frame;
  EXPECT_EQ(take_frame(buffer), frame);
  buffer = frame + "U";  // the next frame's first byte: wait for a chunk that ends the frame
  EXPECT_EQ(take_frame(buffer), std::nullopt);
  buffer = "\r\n";
  EXPECT_EQ(take_frame(buffer), std::nullopt);
}

TEST(ReplyDecoding, FirmwareStatusBlocksAndText) {
  EXPECT_EQ(decoded<FirmwareReply>(firmware_reply(std::string("V1\0\xB5", 4))).text,
            std::string("V1\0µ", 5) + std::string(12, '\0'));

  ReplyFrame status(0xFF);
  for (int k = 1; k <= 8; ++k) status.status_word(k, 0x0101 * k + (k == 8 ? 0xF000 : 0));
  const StatusReply s = decoded<StatusReply>(status);
  EXPECT_EQ(s.W[1], 0x0101);
  EXPECT_EQ(s.W[4], 0x0404);
  EXPECT_EQ(s.W[8], 0xF808);
  EXPECT_EQ(s.b(13), 0x05);
  EXPECT_EQ(s.b(1), 0xFF);

  const MemoryBlockReply m = decoded<MemoryBlockReply>(sram_reply(0x3A0, {0xD4, 0x30, 7}));
  EXPECT_EQ(m.address, 0x3A0);
  EXPECT_EQ(hex_bytes(std::string(m.data.begin(), m.data.end())),
            "D4 30 07 00 00 00 00 00 00 00 00 00 00 00 00 00");
  EXPECT_EQ(decoded<BlockReply>(ReplyFrame(0x02).address(0xA0)).address, 0xA0);

  const TextReply t = decoded<TextReply>(text_reply(std::string("Write\0SDram", 11), 1));
  EXPECT_EQ(t.text, "Write");
  EXPECT_EQ(t.flag, 1);
}

TEST(ReplyDecoding, OtherStartOrTypeOrLengthIsNoReply) {
  std::string frame = text_reply("x");
  frame[0] = 'u';
  EXPECT_EQ(decode_reply(frame), std::nullopt);
  EXPECT_EQ(decode_reply(std::string(ReplyFrame(0x77))), std::nullopt);
  EXPECT_EQ(decode_reply(text_reply("x").substr(1)), std::nullopt);
}

}  // namespace
}  // namespace nerit::testing
