#pragma once
// The virtual controller inside the program (--simulate): a PtyServer paced at the wire rate,
// served from the Qt event loop. The program opens slave_path() like any serial device.
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <string>

#include "sim/options.h"
#include "sim/pty_server.h"

namespace nerit::ui {

class Application;

// Paced at 19200 baud, starting from the demo tune; the permanent state ("Make Permanent") is
// kept in `program_folder`/Simulator.state.
sim::Options simulator_options(const std::filesystem::path& program_folder);

// The log line after start-up when the MPX4250 pressure tables were written into
// `program_folder` for the virtual controller.
void log_simulator_pressure_tables(Application& program,
                                   const std::filesystem::path& program_folder);

class Simulator : public QObject {
 public:
  explicit Simulator(sim::Options options, QObject* parent = nullptr);
  ~Simulator() override;

  // Opens the pseudo-terminal and starts serving; false with error() when it cannot.
  bool start();
  const std::string& error() const { return server_.error(); }
  const std::string& slave_path() const { return server_.slave_path(); }
  // A problem with the state file, empty when there was none.
  const std::string& state_error() { return server_.controller().state_error(); }

  sim::Controller& controller() { return server_.controller(); }
  // How often the event loop woke the server (input or timer), to see that it idles.
  long long wakeups() const { return wakeups_; }

 private:
  void readable();
  void timeout();
  void rearm();

  sim::PtyServer server_;
  std::unique_ptr<QSocketNotifier> notifier_;
  QTimer timer_;
  long long wakeups_ = 0;
};

}  // namespace nerit::ui
