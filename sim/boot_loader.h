#pragma once
// The boot loader: takes a firmware image of 1016 blocks of 128 bytes. It counts bytes, not
// acknowledgements, so a block that follows a lost 0x06 is still the next block of the image.
// The controller acknowledges each block with 0x06 once it is programmed, the last one too,
// and reports 0x07 when the whole image is done.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nerit::sim {

class BootLoader {
 public:
  static constexpr std::size_t kBlockBytes = 128;
  static constexpr std::size_t kBlocks = 1016;
  static constexpr std::size_t kImageBytes = kBlockBytes * kBlocks;
  static constexpr std::uint8_t kReady = 0x05;
  static constexpr std::uint8_t kBlockReceived = 0x06;
  static constexpr std::uint8_t kFinished = 0x07;
  static constexpr double kProgrammingMs = 100;  // from the last block's 0x06 to 0x07

  // Controller time a whole image costs besides the wire: every block's programming, then the
  // finish before 0x07. Answer delays (Options::reply_delay_ms) come on top.
  static constexpr double image_programming_ms(double block_programming_ms) {
    return static_cast<double>(kBlocks) * block_programming_ms + kProgrammingMs;
  }

  enum class Step { kNone, kBlockDone, kImageDone };

  void start();
  bool active() const { return active_; }
  Step push(std::uint8_t byte);

  // The last image received in full, and how many were.
  const std::vector<std::uint8_t>& flashed_image() const { return flashed_; }
  int images_flashed() const { return images_flashed_; }
  // Blocks of the image in progress received in full.
  std::size_t blocks_received() const { return receiving_.size() / kBlockBytes; }

 private:
  bool active_ = false;
  std::vector<std::uint8_t> receiving_;
  std::vector<std::uint8_t> flashed_;
  int images_flashed_ = 0;
};

}  // namespace nerit::sim
