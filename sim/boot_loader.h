#pragma once
// The boot loader: takes a firmware image of 1016 blocks of 128 bytes, acknowledging each
// block with 0x06; after the last block the controller reports 0x07 and starts again.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nerit::sim {

class BootLoader {
 public:
  static constexpr std::size_t kBlockBytes = 128;
  static constexpr std::size_t kBlocks = 1016;
  static constexpr std::uint8_t kReady = 0x05;
  static constexpr std::uint8_t kBlockReceived = 0x06;
  static constexpr std::uint8_t kFinished = 0x07;
  static constexpr double kProgrammingMs = 100;  // from the last block to 0x07

  enum class Step { kNone, kBlockDone, kImageDone };

  void start();
  bool active() const { return active_; }
  Step push(std::uint8_t byte);

  // The last image received in full, and how many were.
  const std::vector<std::uint8_t>& flashed_image() const { return flashed_; }
  int images_flashed() const { return images_flashed_; }

 private:
  bool active_ = false;
  std::vector<std::uint8_t> receiving_;
  std::vector<std::uint8_t> flashed_;
  int images_flashed_ = 0;
};

}  // namespace nerit::sim
