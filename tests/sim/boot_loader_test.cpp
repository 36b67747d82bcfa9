// Firmware update through the boot loader: ready byte, block acknowledgements, finish.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sim/controller.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::command;
using Emissions = std::vector<Emission>;

TEST(SimBootLoader, UpdateIsAcknowledgedBlockByBlockAndEndsWithARestart) {
  Controller c;
  c.receive(0, command(0x0B, 0x02A0, Block{1, 2, 3}) + test::stream_on(1));
  c.receive(10, command(0x04));
  EXPECT_EQ(c.poll(10).back(), (Emission{10, "\x05"}));
  EXPECT_EQ(c.stream_mode(), StreamMode::kOff);

  std::string image(1016 * 128, '\xFF');
  for (std::size_t i = 0; i < 1000; ++i) image[i] = static_cast<char>(i * 7);
  // A block's acknowledgement comes with its last byte, not before.
  c.receive(20, image.substr(0, 127));
  EXPECT_TRUE(c.poll(20).empty());
  c.receive(21, image.substr(127, 1));
  EXPECT_EQ(c.poll(21), (Emissions{{21, "\x06"}}));
  double t = 22;
  for (std::size_t at = 128; at < image.size(); at += 128, t += 1) {
    c.receive(t, image.substr(at, 128));
    ASSERT_EQ(c.poll(t), (Emissions{{t, "\x06"}})) << at;
  }
  EXPECT_TRUE(c.poll(t - 1 + 99).empty());
  EXPECT_EQ(c.poll(t - 1 + 100), (Emissions{{t - 1 + 100, "\x07"}}));
  EXPECT_FALSE(c.boot_loader().active());
  EXPECT_EQ(c.boot_loader().images_flashed(), 1);
  EXPECT_EQ(c.boot_loader().flashed_image(), std::vector<std::uint8_t>(image.begin(), image.end()));

  // Restarted from the permanent state: the unsaved write is gone, commands work again.
  EXPECT_EQ(c.working_memory().at(0x02A0), 128);
  c.receive(2000, command(0x05));
  EXPECT_EQ(test::byte_at(c.poll(2000).at(0).bytes, 1), 0xFD);

  Options recovery;  // started in the boot loader: takes an image without a start request
  recovery.start_in_boot_loader = true;
  Controller r(recovery);
  r.receive(0, command(0x05) + std::string(106, '\0'));  // 128 bytes of image
  EXPECT_EQ(r.poll(0), (Emissions{{0, "\x06"}}));
  EXPECT_TRUE(r.frames_received().empty());
}

}  // namespace
}  // namespace nerit::sim
