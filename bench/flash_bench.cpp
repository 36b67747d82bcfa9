// nerit-flash-bench: a whole firmware transfer from the firmware window to nerit-sim's boot
// loader, paced at 19200 baud both ways on a pseudo-terminal. The program side is the real one
// (Qt serial port, the firmware window and its refreshes) on the offscreen platform.
//
//   wall time of "Update - Recovery", less the loader's programming time (1016 blocks x
//   kBlockProgrammingMs, reported apart), against the wire bound of 130048 image bytes and 1016
//   acknowledgements x 10 bits / 19200 baud = 68.26 s (target: at most 1.03 x);
//   CPU time of the window's thread during the transfer, as a share of one core (target: < 5 %);
//   how late a 20 ms timer of the window's thread fires during the transfer (99th percentile,
//   target: < 30 ms), so the window stays responsive;
//   the image nerit-sim stored, compared byte for byte with the file and erased flash after it.
//
// Exit status: 0 when every target is met, 2 when one is missed, 1 when nothing was measured.
#include <QApplication>
#include <QElapsedTimer>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <random>
#include <vector>

#include "bench/bench_support.h"
#include "bench/paced_line.h"
#include "firmware/firmware_image.h"
#include "shell/data_files.h"
#include "ui/application.h"

namespace {

using nerit::bench::cpu_seconds;
using nerit::bench::PacedLine;
using nerit::bench::RecordingDialogs;
using nerit::bench::SimProcess;

constexpr double kBlockProgrammingMs = 5;
constexpr double kWireBoundS = (nerit::kTransferBytes + nerit::kBlocks) * 10 / 19200.0;
constexpr double kProgrammingS = nerit::kBlocks * kBlockProgrammingMs / 1000;
constexpr double kRatioTarget = 1.03;
constexpr double kCpuTargetPercent = 5;
constexpr double kLatenessTargetMs = 30;
constexpr int kProbeMs = 20;
constexpr int kStalledMs = 150000;

// Answers the file dialog with the image.
class FlashDialogs : public RecordingDialogs {
 public:
  std::filesystem::path image;
  std::filesystem::path file_dialog(const nerit::FileDialogRequest&) override { return image; }
};

double percentile(std::vector<double> v, double p) {
  if (v.empty()) return 0;
  std::sort(v.begin(), v.end());
  return v[static_cast<std::size_t>(p * static_cast<double>(v.size() - 1))];
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication qt(argc, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QTemporaryDir folder;
  const std::filesystem::path dir = folder.path().toStdString();

  // 100,000 bytes of image, the rest of the transfer erased flash.
  std::vector<std::uint8_t> image(100000);
  std::mt19937 random(7);
  for (auto& b : image) b = static_cast<std::uint8_t>(random());
  nerit::write_file_bytes(dir / "firmware.bin", image);
  const std::filesystem::path stored = dir / "flashed.bin";

  SimProcess sim({"--pacing", "--boot-loader", "--block-programming-ms",
                  QString::number(kBlockProgrammingMs), "--flash-image",
                  QString::fromStdString(stored.string())});
  if (sim.device().empty()) {
    std::fprintf(stderr, "nerit-sim did not start\n");
    return 1;
  }
  PacedLine line(sim.device(), 1);
  if (line.device().empty()) {
    std::fprintf(stderr, "no paced line\n");
    return 1;
  }

  FlashDialogs dialogs;
  dialogs.image = dir / "firmware.bin";
  nerit::ui::Application::Options options;
  options.program_folder = dir;
  options.show_splash = false;
  options.dialogs = &dialogs;
  options.ports = {line.device()};
  nerit::ui::Application app(options);
  app.start();
  nerit::Form2& form2 = app.program().form2;
  app.program().form1.vars.comport = 1;  // the port the main window hands over
  app.windows().show(nerit::FormId::Form2);
  app.run([&] { form2.Command1_Click(); });
  if (!form2.port().port_open() || form2.file_length() != 100000) {
    std::fprintf(stderr, "the firmware window has no port or no image\n");
    return 1;
  }

  std::vector<double> lateness;
  QElapsedTimer since_tick;
  QTimer probe;
  probe.setTimerType(Qt::PreciseTimer);
  QObject::connect(&probe, &QTimer::timeout, [&] {
    lateness.push_back(
        std::max(0.0, static_cast<double>(since_tick.nsecsElapsed()) / 1e6 - kProbeMs));
    since_tick.restart();
  });
  bool stalled = false;
  QTimer::singleShot(kStalledMs, &app, [&] {
    stalled = true;
    form2.Command3_Click();
  });

  std::printf("line: %s\n", line.realtime() ? "real-time priority" : "normal priority");
  since_tick.start();
  probe.start(kProbeMs);
  QElapsedTimer wall;
  const double cpu_start = cpu_seconds(RUSAGE_THREAD);
  wall.start();
  app.run([&] { form2.Command5_Click(); });
  const double seconds = static_cast<double>(wall.nsecsElapsed()) / 1e9;
  const double cpu = cpu_seconds(RUSAGE_THREAD) - cpu_start;
  probe.stop();
  if (stalled) {
    std::fprintf(stderr, "the transfer did not end within %d s\n", kStalledMs / 1000);
    return 1;
  }

  // The loader writes the image once its last block is in.
  std::vector<std::uint8_t> expected = image;
  expected.resize(nerit::kTransferBytes, 0xFF);
  std::optional<std::vector<std::uint8_t>> flashed;
  for (int i = 0; i < 50 && !(flashed = nerit::read_file_bytes(stored)); ++i) QThread::msleep(20);

  const double ratio = (seconds - kProgrammingS) / kWireBoundS;
  const double cpu_percent = 100 * cpu / seconds;
  const double p99 = percentile(lateness, 0.99);
  const bool same = flashed && *flashed == expected;
  std::printf("transfer: %.2f s, of which the loader's programming %.2f s (1016 x %.0f ms)\n",
              seconds, kProgrammingS, kBlockProgrammingMs);
  std::printf("  without programming: %.2f s = %.4f x the wire bound %.2f s (target <= %.2f)\n",
              seconds - kProgrammingS, ratio, kWireBoundS, kRatioTarget);
  std::printf("window thread CPU: %.2f s = %.2f %% of a core (target < %.0f %%)\n", cpu,
              cpu_percent, kCpuTargetPercent);
  std::printf("20 ms timer lateness: p99 %.2f ms, max %.2f ms over %zu ticks (target p99 < %.0f)\n",
              p99, percentile(lateness, 1.0), lateness.size(), kLatenessTargetMs);
  std::printf("stored image: %s\n", same ? "identical (130048 bytes)" : "DIFFERS or missing");
  std::printf("status: %s, %s\n", form2.c.Label1.caption.c_str(), form2.c.Label2.caption.c_str());
  if (!same) return 1;
  return ratio <= kRatioTarget && cpu_percent < kCpuTargetPercent && p99 < kLatenessTargetMs ? 0
                                                                                             : 2;
}
