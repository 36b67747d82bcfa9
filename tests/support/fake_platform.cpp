#include "tests/support/fake_platform.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <random>

#include "shell/controls.h"
#include "shell/errors.h"
#include "shell/fault_boundary.h"

namespace nerit::testing {

// --- dialogs -------------------------------------------------------------------------------

MsgAnswer FakeDialogs::message_box(const MessageBoxRequest& request) {
  shown.push_back(request);
  if (!answers.empty()) {
    const MsgAnswer a = answers.front();
    answers.pop_front();
    return a;
  }
  switch (request.buttons) {
    case MsgButtons::Ok:
      return MsgAnswer::Ok;
    case MsgButtons::YesNo:
      return MsgAnswer::No;
    default:
      return MsgAnswer::Cancel;
  }
}

std::filesystem::path FakeDialogs::file_dialog(const FileDialogRequest& request) {
  file_dialogs.push_back(request);
  if (files.empty()) return {};
  auto f = files.front();
  files.pop_front();
  return f;
}

std::string FakeDialogs::input_box(const std::string& prompt, const std::string& title,
                                   const std::string& default_text) {
  input_boxes.push_back({prompt, title, default_text});
  if (inputs.empty()) return {};
  auto s = inputs.front();
  inputs.pop_front();
  return s;
}

// --- timers --------------------------------------------------------------------------------

void FakeTimers::timer_changed(Timer& timer) {
  auto it = armed_.find(&timer);
  const bool running = it != armed_.end() && clock_.pending(it->second);
  if (timer.enabled() && timer.interval() > 0) {
    if (running) clock_.cancel(it->second);  // a new interval counts from now
    arm(timer);
  } else if (it != armed_.end()) {
    clock_.cancel(it->second);
    armed_.erase(it);
  }
}

void FakeTimers::timer_destroyed(Timer& timer) {
  auto it = armed_.find(&timer);
  if (it == armed_.end()) return;
  clock_.cancel(it->second);
  armed_.erase(it);
}

int FakeTimers::ticks(const Timer& timer) const {
  auto it = ticks_.find(&timer);
  return it == ticks_.end() ? 0 : it->second;
}

void FakeTimers::arm(Timer& timer) {
  armed_[&timer] = clock_.schedule(timer.interval(), [this, &timer] {
    armed_.erase(&timer);
    // The next tick is due one interval on, even while this tick's handler still waits:
    // a timer keeps ticking inside its own handler's waits.
    if (timer.enabled() && timer.interval() > 0) arm(timer);
    ++ticks_[&timer];
    run_handler(dialogs_, [&timer] { timer.tick(); });
  });
}

// --- serial --------------------------------------------------------------------------------

void FakeSerialPort::set_comm_port(int number) {
  if (open_) throw SerialError("Port already open");
  if (number < 1 || number > 255) throw SerialError("Invalid port number");
  port_ = number;
}

void FakeSerialPort::set_port_open(bool open) {
  if (!open) {
    open_ = false;
    received_.clear();
    return;
  }
  if (open_) throw SerialError("Port already open");
  open_attempts.push_back(port_);
  if (!present.count(port_)) throw SerialError("Device unavailable");
  open_ = true;
  opened.push_back(port_);
}

void FakeSerialPort::output(const std::string& chars) {
  if (!open_) throw SerialError("Operation valid only when the port is open");
  ++output_calls;
  written[port_] += chars;
  if (on_output) on_output(port_, chars);
}

std::string FakeSerialPort::input() {
  if (!open_) throw SerialError("Operation valid only when the port is open");
  std::string s;
  s.swap(received_);
  return s;
}

std::string FakeSerialPort::device_name(int number) const {
  return present.count(number) ? "fake" + std::to_string(number) : std::string();
}

void FakeSerialPort::arrive_after(long long delay_ms, std::string bytes, int event, bool any_port) {
  const int target = port_;
  clock_.schedule(delay_ms, [this, target, bytes = std::move(bytes), event, any_port] {
    if (!open_ || (!any_port && port_ != target)) return;
    if (event == kReceive) received_ += bytes;
    event_ = event;
    if (on_comm) run_handler(dialogs_, on_comm);
  });
}

void FakeSerialPort::arrive_on(int port_number, long long delay_ms, std::string bytes) {
  clock_.schedule(delay_ms, [this, port_number, bytes = std::move(bytes)] {
    if (!open_ || port_ != port_number) return;
    received_ += bytes;
    event_ = kReceive;
    if (on_comm) run_handler(dialogs_, on_comm);
  });
}

// --- pump, clock, windows ------------------------------------------------------------------

void FakePump::process_events() {
  if (closing) throw ProgramClosing{};
  if (++steps > max_steps) {
    ADD_FAILURE() << "a wait ran " << max_steps << " steps without ending";
    throw WaitNeverEnds{};
  }
  if (!clock_.run_next()) {
    ADD_FAILURE() << "a wait would never end: nothing is scheduled at " << clock_.now_ms() << " ms";
    throw WaitNeverEnds{};
  }
  if (closing) throw ProgramClosing{};
}

DateTime FakeClock::now() const {
  DateTime t = start;
  long long seconds = t.hour * 3600LL + t.minute * 60LL + t.second + clock_.now_ms() / 1000;
  seconds %= 24 * 3600;
  t.hour = static_cast<int>(seconds / 3600);
  t.minute = static_cast<int>(seconds / 60 % 60);
  t.second = static_cast<int>(seconds % 60);
  return t;
}

std::string form_name(FormId form) {
  switch (form) {
    case FormId::Form2:
      return "Form2";
    case FormId::Form3:
      return "Form3";
    case FormId::Form4:
      return "Form4";
    case FormId::Form5:
      return "Form5";
  }
  return "?";
}

void FakeWindows::show(FormId form) {
  loaded.insert(form);
  calls.push_back("show " + form_name(form));
}

void FakeWindows::unload(FormId form) {
  loaded.erase(form);
  calls.push_back("unload " + form_name(form));
}

void FakeWindows::end_program() {
  calls.push_back("end");
  if (pump) pump->closing = true;
}

FakePlatform::FakePlatform() {
  windows.pump = &pump;
}

// --- files ---------------------------------------------------------------------------------

TempFolder::TempFolder() {
  static std::atomic<int> counter{0};
  std::random_device rd;
  path_ = std::filesystem::temp_directory_path() /
          ("nerit-test-" + std::to_string(rd()) + "-" + std::to_string(counter++));
  std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

void TempFolder::write(const std::string& name, const std::vector<unsigned char>& bytes) const {
  std::ofstream out(path_ / name, std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
}

}  // namespace nerit::testing
