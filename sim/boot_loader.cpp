#include "sim/boot_loader.h"

#include <utility>

namespace nerit::sim {

void BootLoader::start() {
  active_ = true;
  receiving_.clear();
  receiving_.reserve(kImageBytes);
}

BootLoader::Step BootLoader::push(std::uint8_t byte) {
  if (!active_) return Step::kNone;
  receiving_.push_back(byte);
  if (receiving_.size() % kBlockBytes != 0) return Step::kNone;
  if (receiving_.size() < kImageBytes) return Step::kBlockDone;
  flashed_ = std::move(receiving_);
  receiving_.clear();
  ++images_flashed_;
  active_ = false;
  return Step::kImageDone;
}

}  // namespace nerit::sim
