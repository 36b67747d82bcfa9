// nerit-sim: a virtual Nerit controller on a pseudo-terminal.
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

#include "sim/cli_options.h"
#include "sim/pty_server.h"

namespace {

volatile std::sig_atomic_t g_stop = 0;

void on_signal(int) {
  g_stop = 1;
}

void install_handlers() {
  struct sigaction sa {};
  sa.sa_handler = on_signal;
  sigemptyset(&sa.sa_mask);
  sa.sa_flags = 0;  // no restart: poll() returns at once
  sigaction(SIGINT, &sa, nullptr);
  sigaction(SIGTERM, &sa, nullptr);
}

// Prints a problem once, when it first differs from the one printed before.
void report_change(std::string& reported, const std::string& now) {
  if (now == reported) return;
  reported = now;
  if (!now.empty()) std::fprintf(stderr, "nerit-sim: %s\n", now.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  using namespace nerit::sim;
  std::string error;
  const auto cl = parse_command_line(std::vector<std::string>(argv + 1, argv + argc), error);
  if (!cl) {
    std::fprintf(stderr, "nerit-sim: %s\n%s", error.c_str(), usage_text().c_str());
    return 2;
  }
  if (cl->version) {
    std::puts("nerit-sim " NERIT_VERSION);
    return 0;
  }
  if (cl->help) {
    std::fputs(usage_text().c_str(), stdout);
    return 0;
  }
  PtyServer server(cl->options);
  if (!server.controller().state_error().empty()) {
    std::fprintf(stderr, "nerit-sim: %s; starting from the %s tune\n",
                 server.controller().state_error().c_str(),
                 cl->options.demo_tune ? "demo" : "default");
  }
  if (!server.open()) {
    std::fprintf(stderr, "nerit-sim: %s\n", server.error().c_str());
    return 1;
  }
  install_handlers();
#ifdef __linux__
  // Paced bytes are due to the microsecond; the default slack would add up to 50 us a wait.
  prctl(PR_SET_TIMERSLACK, 1UL);
#endif
  std::printf("%s\n", server.slave_path().c_str());
  std::fflush(stdout);

  std::string reported_state_error;
  std::string reported_image_error;
  int reported_images = 0;
  // The bound on each wait keeps a signal that lands just before poll() from being missed long.
  while (!g_stop && server.pump(100)) {
    const Controller& controller = server.controller();
    report_change(reported_state_error, controller.state_error());
    report_change(reported_image_error, controller.image_file_error());
    if (controller.boot_loader().images_flashed() != reported_images) {
      reported_images = controller.boot_loader().images_flashed();
      const std::string& file = cl->options.flash_image_file;
      const bool kept = !file.empty() && controller.image_file_error().empty();
      std::fprintf(stderr, "nerit-sim: firmware image %d received%s%s\n", reported_images,
                   kept ? ", written to " : "", kept ? file.c_str() : "");
    }
  }
  if (server.controller().vanished()) std::fprintf(stderr, "nerit-sim: line closed\n");
  return 0;
}
