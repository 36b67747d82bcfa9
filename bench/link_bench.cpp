// nerit-link-bench: the program's link speed and idle cost against the nerit-sim program paced
// at 19200 baud on a pseudo-terminal. The program side is the real one (Qt serial port, core
// handlers, main window refreshes) on the offscreen platform with recording dialogs.
//
// nerit-sim paces only what it sends; a pseudo-terminal passes the program's bytes at once. For
// the transfers a line in a thread of its own sits between the two and delays the program's
// bytes to the wire rate as well, so both directions take their time as on the real line.
//
//   (a) "Read Data from Unit" and (b) "Write Data to Unit": wall time against the wire bound of
//       108 frames x 22 bytes x 10 bits / 19200 baud = 1.2375 s (target: ratio at most 1.10).
//   (c) CPU time of this process while "Read Data from Unit" waits 10 s on a controller that
//       has gone silent, as a share of one core (target: under 1 %).
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/bench_support.h"
#include "ui/application.h"

namespace {

using nerit::ui::Application;

constexpr double kWireBoundS = 108 * 22 * 10 / 19200.0;

using nerit::bench::RecordingDialogs;
using nerit::bench::SimProcess;

// A 19200-baud line from the program to nerit-sim: the program opens device(); every byte it
// writes reaches the controller 10 bits of 1/19200 s after the one before. The controller's
// bytes, already paced by nerit-sim, pass at once.
class PacedLine {
 public:
  explicit PacedLine(const std::string& controller_device) : ends_(controller_device) {
    if (!ends_.ok()) return;
    thread_ = std::thread([this] { run(); });
  }
  ~PacedLine() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
  }
  const std::string& device() const { return ends_.device; }

  // Mean turn-around beyond the wire time: the program from a reply to its next request, the
  // controller from a request to its reply. Read and reset.
  struct Turns {
    std::chrono::nanoseconds program{0}, controller{0};
    int program_count = 0, controller_count = 0;
  };
  Turns take_turns() {
    const std::lock_guard lock(mutex_);
    return std::exchange(turns_, Turns{});
  }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::nanoseconds kByteTime{520833};  // 10 bits at 19200 baud

  void run() {
    std::deque<std::pair<Clock::time_point, char>> on_wire;
    Clock::time_point line_free = Clock::now();
    // When the last request reached nerit-sim and the last reply reached the program.
    Clock::time_point request_delivered{}, reply_forwarded{};
    bool request_pending = false, reply_pending = false;
    char buf[4096];
    while (!stop_) {
      auto now = Clock::now();
      std::string due;
      while (!on_wire.empty() && on_wire.front().first <= now) {
        due += on_wire.front().second;
        on_wire.pop_front();
      }
      if (!due.empty()) {
        if (::write(ends_.controller, due.data(), due.size()) < 0) return;
        if (on_wire.empty()) {
          request_delivered = now;
          request_pending = true;
        }
      }
      auto wait = std::chrono::nanoseconds(std::chrono::milliseconds(50));
      if (!on_wire.empty()) wait = std::min(wait, on_wire.front().first - Clock::now());
      if (wait < std::chrono::nanoseconds(0)) continue;
      const auto ready =
          ends_.wait_readable(std::chrono::duration_cast<std::chrono::microseconds>(wait));
      if (!ready.program && !ready.controller) continue;
      now = Clock::now();
      if (ready.program) {
        const ssize_t n = ::read(ends_.program_side, buf, sizeof buf);
        if (n > 0 && on_wire.empty() && reply_pending) {
          const std::lock_guard lock(mutex_);
          turns_.program += now - reply_forwarded;
          ++turns_.program_count;
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
        if (request_pending) {
          // nerit-sim hands over a paced message when its last byte is due.
          const std::lock_guard lock(mutex_);
          turns_.controller += now - request_delivered - n * kByteTime;
          ++turns_.controller_count;
          request_pending = false;
        }
        reply_forwarded = now;
        reply_pending = true;
      }
    }
  }

  nerit::bench::RelayEnds ends_;
  std::atomic<bool> stop_{false};
  std::mutex mutex_;
  Turns turns_;
  std::thread thread_;
};

struct Program {
  Program(const std::string& device, const QString& folder) {
    Application::Options options;
    options.program_folder = folder.toStdString();
    options.show_splash = false;
    options.dialogs = &dialogs;
    options.ports = {device};
    app = std::make_unique<Application>(options);
    app->start();
  }
  bool connect() {
    app->run([this] { app->program().form1.session.Command1_Click(); });
    return app->program().form1.vars.connected == 1;
  }
  int log_lines() { return app->program().form1.c.List1.list_count(); }

