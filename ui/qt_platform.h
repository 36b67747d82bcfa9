#pragma once
// The core's platform interfaces on Qt: timers, the event pump of the waits, dialogs, clock,
// locale and the program's windows.
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <map>
#include <vector>

#include "shell/platform.h"

namespace nerit::ui {

// Runs one core handler behind the fault boundary and refreshes the windows afterwards.
using HandlerRunner = std::function<void(const std::function<void()>&)>;

class QtTimers : public QObject, public TimerHost {
 public:
  explicit QtTimers(HandlerRunner run) : run_(std::move(run)) {}
  ~QtTimers() override;
  void timer_changed(Timer& timer) override;
  void timer_destroyed(Timer& timer) override;

 private:
  void arm(Timer& timer);
  void disarm(Timer& timer);
  HandlerRunner run_;
  // One single-shot QTimer per pending tick: a fresh object each time lets a timer tick again
  // inside the waits of its own handler, which a repeating QTimer would not.
  std::map<Timer*, QPointer<QTimer>> pending_;
};

class QtPump : public EventPump {
 public:
  void process_events() override;
  std::function<void()> before_wait;  // hands the request to the driver before the loop sleeps
  bool closing = false;
  bool handled = false;  // a handler ran in this turn of the wait
};

// Boxes and dialogs belong to the main window, which outlives every one of them: a box never
// stands on a window that closes while it is open. Each one lives on the heap and is watched,
// so nothing is freed twice whatever happens under its loop.
class QtDialogs : public Dialogs {
 public:
  void set_owner(QWidget* owner) { owner_ = owner; }

  using Dialogs::message_box;
  MsgAnswer message_box(const MessageBoxRequest& request) override;
  void notify(const MessageBoxRequest& request) override;
  std::filesystem::path file_dialog(const FileDialogRequest& request) override;
  std::string input_box(const std::string& prompt, const std::string& title,
                        const std::string& default_text) override;

 private:
  QPointer<QWidget> owner_;
};

// "Nerit Files (*.inj)|*.inj" as a Qt file dialog filter.
QString qt_file_filter(const std::string& filter);

class QtClock : public Clock {
 public:
  QtClock() { steady_.start(); }
  // Asks the system only once a second: every log line wants the time.
  DateTime now() const override;
  long long milliseconds() const override { return steady_.elapsed(); }

 private:
  QElapsedTimer steady_;
  mutable DateTime second_;
  mutable long long next_second_ms_ = -1;  // steady time at which second_ is out of date
};

// The system's conventions as they are when the program starts.
class QtLocale : public Locale {
 public:
  QtLocale();
  char decimal_separator() const override { return decimal_; }
  std::string short_date_pattern() const override { return date_; }
  std::string time_pattern() const override { return time_; }

 private:
  char decimal_;
  std::string date_, time_;
};

// The program's further windows. A window that is unloaded (or closed by the user) disappears
// at once but is deleted only by collect(), which the program calls once no handler runs: a
// nested loop (a box, a wait) may still stand on it until then.
class QtWindows : public QObject, public WindowHost {
 public:
  ~QtWindows() override;
  void show(FormId form) override;
  void unload(FormId form) override;
  bool is_loaded(FormId form) const override;
  void end_program() override;

  std::map<FormId, std::function<QWidget*()>> factories;
  std::function<void()> on_end;
  // Runs a window's unload handler behind the fault boundary.
  HandlerRunner run;
  QWidget* widget(FormId form) const;
  // Deletes the windows unloaded since the last call.
  void collect();
  // True while a handler runs: windows then wait for collect().
  std::function<bool()> busy;
  // Windows unloaded and not yet deleted.
  int pending_deletions() const { return static_cast<int>(closed_.size()); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void retire(FormId form);
  std::map<FormId, QPointer<QWidget>> open_;
  std::vector<QPointer<QWidget>> closed_;
};

}  // namespace nerit::ui
