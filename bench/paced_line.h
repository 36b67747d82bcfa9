#pragma once
// A 19200-baud line between the program and nerit-sim, in a thread of its own. nerit-sim paces
// only what it sends; a pseudo-terminal passes the program's bytes at once, so the line delays
// them to the wire rate, and both directions take their time as on the real line. The line runs
// at real-time priority where the system allows it, so that its own wake-ups do not count
// against the program or nerit-sim.
#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/bench_support.h"

namespace nerit::bench {

// Real-time priority for the calling thread; otherwise at least timers without slack.
inline bool make_this_thread_punctual() {
  sched_param param{};
  param.sched_priority = sched_get_priority_min(SCHED_FIFO);
  if (pthread_setschedparam(pthread_self(), SCHED_FIFO, &param) == 0) return true;
  prctl(PR_SET_TIMERSLACK, 1UL);
  return false;
}

// A 19200-baud line from the program to nerit-sim: the program opens device(); every byte it
// writes reaches the controller 10 bits of 1/19200 s after the one before. The controller's
// bytes, already paced by nerit-sim, pass at once.
class PacedLine {
 public:
  // `reply_bytes`: how many bytes make a reply, for the controller's turnaround.
  PacedLine(const std::string& controller_device, int reply_bytes)
      : ends_(controller_device), reply_bytes_(reply_bytes) {
    if (!ends_.ok()) return;
    thread_ = std::thread([this] { run(); });
  }
  ~PacedLine() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
  }
  const std::string& device() const { return ends_.device; }
  // Whether the line got real-time priority; known once its thread runs.
  bool realtime() const { return realtime_; }

  // Each exchange's time beyond the wire time, in milliseconds: the program from a reply to its
  // next request, the controller from a request to its reply, the line's lateness with a
  // request's last byte.
  struct Turns {
    std::vector<double> program, controller, line;
  };
  Turns take_turns() {
    const std::lock_guard lock(mutex_);
    return std::exchange(turns_, Turns{});
  }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::nanoseconds kByteTime{520833};  // 10 bits at 19200 baud

  static double ms(std::chrono::nanoseconds d) { return static_cast<double>(d.count()) / 1e6; }

  void run() {
    realtime_ = make_this_thread_punctual();
    // What the program wrote, each byte with the time it is due at nerit-sim.
    std::deque<std::pair<Clock::time_point, char>> on_wire;
    Clock::time_point line_free = Clock::now();
    // When the last request reached nerit-sim and the last reply reached the program.
    Clock::time_point request_delivered{}, reply_forwarded{};
    bool request_pending = false, reply_pending = false;
    int reply_bytes = 0;  // of the reply to the pending request, so far
    char buf[4096];
    while (!stop_) {
      auto now = Clock::now();
      std::string due;
      Clock::time_point last_due{};
      while (!on_wire.empty() && on_wire.front().first <= now) {
        due += on_wire.front().second;
        last_due = on_wire.front().first;
        on_wire.pop_front();
      }
      if (!due.empty()) {
        if (::write(ends_.controller, due.data(), due.size()) < 0) return;
        if (on_wire.empty()) {
          request_delivered = now;
          request_pending = true;
          reply_bytes = 0;
          const std::lock_guard lock(mutex_);
          turns_.line.push_back(ms(now - last_due));
        }
      }
      auto wait = std::chrono::nanoseconds(std::chrono::milliseconds(50));
      if (!on_wire.empty()) wait = std::min(wait, on_wire.front().first - Clock::now());
      if (wait < std::chrono::nanoseconds(0)) continue;
      const auto ready = ends_.wait_readable(std::chrono::ceil<std::chrono::microseconds>(wait));
      if (!ready.program && !ready.controller) continue;
      now = Clock::now();
      if (ready.program) {
        const ssize_t n = ::read(ends_.program_side, buf, sizeof buf);
        if (n > 0 && on_wire.empty() && reply_pending) {
          const std::lock_guard lock(mutex_);
          turns_.program.push_back(ms(now - reply_forwarded));
          reply_pending = false;
        }
        for (ssize_t i = 0; i < n; ++i) {
          line_free = std::max(line_free, now) + kByteTime;
          on_wire.emplace_back(line_free, buf[i]);
        }
      }
      if (ready.controller) {
        const ssize_t n = ::read(ends_.controller, buf, sizeof buf);
        if (n == 0 || (n < 0 && errno != EAGAIN && errno != EINTR)) return;  // nerit-sim has gone
        if (n < 0) continue;
        if (::write(ends_.program_side, buf, static_cast<std::size_t>(n)) < 0) return;
        reply_bytes += static_cast<int>(n);
        if (request_pending && reply_bytes >= reply_bytes_) {
          // nerit-sim hands over a paced message when its last byte is due: its first byte
          // left the message's wire time earlier.
          const std::lock_guard lock(mutex_);
          turns_.controller.push_back(ms(now - request_delivered - reply_bytes * kByteTime));
          request_pending = false;
        }
        reply_forwarded = now;
        reply_pending = true;
      }
    }
  }

  RelayEnds ends_;
  int reply_bytes_;
  std::atomic<bool> stop_{false};
  std::atomic<bool> realtime_{false};
  std::mutex mutex_;
  Turns turns_;
  std::thread thread_;
};

}  // namespace nerit::bench
