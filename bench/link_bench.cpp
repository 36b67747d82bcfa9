// nerit-link-bench: the program's link speed and idle cost against the nerit-sim program paced
// at 19200 baud on a pseudo-terminal. The program side is the real one (Qt serial port, core
// handlers, main window refreshes) on the offscreen platform with recording dialogs.
//
// nerit-sim paces only what it sends; a pseudo-terminal passes the program's bytes at once. For
// the transfers a line in a thread of its own sits between the two and delays the program's
// bytes to the wire rate as well, so both directions take their time as on the real line. The line
// runs at real-time priority where the system allows it, so that its own wake-ups do not count
// against the program or nerit-sim.
//
//   (a) "Read Data from Unit" and (b) "Write Data to Unit", 54 exchanges each, `--runs N` times
//       (default 3), best and median of the runs:
//       wall time against the wire bound of 108 frames x 22 bytes x 10 bits / 19200 baud =
//       1.2375 s (target: at most 1.05 x);
//       the program's share per exchange, reply in to next request out (target: at most 0.3 ms);
//       nerit-sim's turnaround per exchange, request's last byte in to reply's first byte out,
//       beyond the reply's own wire time (target: under 0.5 ms);
//       how late the line delivers a request's last byte (no target; part of the wall time).
//   (c) CPU time of this process while "Read Data from Unit" waits 10 s on a controller that
//       has gone silent, as a share of one core (target: under 0.5 %).
//
// Exit status: 0 when every target is met, 2 when one is missed, 1 when nothing was measured.
#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>
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
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/bench_support.h"
#include "bench/paced_line.h"
#include "ui/application.h"

namespace {

using nerit::ui::Application;

constexpr int kExchanges = 54;
constexpr int kFrameBytes = 22;
constexpr double kWireBoundS = 2 * kExchanges * kFrameBytes * 10 / 19200.0;
constexpr double kRatioTarget = 1.05;       // whole transfer against the wire bound, at most
constexpr double kProgramTargetMs = 0.3;    // per exchange, at most
constexpr double kSimTargetMs = 0.5;        // per exchange, under
constexpr double kIdleTargetPercent = 0.5;  // of one core, under

using nerit::bench::PacedLine;
using nerit::bench::RecordingDialogs;
using nerit::bench::SimProcess;

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

double mean(const std::vector<double>& v) {
  double sum = 0;
  for (double x : v) sum += x;
  return v.empty() ? 0 : sum / static_cast<double>(v.size());
}

double median(std::vector<double> v) {
  if (v.empty()) return 0;
  std::sort(v.begin(), v.end());
  const std::size_t n = v.size();
  return n % 2 == 1 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
}

// One transfer's figures: means per exchange, and the medians of the turns.
struct Transfer {
  double seconds = 0;
  int replies = 0;
  bool stalled = false;  // ended by the watchdog
  double program_ms = 0, sim_ms = 0, line_ms = 0;
  double program_median_ms = 0, sim_median_ms = 0;

  double ratio() const { return seconds / kWireBoundS; }
  double beyond_ms() const { return (seconds - kWireBoundS) * 1000 / kExchanges; }
};

// The program waits for each reply without a time limit; a reply lost on the way would hold the
// benchmark for ever.
constexpr int kStalledMs = 20000;

Transfer run_transfer(Program& p, PacedLine& line, const std::function<void()>& handler) {
  line.take_turns();
  Transfer t;
  const int before = p.log_lines();
  QTimer watchdog;
  watchdog.setSingleShot(true);
  QObject::connect(&watchdog, &QTimer::timeout, [&] {
    t.stalled = true;
    p.app->main_window().close();  // ends the wait, as the user closing the window would
  });
  watchdog.start(kStalledMs);
  QElapsedTimer clock;
  clock.start();
  p.app->run(handler);
  watchdog.stop();
  t.seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
  t.replies = p.log_lines() - before;
  const PacedLine::Turns turns = line.take_turns();
  t.program_ms = mean(turns.program);
  t.sim_ms = mean(turns.controller);
  t.line_ms = mean(turns.line);
  t.program_median_ms = median(turns.program);
  t.sim_median_ms = median(turns.controller);
  return t;
}

// Best (lowest) and median of one figure over the runs.
struct Spread {
  double best = 0, median = 0;
};

Spread spread(const std::vector<Transfer>& runs, double (*figure)(const Transfer&)) {
  std::vector<double> v;
  for (const Transfer& t : runs) v.push_back(figure(t));
  return {*std::min_element(v.begin(), v.end()), median(v)};
}

const char* verdict(bool met) {
  return met ? "met" : "MISSED";
}

// Prints each run and the best / median with the targets; true when every median meets its
// target.
bool print_transfer(const char* name, const std::vector<Transfer>& runs) {
  std::printf("%s, %d exchanges a run:\n", name, kExchanges);
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const Transfer& t = runs[i];
    std::printf(
        "  run %zu: %.4f s for %d replies, ratio %.3f; per exchange beyond the wire time %.2f ms: "
        "program %.2f (median %.2f), nerit-sim %.2f (median %.2f), line %.2f\n",
        i + 1, t.seconds, t.replies, t.ratio(), t.beyond_ms(), t.program_ms, t.program_median_ms,
        t.sim_ms, t.sim_median_ms, t.line_ms);
  }
  const Spread ratio = spread(runs, [](const Transfer& t) { return t.ratio(); });
  const Spread seconds = spread(runs, [](const Transfer& t) { return t.seconds; });
  const Spread program = spread(runs, [](const Transfer& t) { return t.program_ms; });
  const Spread sim = spread(runs, [](const Transfer& t) { return t.sim_ms; });
  const Spread line = spread(runs, [](const Transfer& t) { return t.line_ms; });
  std::printf("  best / median of the %zu runs (means per exchange):\n", runs.size());
  std::printf(
      "    whole transfer %.4f / %.4f s = %.3f / %.3f x the wire bound of %.4f s "
      "(target <= %.2f x): %s\n",
      seconds.best, seconds.median, ratio.best, ratio.median, kWireBoundS, kRatioTarget,
      verdict(ratio.median <= kRatioTarget));
  std::printf(
      "    program, reply in to next request out: %.3f / %.3f ms an exchange "
      "(target <= %.1f ms): %s\n",
      program.best, program.median, kProgramTargetMs, verdict(program.median <= kProgramTargetMs));
  std::printf(
      "    nerit-sim, request's last byte in to reply's first byte out, beyond the reply's wire "
      "time: %.3f / %.3f ms an exchange (target < %.1f ms): %s\n",
      sim.best, sim.median, kSimTargetMs, verdict(sim.median < kSimTargetMs));
  std::printf("    line, late with a request's last byte: %.3f / %.3f ms an exchange (no target)\n",
              line.best, line.median);
  return ratio.median <= kRatioTarget && program.median <= kProgramTargetMs &&
         sim.median < kSimTargetMs;
}

