#pragma once
// The core's platform interfaces on Qt: timers, the event pump of the waits, dialogs, clock,
// locale and the program's windows.
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <map>

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
  std::function<void()> before_wait;  // shows what the handler changed before it waits
  bool closing = false;
};

class QtDialogs : public Dialogs {
 public:
  using Dialogs::message_box;
  MsgAnswer message_box(const MessageBoxRequest& request) override;
  std::filesystem::path file_dialog(const FileDialogRequest& request) override;
  std::string input_box(const std::string& prompt, const std::string& title,
                        const std::string& default_text) override;
};

// "Nerit Files (*.inj)|*.inj" as a Qt file dialog filter.
QString qt_file_filter(const std::string& filter);

class QtClock : public Clock {
 public:
  DateTime now() const override;
};

class QtLocale : public Locale {
 public:
  char decimal_separator() const override;
  std::string short_date_pattern() const override;
  std::string time_pattern() const override;
};

class QtWindows : public WindowHost {
 public:
  void show(FormId form) override;
  void unload(FormId form) override;
  bool is_loaded(FormId form) const override;
  void end_program() override;

  std::map<FormId, std::function<QWidget*()>> factories;
  std::function<void()> on_end;
  QWidget* widget(FormId form) const;

 private:
  std::map<FormId, QPointer<QWidget>> open_;
};

}  // namespace nerit::ui
