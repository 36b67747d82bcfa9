#include "tests/support/fake_platform.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <random>

#include "shell/fault_boundary.h"

namespace nerit::testing {

std::vector<std::string> FakeDialogs::boxes() const {
  static const char* icons[] = {"None", "Critical", "Question", "Exclamation", "Information"};
  static const char* buttons[] = {"Ok", "OkCancel", "YesNo", "YesNoCancel", "RetryCancel"};
  std::vector<std::string> out;
  for (const MessageBoxRequest& b : shown)
    out.push_back(b.title + "|" + icons[static_cast<int>(b.icon)] + "|" +
                  buttons[static_cast<int>(b.buttons)] + "|" + b.text);
  return out;
}

void FakeTimers::arm(Timer& timer) {
  armed_[&timer] = clock_.schedule(timer.interval(), [this, &timer] {
    armed_.erase(&timer);
    // The next tick is due one interval on, even while this tick's handler still waits:
    // a timer keeps ticking inside its own handler's waits.
    if (timer.enabled() && timer.interval() > 0) arm(timer);
    run_handler(dialogs_, [&timer] { timer.tick(); });
  });
}

void FakeSerialPort::arrive_after(long long delay_ms, std::string bytes, int event, int on) {
  if (on == 0) on = port_;
  clock_.schedule(delay_ms, [this, on, bytes = std::move(bytes), event] {
    if (!open_ || (on > 0 && port_ != on)) return;
    if (event == kReceive) received_ += bytes;
    event_ = event;
    if (on_comm) run_handler(dialogs_, on_comm);
  });
}

void FakePump::process_events() {
  if (closing) throw ProgramClosing{};
  if (++steps_ > kMaxSteps) {
    ADD_FAILURE() << "a wait ran " << kMaxSteps << " steps without ending";
    throw WaitNeverEnds{};
  }
  if (!clock_.run_next()) {
    ADD_FAILURE() << "a wait would never end: nothing is scheduled at " << clock_.now_ms() << " ms";
    throw WaitNeverEnds{};
  }
  if (closing) throw ProgramClosing{};
}

TempFolder::TempFolder() {
  static std::atomic<int> counter{0};
  path_ =
      std::filesystem::temp_directory_path() /
      ("nerit-test-" + std::to_string(std::random_device{}()) + "-" + std::to_string(counter++));
  std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

void TempFolder::write(const std::string& name, const std::vector<unsigned char>& bytes) const {
  std::ofstream(path_ / name, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

}  // namespace nerit::testing