enum class Outcome { kMet, kMissed, kFailed };

Outcome measure_transfers(const QString& folder, int run_count) {
  SimProcess sim({"--pacing"});
  if (sim.device().empty()) {
    std::fprintf(stderr, "nerit-sim did not start\n");
    return Outcome::kFailed;
  }
  PacedLine line(sim.device(), kFrameBytes);
  if (line.device().empty()) {
    std::fprintf(stderr, "no paced line\n");
    return Outcome::kFailed;
  }
  Program p(line.device(), folder);
  if (!p.connect()) {
    std::fprintf(stderr, "not connected\n");
    return Outcome::kFailed;
  }
  std::printf("line: %s\n", line.realtime()
                                ? "real-time priority"
                                : "normal priority (its wake-ups count against the program)");
  auto& form1 = p.app->program().form1;
  std::vector<Transfer> reads, writes;
  // False when the transfer stalled.
  auto transfer = [&](std::vector<Transfer>& runs, const char* name,
                      const std::function<void()>& handler) {
    runs.push_back(run_transfer(p, line, handler));
    if (!runs.back().stalled) return true;
    std::fprintf(stderr, "%s did not end within %d s (%d log lines)\n", name, kStalledMs / 1000,
                 runs.back().replies);
    return false;
  };
  for (int i = 0; i < run_count; ++i) {
    if (!transfer(reads, "Read Data from Unit", [&] { form1.session.Command12_Click(); }) ||
        !transfer(writes, "Write Data to Unit", [&] { form1.transfers.Command9_Click(); }))
      return Outcome::kFailed;
  }
  bool met = print_transfer("(a) Read Data from Unit", reads);
  met = print_transfer("(b) Write Data to Unit", writes) && met;
  for (const std::string& d : p.dialogs.shown)
    if (d.rfind("Online:", 0) != 0) std::printf("  dialog: %s\n", d.c_str());
  for (const auto* runs : {&reads, &writes})
    for (const Transfer& t : *runs)
      if (t.replies != kExchanges) return Outcome::kFailed;
  return met ? Outcome::kMet : Outcome::kMissed;
}

Outcome measure_idle(const QString& folder) {
  // Answers the connect request, then nothing more.
  SimProcess sim({"--pacing", "--silent-after", "1"});
  if (sim.device().empty()) {
    std::fprintf(stderr, "nerit-sim did not start\n");
    return Outcome::kFailed;
  }
  Program p(sim.device(), folder);
  if (!p.connect()) {
    std::fprintf(stderr, "not connected\n");
    return Outcome::kFailed;
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
  if (wall_s <= 0) return Outcome::kFailed;
  const double percent = 100 * cpu_used / wall_s;
  std::printf(
      "(c) waiting on a silent controller: %.3f s CPU in %.2f s = %.3f %% of one core "
      "(target < %.1f %%): %s; %d log lines meanwhile\n",
      cpu_used, wall_s, percent, kIdleTargetPercent, verdict(percent < kIdleTargetPercent),
      p.log_lines() - before);
  return percent < kIdleTargetPercent ? Outcome::kMet : Outcome::kMissed;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication qt(argc, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  int run_count = 3;
  const QStringList args = QCoreApplication::arguments();
  for (int i = 1; i < args.size(); ++i) {
    bool ok = false;
    if (args[i] == "--runs" && i + 1 < args.size()) run_count = args[++i].toInt(&ok);
    if (!ok || run_count < 1) {
      std::fprintf(stderr, "usage: nerit-link-bench [--runs N]\n");
      return 1;
    }
  }
  QTemporaryDir folder;
  const Outcome transfers = measure_transfers(folder.path(), run_count);
  const Outcome idle = measure_idle(folder.path());
  if (transfers == Outcome::kFailed || idle == Outcome::kFailed) return 1;
  return transfers == Outcome::kMet && idle == Outcome::kMet ? 0 : 2;
}
