#pragma once
// The program's side of a firmware update on the virtual clock: writes bytes at the wire rate,
// one after the other, and waits for the controller's answers with a bounded patience.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sim/boot_loader.h"
#include "sim/controller.h"
#include "sim/options.h"

namespace nerit::sim::test {

class ImageUpdater {
 public:
  explicit ImageUpdater(Controller& controller) : controller_(controller) {}

  // Each byte arrives one byte time after the one before, the first one after now_ms().
  void write(std::string_view bytes) {
    for (const char ch : bytes) {
      now_ms_ += kByteMs;
      controller_.receive(now_ms_, std::string_view(&ch, 1));
    }
  }

  // Waits until something arrives, at most patience_ms; true when something did.
  bool wait(double patience_ms) {
    const double deadline = now_ms_ + patience_ms;
    for (double due = controller_.next_due(); due >= 0 && due <= deadline;
         due = controller_.next_due()) {
      if (due > now_ms_) now_ms_ = due;
      const std::vector<Emission> got = controller_.poll(now_ms_);
      if (!got.empty()) {
        heard_.insert(heard_.end(), got.begin(), got.end());
        return true;
      }
    }
    now_ms_ = deadline;
    const std::vector<Emission> got = controller_.poll(now_ms_);
    heard_.insert(heard_.end(), got.begin(), got.end());
    return !got.empty();
  }

  // Writes the image block by block; after each block waits for an answer up to patience_ms
  // and goes on with the next block either way.
  void send_image(std::string_view image, double patience_ms) {
    for (std::size_t at = 0; at < image.size(); at += BootLoader::kBlockBytes) {
      write(image.substr(at, BootLoader::kBlockBytes));
      block_ends_ms_.push_back(now_ms_);
      wait(patience_ms);
    }
  }

  // Takes everything that arrives up to t_ms.
  void listen_until(double t_ms) {
    if (t_ms > now_ms_) now_ms_ = t_ms;
    const std::vector<Emission> got = controller_.poll(now_ms_);
    heard_.insert(heard_.end(), got.begin(), got.end());
  }

  double now_ms() const { return now_ms_; }
  // Everything the controller sent so far, in order.
  const std::vector<Emission>& heard() const { return heard_; }
  // When the last byte of each block written arrived.
  const std::vector<double>& block_ends_ms() const { return block_ends_ms_; }

 private:
  Controller& controller_;
  double now_ms_ = 0;
  std::vector<Emission> heard_;
  std::vector<double> block_ends_ms_;
};

}  // namespace nerit::sim::test
