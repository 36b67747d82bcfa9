#include "ui/simulator.h"

#include "ui/application.h"

namespace nerit::ui {

sim::Options simulator_options(const std::filesystem::path& program_folder) {
  sim::Options options;
  options.paced = true;
  options.state_file = (program_folder / "Simulator.state").string();
  options.demo_tune = true;
  return options;
}

void log_simulator_pressure_tables(Application& program,
                                   const std::filesystem::path& program_folder) {
  program.run([&] {
    program.program().form1.wire.log(" -> No pressure tables in " + program_folder.string() +
                                     ": wrote the MPX4250 calibration for the virtual controller");
  });
}

Simulator::Simulator(sim::Options options, QObject* parent)
    : QObject(parent), server_(std::move(options)) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);  // paced bytes are due to the millisecond
  connect(&timer_, &QTimer::timeout, this, [this] { timeout(); });
}

Simulator::~Simulator() {
  notifier_.reset();  // before the server closes the descriptor it watches
  timer_.stop();
}

bool Simulator::start() {
  notifier_.reset();
  if (!server_.open()) return false;
  notifier_ = std::make_unique<QSocketNotifier>(server_.master_fd(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { readable(); });
  rearm();
  return true;
}

void Simulator::readable() {
  ++wakeups_;
  server_.on_readable();
  rearm();
}

void Simulator::timeout() {
  ++wakeups_;
  server_.on_timer();
  rearm();
}

void Simulator::rearm() {
  if (!server_.is_open()) {
    // The controller has vanished: nothing more to watch.
    if (notifier_) notifier_->setEnabled(false);
    timer_.stop();
    return;
  }
  const int wait = server_.next_timeout_ms();
  if (wait < 0)
    timer_.stop();  // nothing scheduled: only input wakes the server
  else
    timer_.start(wait);
}

}  // namespace nerit::ui