  RecordingDialogs dialogs;
  std::unique_ptr<Application> app;
};

struct Transfer {
  double seconds = 0;
  int replies = 0;
  PacedLine::Turns turns;
};

Transfer run_transfer(Program& p, PacedLine& line, const std::function<void()>& handler) {
  line.take_turns();
  Transfer t;
  const int before = p.log_lines();
  QElapsedTimer clock;
  clock.start();
  p.app->run(handler);
  t.seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
  t.replies = p.log_lines() - before;
  t.turns = line.take_turns();
  return t;
}

double mean_ms(std::chrono::nanoseconds total, int count) {
  return count == 0 ? 0 : static_cast<double>(total.count()) / 1e6 / count;
}

void print_transfer(const char* name, const Transfer& t) {
  std::printf("%s: %.4f s for %d replies; wire bound %.4f s; ratio %.3f (target <= 1.10)\n", name,
              t.seconds, t.replies, kWireBoundS, t.seconds / kWireBoundS);
  std::printf(
      "  beyond the wire time, per exchange: %.2f ms in all, of which the program %.2f ms "
      "(reply in to next request out) and nerit-sim %.2f ms (request in to reply out)\n",
      (t.seconds - kWireBoundS) * 1000 / 54, mean_ms(t.turns.program, t.turns.program_count),
      mean_ms(t.turns.controller, t.turns.controller_count));
}

int measure_transfers(const QString& folder) {
  SimProcess sim({"--pacing"});
  if (sim.device().empty()) {
    std::fprintf(stderr, "nerit-sim did not start\n");
    return 1;
  }
  PacedLine line(sim.device());
  if (line.device().empty()) {
    std::fprintf(stderr, "no paced line\n");
    return 1;
  }
  Program p(line.device(), folder);
  if (!p.connect()) {
    std::fprintf(stderr, "not connected\n");
    return 1;
  }
  auto& form1 = p.app->program().form1;
  const Transfer read = run_transfer(p, line, [&] { form1.session.Command12_Click(); });
  const Transfer write = run_transfer(p, line, [&] { form1.transfers.Command9_Click(); });
  print_transfer("(a) Read Data from Unit", read);
  print_transfer("(b) Write Data to Unit", write);
  for (const std::string& d : p.dialogs.shown)
    if (d.rfind("Online:", 0) != 0) std::printf("  dialog: %s\n", d.c_str());
  return read.replies == 54 && write.replies == 54 ? 0 : 1;
}

int measure_idle(const QString& folder) {
  // Answers the connect request, then nothing more.
  SimProcess sim({"--pacing", "--silent-after", "1"});
  if (sim.device().empty()) {
    std::fprintf(stderr, "nerit-sim did not start\n");
    return 1;
  }
  Program p(sim.device(), folder);
  if (!p.connect()) {
    std::fprintf(stderr, "not connected\n");
    return 1;
  }
  constexpr int kWaitMs = 10000;
  double cpu_start = 0, cpu_used = 0, wall_s = 0;
  QElapsedTimer wall;
  QTimer::singleShot(kWaitMs, p.app.get(), [&] {
    cpu_used = nerit::bench::cpu_seconds() - cpu_start;
    wall_s = static_cast<double>(wall.nsecsElapsed()) / 1e9;
    p.app->main_window().close();  // ends the wait, as the user closing the window would
  });
  const int before = p.log_lines();
  cpu_start = nerit::bench::cpu_seconds();
  wall.start();
  p.app->run([&] { p.app->program().form1.session.Command12_Click(); });
  std::printf(
      "(c) waiting on a silent controller: %.3f s CPU in %.2f s = %.3f %% of one core "
      "(target < 1 %%); %d log lines meanwhile\n",
      cpu_used, wall_s, 100 * cpu_used / wall_s, p.log_lines() - before);
  return wall_s > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication qt(argc, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QTemporaryDir folder;
  int failures = measure_transfers(folder.path());
  failures += measure_idle(folder.path());
  return failures == 0 ? 0 : 1;
}
