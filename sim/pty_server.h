#pragma once
// Serves a Controller on a pseudo-terminal (POSIX). The program opens slave_path() as its
// serial port. Usable from any event loop: watch master_fd() for reading and call
// on_readable(); arm a timer for next_timeout() (or next_timeout_ms() where timers count whole
// milliseconds) and call on_timer(); both re-arm the timer. Controller time is milliseconds
// since the server was made, on the monotonic clock.
#include <chrono>
#include <optional>
#include <string>

#include "sim/controller.h"
#include "sim/options.h"

namespace nerit::sim {

class PtyServer {
 public:
  explicit PtyServer(Options options);
  ~PtyServer();
  PtyServer(const PtyServer&) = delete;
  PtyServer& operator=(const PtyServer&) = delete;

  // Creates the pseudo-terminal with a raw slave; false with error() when that fails.
  bool open();
  void close();
  bool is_open() const { return master_ >= 0; }
  const std::string& error() const { return error_; }
  const std::string& slave_path() const { return slave_path_; }
  int master_fd() const { return master_; }

  // Reads what the program wrote, then sends what is due.
  void on_readable();
  // Sends what is due; closes the pty once the controller has vanished.
  void on_timer();
  // Time until on_timer() has work, to the nanosecond; empty when nothing is scheduled.
  std::optional<std::chrono::nanoseconds> next_timeout() const;
  // The same in milliseconds, rounded up; -1 when nothing is scheduled.
  int next_timeout_ms() const;

  // One step of a loop of its own: waits up to max_wait_ms for input or the next due time,
  // to the nanosecond. False once the pty is closed.
  bool pump(int max_wait_ms);

  Controller& controller() { return controller_; }
  double now_ms() const;

 private:
  void write_out(const std::string& bytes);

  Controller controller_;
  std::chrono::steady_clock::time_point epoch_;
  int master_ = -1;
  int slave_ = -1;  // held open so the master never sees a hang-up between program sessions
  std::string slave_path_;
  std::string error_;
};

// The wait from now_ms until due_ms, rounded up to the next nanosecond so that a wake-up is
// never early; zero when due_ms has passed.
std::chrono::nanoseconds wait_until(double due_ms, double now_ms);

}  // namespace nerit::sim
