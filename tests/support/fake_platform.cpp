#include "tests/support/fake_platform.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <random>

#include "shell/fault_boundary.h"

namespace nerit::testing {

FakeDialogs::~FakeDialogs() {
  for (const auto& [box, answer] : expected_) ADD_FAILURE() << "expected box never shown: " << box;
  for (const auto& file : files_) ADD_FAILURE() << "expected file dialog never shown: " << file;
  for (const auto& text : inputs_) ADD_FAILURE() << "expected input box never shown: " << text;
}

void FakeDialogs::expect(std::string box, MsgAnswer answer) {
  expected_.emplace_back(std::move(box), answer);
}

void FakeDialogs::expect_file(std::filesystem::path chosen) {
  files_.push_back(std::move(chosen));
}

void FakeDialogs::expect_input(std::string typed) {
  inputs_.push_back(std::move(typed));
}

std::string FakeDialogs::line(const MessageBoxRequest& b) {
  static const char* icons[] = {"None", "Critical", "Question", "Exclamation", "Information"};
  static const char* buttons[] = {"Ok", "OkCancel", "YesNo", "YesNoCancel", "RetryCancel"};
  return b.title + "|" + icons[static_cast<int>(b.icon)] + "|" +
         buttons[static_cast<int>(b.buttons)] + "|" + b.text;
}

std::vector<std::string> FakeDialogs::boxes() const {
  std::vector<std::string> out;
  for (const MessageBoxRequest& b : shown) out.push_back(line(b));
  return out;
}

MsgAnswer FakeDialogs::take(const MessageBoxRequest& request) {
  shown.push_back(request);
  const MsgAnswer fallback = request.buttons == MsgButtons::Ok      ? MsgAnswer::Ok
                             : request.buttons == MsgButtons::YesNo ? MsgAnswer::No
                                                                    : MsgAnswer::Cancel;
  if (any_box) return fallback;
  const std::string got = line(request);
  if (expected_.empty()) {
    ADD_FAILURE() << "unexpected box: " << got;
    return fallback;
  }
  auto [want, answer] = expected_.front();
  expected_.pop_front();
  if (want != got) {
    ADD_FAILURE() << "box shown: " << got << "\nexpected:  " << want;
    return fallback;
  }
  return answer;
}

MsgAnswer FakeDialogs::message_box(const MessageBoxRequest& request) {
  return take(request);
}

void FakeDialogs::notify(const MessageBoxRequest& request) {
  take(request);
}

std::filesystem::path FakeDialogs::file_dialog(const FileDialogRequest& request) {
  file_requests.push_back(request);
  if (files_.empty()) {
    ADD_FAILURE() << "unexpected file dialog: " << request.title;
    return {};
  }
  auto chosen = std::move(files_.front());
  files_.pop_front();
  return chosen;
}

std::string FakeDialogs::input_box(const std::string& prompt, const std::string&,
                                   const std::string&) {
  input_prompts.push_back(prompt);
  if (inputs_.empty()) {
    ADD_FAILURE() << "unexpected input box: " << prompt;
    return {};
  }
  auto typed = std::move(inputs_.front());
  inputs_.pop_front();
  return typed;
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

void FakeSerialPort::vanish_after(long long delay_ms) {
  clock_.schedule(delay_ms, [this] {
    if (!open_) return;
    open_ = false;
    received_.clear();
    if (on_closed) run_handler(dialogs_, [this] { on_closed("device removed"); });
  });
}

void FakeSerialPort::arrive_after(long long delay_ms, std::string bytes, int event, int on) {
  if (on == 0) on = port_;
  clock_.schedule(delay_ms, [this, on, bytes = std::move(bytes), event] {
    if (!open_ || (on > 0 && port_ != on)) return;
    if (event == kReceive) received_ += bytes;
    event_ = event;
    // Nobody waits on an arrival's box: it does not stop a wait further down.
    if (on_comm) run_handler(dialogs_, on_comm, FaultBox::Modeless);
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
