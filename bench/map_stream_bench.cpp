// nerit-map-bench: the main window under the status stream with everything on. nerit-sim
// streams status frames back to back at 19200 baud (~87 a second) on a pseudo-terminal; the
// program has "Realtimedata" ticked (live table and chart), "Highlight" and "Automap" ticked, and
// records a data log, so every frame updates the live grid, the log list, the operating cell,
// the airflow map, the chart and the CSV file. A relay thread between the two counts what the
// controller sent.
//
// Over the measured seconds:
//   frames handled per second against frames sent (target: within 2 %),
//   rows in the data log against status frames handled while it recorded (target: none
//   lost; with frames handled against frames sent this covers the wire to the file),
//   event-loop latency: delay of a 0-ms timer posted every 10 ms, and the lateness of the
//   10-ms timer itself (target: p99 under 30 ms),
//   CPU of the window's thread as a share of one core (target: under 5 %).
//
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise (xcb under Xvfb paints
// at the real window size: `xvfb-run -s "-screen 0 1600x1000x24" env QT_QPA_PLATFORM=xcb ...`).
// `--seconds N` sets the measured time (default 60); `--size WxH` the window (default 1600x1000).
#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QListWidget>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bench/bench_support.h"
#include "ui/application.h"

namespace {

using nerit::ui::Application;

constexpr double kFrameMs = 22 * 10 * 1000 / 19200.0;  // one frame on the wire

using nerit::bench::cpu_seconds;
using nerit::bench::RecordingDialogs;
using nerit::bench::SimProcess;

// Passes bytes both ways between the program's pseudo-terminal and nerit-sim's, unchanged and
// at once, and counts the controller's.
class CountingRelay {
 public:
  explicit CountingRelay(const std::string& controller_device) : ends_(controller_device) {
    if (!ends_.ok()) return;
    thread_ = std::thread([this] { run(); });
  }
  ~CountingRelay() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
  }
  const std::string& device() const { return ends_.device; }
  std::uint64_t controller_bytes() const { return from_controller_; }

 private:
  void run() {
    char buf[4096];
    while (!stop_) {
      const auto ready = ends_.wait_readable(std::chrono::milliseconds(50));
      if (ready.program) {
        const ssize_t n = ::read(ends_.program_side, buf, sizeof buf);
        if (n > 0 && ::write(ends_.controller, buf, static_cast<std::size_t>(n)) < 0) return;
      }
      if (ready.controller) {
        const ssize_t n = ::read(ends_.controller, buf, sizeof buf);
        if (n == 0 || (n < 0 && errno != EAGAIN && errno != EINTR)) return;
        if (n < 0) continue;
        if (::write(ends_.program_side, buf, static_cast<std::size_t>(n)) < 0) return;
        from_controller_ += static_cast<std::uint64_t>(n);
      }
    }
  }

  nerit::bench::RelayEnds ends_;
  std::atomic<bool> stop_{false};
  std::atomic<std::uint64_t> from_controller_{0};
  std::thread thread_;
};

double percentile(std::vector<double> v, double p) {
  if (v.empty()) return 0;
  std::sort(v.begin(), v.end());
  const auto i = static_cast<std::size_t>(p / 100 * static_cast<double>(v.size() - 1));
  return v[i];
}

void run_for(int ms) {
  QEventLoop loop;
  QTimer::singleShot(ms, &loop, &QEventLoop::quit);
  loop.exec();
}

int count_lines(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return static_cast<int>(std::count(std::istreambuf_iterator<char>(in), {}, '\n'));
}

int measure(const QString& folder, int seconds, QSize size) {
  // A beat a hair shorter than a frame keeps the line busy: frames go out back to back.
  SimProcess sim({"--pacing", "--interval", QString::number(kFrameMs - 0.001, 'f', 4)});
  if (sim.device().empty()) {
    std::fprintf(stderr, "nerit-sim did not start\n");
    return 1;
  }
  CountingRelay relay(sim.device());
  if (relay.device().empty()) {
    std::fprintf(stderr, "no relay\n");
    return 1;
  }
  RecordingDialogs dialogs;
  Application::Options options;
  options.program_folder = folder.toStdString();
  options.show_splash = false;
  options.dialogs = &dialogs;
  options.ports = {relay.device()};
  Application app(options);
  app.start();
  app.main_window().resize(size);
  nerit::Form1& f = app.program().form1;
  app.run([&] { f.session.Command1_Click(); });
  if (f.vars.connected != 1) {
    std::fprintf(stderr, "not connected\n");
    return 1;
  }

  // As the user would: a load type, then Highlight and Automap.
  app.run([&] {
    f.c.Combo1.select(0);
    f.axes.Combo1_Click();
  });
  const auto& boxes = app.main_window().widgets().check;
  boxes.at(f.map_controls.Check2.caption)->click();
  boxes.at(f.map_controls.Check5.caption)->click();

  std::uint64_t handled = 0, handled_logging = 0;
  auto logged = f.replies.live_row;
  f.replies.live_row = [&, logged](const nerit::LiveRow& row) {
    ++handled;
    if (f.c.logging == 1) ++handled_logging;
    if (logged) logged(row);
  };
  boxes.at(f.c.Check1.caption)->click();  // the stream, the chart
  if (!f.chart.running()) {
    std::fprintf(stderr, "\"Realtimedata\" did not start the stream\n");
    return 1;
  }
  run_for(1000);  // the stream settles
  app.run([&] { f.data_log.lstart_Click(); });
  if (!f.data_log.recording()) {
    std::fprintf(stderr, "the data log did not start\n");
    return 1;
  }

  QElapsedTimer clock;
  std::vector<double> post_delay_ms, tick_late_ms;
  qint64 last_tick = -1;
  QTimer probe;
  probe.setTimerType(Qt::PreciseTimer);
  probe.setInterval(10);
  QObject::connect(&probe, &QTimer::timeout, [&] {
    const qint64 now = clock.nsecsElapsed();
    if (last_tick >= 0) tick_late_ms.push_back(static_cast<double>(now - last_tick) / 1e6 - 10);
    last_tick = now;
    QTimer::singleShot(0, &probe, [&, now] {
      post_delay_ms.push_back(static_cast<double>(clock.nsecsElapsed() - now) / 1e6);
    });
  });

  const std::uint64_t handled_before = handled;
  const std::uint64_t bytes_before = relay.controller_bytes();
  const int log_before = f.c.List1.list_count();
  const double cpu_thread = cpu_seconds(RUSAGE_THREAD), cpu_process = cpu_seconds(RUSAGE_SELF);
  clock.start();
  probe.start();
  run_for(seconds * 1000);
  probe.stop();
  const double wall = static_cast<double>(clock.nsecsElapsed()) / 1e9;
  const double thread_share = (cpu_seconds(RUSAGE_THREAD) - cpu_thread) / wall;
  const double process_share = (cpu_seconds(RUSAGE_SELF) - cpu_process) / wall;
  const double sent = static_cast<double>(relay.controller_bytes() - bytes_before) / 22.0;
  const double got = static_cast<double>(handled - handled_before);
  boxes.at(f.c.Check1.caption)->click();
  run_for(300);  // frames still on the way are logged too
  const std::filesystem::path log_file = f.data_log.file();
  app.run([&] { f.data_log.lstop_Click(); });
  const auto frames_while_logging = static_cast<long long>(handled_logging);
  const long long lost = frames_while_logging - (count_lines(log_file) - 1);

  const QWidget& window = app.main_window();
  std::printf("window %dx%d on %s, %.2f s measured\n", window.width(), window.height(),
              qPrintable(QGuiApplication::platformName()), wall);
  std::printf("status frames: sent %.1f/s, handled %.1f/s = %.2f %% (target >= 98 %%)\n",
              sent / wall, got / wall, sent > 0 ? 100 * got / sent : 0.0);
  std::printf("0-ms timer posted every 10 ms: p99 %.2f ms, worst %.2f ms (target p99 < 30 ms)\n",
              percentile(post_delay_ms, 99), percentile(post_delay_ms, 100));
  std::printf("10-ms timer lateness: p99 %.2f ms, worst %.2f ms\n", percentile(tick_late_ms, 99),
              percentile(tick_late_ms, 100));
  std::printf("data log: %lld frames handled while recording, %lld lost (target 0)\n",
              frames_while_logging, lost);
  std::printf("CPU: window thread %.1f %%, whole process %.1f %% of one core (target < 5 %%)\n",
              100 * thread_share, 100 * process_share);
  std::printf("log: %d lines added, %d in all\n", f.c.List1.list_count() - log_before,
              f.c.List1.list_count());
  const bool ok = sent > 0 && got >= 0.98 * sent && lost == 0 &&
                  percentile(post_delay_ms, 99) < 30 && thread_share < 0.05;
  return ok ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  int seconds = 60;
  QSize size(1600, 1000);
  for (int i = 1; i + 1 < argc; ++i) {
    if (std::strcmp(argv[i], "--seconds") == 0) seconds = std::max(1, std::atoi(argv[i + 1]));
    int w = 0, h = 0;
    if (std::strcmp(argv[i], "--size") == 0 && std::sscanf(argv[i + 1], "%dx%d", &w, &h) == 2)
      size = QSize(w, h);
  }
  QApplication qt(argc, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QTemporaryDir folder;
  return measure(folder.path(), seconds, size);
}
