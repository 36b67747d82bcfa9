#pragma once
// What the widget tests share: waits that let the real event loop run (QTRY_* macros would not
// fail a gtest test), a pseudo-terminal pair, and the program started without its splash.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QListWidget>
#include <QThread>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/fake_platform.h"
#include "ui/application.h"

namespace nerit::ui {

// Lets the event loop run until the condition holds; false after the timeout.
template <class Condition>
bool wait_until(Condition condition, int timeout_ms = 5000) {
  QDeadlineTimer deadline(timeout_ms);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QThread::msleep(2);
  }
  return true;
}

inline void run_events_for(int ms) {
  QElapsedTimer t;
  t.start();
  wait_until([&] { return t.elapsed() >= ms; }, ms + 1000);
}

// The program opens the device end by its path; the test plays the controller on the master end.
struct Pty {
  Pty() {
    char name[256] = {};
    if (openpty(&master, &device, name, nullptr, nullptr) != 0) return;
    path = name;
    fcntl(master, F_SETFL, fcntl(master, F_GETFL) | O_NONBLOCK);
  }
  ~Pty() {
    close_master();
    if (device >= 0) ::close(device);
  }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  void close_master() {
    if (master >= 0) ::close(master);
    master = -1;
  }
  void send(const std::string& s) const {
    ASSERT_EQ(::write(master, s.data(), s.size()), static_cast<ssize_t>(s.size()));
  }
  // What the program wrote so far.
  std::string take() const {
    std::string got;
    char buf[256];
    for (ssize_t n; (n = ::read(master, buf, sizeof buf)) > 0;) got.append(buf, n);
    return got;
  }

  int master = -1;
  int device = -1;
  std::string path;
};

// The program on the offscreen platform, started without its splash; dialogs are recorded.
class ProgramTest : public ::testing::Test {
 protected:
  void start(std::vector<std::string> ports = {}, std::string simulator_device = "") {
    app = std::make_unique<Application>(Application::Options{
        folder.path(), false, &dialogs, std::move(ports), std::move(simulator_device)});
    app->start();
  }
  const MainWindow::Widgets& w() { return app->main_window().widgets(); }
  Form1& form() { return app->program().form1; }
  Form1Controls& c() { return app->program().form1.c; }
  // Log line i from its " -> " on, without the time in front.
  std::string log_text(int i) {
    const std::string line = w().List1->item(i)->text().toStdString();
    return line.substr(line.find(" -> "));
  }
  static QString cell(GridView* view, int r, int col) {
    return view->model()->index(r, col).data().toString();
  }

  testing::TempFolder folder;
  testing::FakeDialogs dialogs;
  std::unique_ptr<Application> app;
};

}  // namespace nerit::ui
