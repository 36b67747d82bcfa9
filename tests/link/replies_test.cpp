// Reply frames cut from the receive buffer and decoded into typed replies.
#include "link/replies.h"

#include <gtest/gtest.h>

#include "tests/support/reply_frames.h"

namespace nerit::testing {
namespace {

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

TEST(ReplyDecoding, OtherStartOrTypeOrLengthIsNoReply) {
  std::string frame = text_reply("x");
  frame[0] = 'u';
  EXPECT_EQ(decode_reply(frame), std::nullopt);
  EXPECT_EQ(decode_reply(std::string(ReplyFrame(0x77))), std::nullopt);
  EXPECT_EQ(decode_reply(text_reply("x").substr(1)), std::nullopt);
}

}  // namespace
}  // namespace nerit::testing
