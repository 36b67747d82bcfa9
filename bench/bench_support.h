#pragma once
// What the benchmarks share: dialogs that answer by themselves, nerit-sim as a child process,
// the pseudo-terminal pair a relay thread sits on, and the CPU time used so far.
#include <fcntl.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/select.h>
#include <termios.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QProcess>
#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "shell/platform.h"

namespace nerit::bench {

// Answers No to every question (so connecting does not read the tune) and keeps the texts.
class RecordingDialogs : public Dialogs {
 public:
  using Dialogs::message_box;
  MsgAnswer message_box(const MessageBoxRequest& request) override {
    shown.push_back(request.title + ": " + request.text);
    return request.buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Ok;
  }
  void notify(const MessageBoxRequest& request) override {
    shown.push_back(request.title + ": " + request.text);
  }
  std::filesystem::path file_dialog(const FileDialogRequest&) override { return {}; }
  std::string input_box(const std::string&, const std::string&, const std::string&) override {
    return {};
  }
  std::vector<std::string> shown;
};

// nerit-sim with the given arguments; device() is the pseudo-terminal it serves.
class SimProcess {
 public:
  explicit SimProcess(const QStringList& args) {
    process_.setProgram(QStringLiteral(NERIT_SIM_PATH));
    process_.setArguments(args);
    process_.start();
    if (!process_.waitForStarted(5000)) return;
    QDeadlineTimer deadline(5000);
    while (!process_.canReadLine() && !deadline.hasExpired()) process_.waitForReadyRead(100);
    if (process_.canReadLine())
      device_ = QString::fromLocal8Bit(process_.readLine()).trimmed().toStdString();
  }
  ~SimProcess() {
    process_.terminate();
    if (!process_.waitForFinished(3000)) process_.kill();
  }
  const std::string& device() const { return device_; }

 private:
  QProcess process_;
  std::string device_;
};

// A new pseudo-terminal for the program (device) and nerit-sim's opened beside it, both raw;
// a relay thread moves bytes between program_side and controller.
struct RelayEnds {
  explicit RelayEnds(const std::string& controller_device) {
    char name[256] = {};
    if (openpty(&program_side, &held, name, nullptr, nullptr) != 0) return;
    controller = ::open(controller_device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (controller < 0) return;
    for (int fd : {held, controller}) {
      termios t{};
      tcgetattr(fd, &t);
      cfmakeraw(&t);
      tcsetattr(fd, TCSANOW, &t);
    }
    fcntl(program_side, F_SETFL, fcntl(program_side, F_GETFL) | O_NONBLOCK);
    device = name;
  }
  ~RelayEnds() {
    for (int fd : {program_side, held, controller})
      if (fd >= 0) ::close(fd);
  }
  RelayEnds(const RelayEnds&) = delete;
  RelayEnds& operator=(const RelayEnds&) = delete;
  bool ok() const { return !device.empty() && controller >= 0; }

  // Which ends have bytes to read, after waiting up to `timeout`; neither when none came.
  struct Readable {
    bool program = false, controller = false;
  };
  Readable wait_readable(std::chrono::microseconds timeout) const {
    fd_set fds;
    FD_ZERO(&fds);
    FD_SET(program_side, &fds);
    FD_SET(controller, &fds);
    timeval tv{0, static_cast<suseconds_t>(timeout.count())};
    const int highest = std::max(program_side, controller);
    if (::select(highest + 1, &fds, nullptr, nullptr, &tv) <= 0) return {};
    return {FD_ISSET(program_side, &fds) != 0, FD_ISSET(controller, &fds) != 0};
  }

  int program_side = -1, held = -1, controller = -1;
  std::string device;  // what the program opens
};

// User plus system CPU seconds of this process (RUSAGE_SELF) or thread (RUSAGE_THREAD).
inline double cpu_seconds(int who = RUSAGE_SELF) {
  rusage u{};
  getrusage(who, &u);
  return static_cast<double>(u.ru_utime.tv_sec + u.ru_stime.tv_sec) +
         static_cast<double>(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

}  // namespace nerit::bench
