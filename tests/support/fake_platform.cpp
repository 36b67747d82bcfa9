#include "tests/support/fake_platform.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <random>
#include <utility>

#include "shell/controls.h"
#include "shell/errors.h"
#include "shell/fault_boundary.h"

namespace nerit::testing {

MsgAnswer FakeDialogs::message_box(const MessageBoxRequest& request) {
  shown.push_back(request);
  if (answers.empty()) {
    if (request.buttons == MsgButtons::Ok) return MsgAnswer::Ok;
    return request.buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Cancel;
  }
  const MsgAnswer a = answers.front();
  answers.pop_front();
  return a;
}

void FakeTimers::timer_changed(Timer& timer) {
  auto it = armed_.find(&timer);
  if (it != armed_.end()) {
    clock_.cancel(it->second);  // a new interval counts from now
    armed_.erase(it);
  }
  if (timer.enabled() && timer.interval() > 0) arm(timer);
}

void FakeTimers::timer_destroyed(Timer& timer) {
  auto it = armed_.find(&timer);
  if (it == armed_.end()) return;
  clock_.cancel(it->second);
  armed_.erase(it);
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
  return std::exchange(received_, {});
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
  if (++steps_ > max_steps) {
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
  const long long s = (12 * 3600 + clock_.now_ms() / 1000) % (24 * 3600);
  return {2026,
          11,
          15,
          static_cast<int>(s / 3600),
          static_cast<int>(s / 60 % 60),
          static_cast<int>(s % 60)};
}

static std::string form_name(FormId form) {
  return "Form" + std::to_string(static_cast<int>(form) + 2);
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
