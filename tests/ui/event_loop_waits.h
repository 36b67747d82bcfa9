#pragma once
// Waits of the widget tests: they let the real event loop run (QTRY_* macros would not fail a
// gtest test).
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QThread>

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
  while (t.elapsed() < ms) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QThread::msleep(2);
  }
}

}  // namespace nerit::ui
