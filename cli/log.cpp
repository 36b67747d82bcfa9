#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QLocale>
#include <csignal>
#include <fstream>
#include <ostream>
#include <variant>

#include "cli/cli_options.h"
#include "cli/command.h"
#include "cli/controller_line.h"
#include "files/data_log_format.h"
#include "link/memory_map.h"
#include "link/settings_blocks.h"
#include "live/status_row.h"
#include "shell/pressure_tables.h"

namespace nerit::cli {

namespace {

volatile std::sig_atomic_t stop_requested = 0;

void request_stop(int) {
  stop_requested = 1;
}

// The stream goes off however the log ends, so the controller is left as it was found.
struct StreamOn {
  explicit StreamOn(ControllerLine& l) : line(l) { line.send(stream_frame(1)); }
  ~StreamOn() { line.send(stream_frame(0)); }
  StreamOn(const StreamOn&) = delete;
  StreamOn& operator=(const StreamOn&) = delete;
  ControllerLine& line;
};

StatusScales scales_of(ControllerLine& line, const PressureTable& pressure) {
  const SettingsBlockA a = read_settings_block_a(line.read_block(kSettingsBlockA));
  const SettingsBlockB b = read_settings_block_b(line.read_block(kSettingsBlockB));
  StatusScales k;
  k.rpmfaktor = rpmfaktor_of_cylinders(b.zylinder);
  k.tps_min = a.tps_min;
  k.tps_max = a.tps_max;
  k.pressure = &pressure;
  return k;
}

// Ctrl-C and a kill end the log between two frames instead of ending the program.
struct StopOnSignals {
  StopOnSignals() {
    stop_requested = 0;
    std::signal(SIGINT, request_stop);
    std::signal(SIGTERM, request_stop);
  }
  ~StopOnSignals() {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
  }
  StopOnSignals(const StopOnSignals&) = delete;
  StopOnSignals& operator=(const StopOnSignals&) = delete;
};

}  // namespace

int run_log(const Args& args, std::ostream& out, std::ostream& err) {
  std::set<std::string> valued = kLineOptions;
  valued.insert({"--seconds", "--frames"});
  const ParsedArgs a = parse_args(args, valued, {});
  if (a.positional.size() > 1) throw UsageError("at most one FILE.csv");
  const int seconds = a.number("--seconds", 0, 1);
  const int frames = a.number("--frames", 0, 1);
  const int timeout_ms = a.number("--timeout", kDefaultTimeoutMs, 1);

  PressureTable pressure{};
  if (const auto raw = PressureFiles(data_folder_of(a)).raw())
    read_pressure_raw(*raw, pressure);
  else
    err << "no Pressure.raw in " << data_folder_of(a).string() << ": boost shows -100 kPa\n";

  std::ofstream file;
  if (!a.positional.empty()) {
    file.open(a.positional[0], std::ios::out | std::ios::trunc | std::ios::binary);
    if (!file) throw CliFailure(kBadFile, "cannot create " + a.positional[0]);
  }
  std::ostream& csv = a.positional.empty() ? out : file;

  ControllerLine line(port_of(a), timeout_ms, err);
  err << "connected: " << line.connect() << "\n";
  const StatusScales scales = scales_of(line, pressure);
  const char separator = QLocale::system().decimalPoint().at(0).toLatin1();

  const StopOnSignals stop_on_signals;
  csv << kDataLogHeader << kDataLogLineEnd << std::flush;
  long long rows = 0;
  {
    StreamOn stream(line);
    QElapsedTimer running;
    running.start();
    QDeadlineTimer silent(timeout_ms);
    LiveRow row;
    while (!stop_requested && (frames == 0 || rows < frames) &&
           (seconds == 0 || running.elapsed() < seconds * 1000LL)) {
      if (silent.hasExpired())
        throw CliFailure(kTimeOut, "the controller sent no status for " +
                                       std::to_string(timeout_ms) + " ms after " +
                                       std::to_string(rows) + " rows");
      // Short waits, so that Ctrl-C and the end of --seconds are seen at once.
      const auto frame = line.line().next_frame(100);
      if (!frame) continue;
      const auto reply = decode_reply(*frame);
      const auto* status = reply ? std::get_if<StatusReply>(&*reply) : nullptr;
      if (!status) continue;
      silent.setRemainingTime(timeout_ms);
      row = status_row(*status, scales, row);
      const DataLogValues values{row.drehzahl,       row.inj_in_us, row.inj_out_us,
                                 row.adjust_percent, row.boost_kpa, row.tps_in,
                                 row.airflow_out_hz};
      csv << data_log_row(values, separator) << kDataLogLineEnd << std::flush;
      if (!csv) throw CliFailure(kBadFile, "cannot write the log (disk full?)");
      ++rows;
    }
  }
  err << rows << " rows\n";
  return kOk;
}

}  // namespace nerit::cli
