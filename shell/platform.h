#pragma once
// What the core needs from the machine it runs on. The Qt layer implements these for the real
// program, tests/support for the tests (with a virtual clock).
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "shell/clock_texts.h"
#include "shell/colors.h"

namespace nerit {

class Timer;

// One serial-port control, as the handlers use it: numbered ports, a settings string,
// one character written per output call, everything received so far on input.
class SerialPort {
 public:
  static constexpr int kReceive = 2;        // characters arrived
  static constexpr int kOverrun = 1006;     // receive overrun
  static constexpr int kRxOverflow = 1008;  // receive buffer overflow

  virtual ~SerialPort() = default;
  // Fails with SerialError while the port is open.
  virtual void set_comm_port(int number) = 0;
  virtual int comm_port() const = 0;
  virtual void set_settings(const std::string& settings) = 0;
  virtual const std::string& settings() const = 0;
  // Opening fails with SerialError (absent, busy, already open); closing a closed port is fine.
  virtual void set_port_open(bool open) = 0;
  virtual bool port_open() const = 0;
  // Writes the characters in order; the handlers pass one at a time.
  virtual void output(const std::string& chars) = 0;
  // Everything received since the last call.
  virtual std::string input() = 0;
  // Event code of the latest notification: kReceive, kOverrun or kRxOverflow.
  virtual int comm_event() const = 0;
  // What device a port number stands for ("" when none), for the window to show.
  virtual std::string device_name(int number) const = 0;

  // Runs on the UI thread for every notification (the receive event), also while a message
  // box or another handler's wait is open.
  std::function<void()> on_comm;
  // Runs on the UI thread when the open port has closed by itself (the device went away or
  // stopped taking bytes), with the reason for the log ("device removed").
  std::function<void(const std::string& why)> on_closed;
};

// Serial ports beyond the main window's own: a window that talks to the controller by itself
// (the firmware window) gets one of its own, numbered like the main one.
class SerialPorts {
 public:
  virtual ~SerialPorts() = default;
  virtual std::unique_ptr<SerialPort> make_port() = 0;
};

// Makes Timer models tick: told whenever a timer is switched on or off or gets a new interval.
class TimerHost {
 public:
  virtual ~TimerHost() = default;
  virtual void timer_changed(Timer& timer) = 0;
  virtual void timer_destroyed(Timer& timer) = 0;
};

// The waits of the program: `while (!flag) pump.process_events();`.
class EventPump {
 public:
  virtual ~EventPump() = default;
  // Runs whatever is due next (serial arrivals, timer ticks, user input), idling until
  // something comes. Throws ProgramClosing once the program is ending.
  virtual void process_events() = 0;
};

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel };
enum class MsgAnswer { Ok, Cancel, Yes, No, Retry };

struct MessageBoxRequest {
  std::string text;
  MsgButtons buttons = MsgButtons::Ok;
  MsgIcon icon = MsgIcon::None;
  std::string title;
};

struct FileDialogRequest {
  enum class Kind { Open, Save } kind = Kind::Open;
  std::string title;
  std::filesystem::path folder;
  std::string filter;  // "Nerit Files (*.inj)|*.inj"
};

// Title of message boxes whose text gives none.
inline constexpr const char* kProgramTitle = "Nerit";

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // A modal box: returns the answer once the user has closed it. Serial arrivals and timers
  // go on meanwhile.
  virtual MsgAnswer message_box(const MessageBoxRequest& request) = 0;
  // A box with an OK button that does not stop the caller: it stays on screen while the
  // program goes on. For failures of events nobody waits on (serial arrivals), so that a wait
  // further down keeps being served.
  virtual void notify(const MessageBoxRequest& request) = 0;
  // The chosen file, or an empty path when the user cancelled.
  virtual std::filesystem::path file_dialog(const FileDialogRequest& request) = 0;
  // The text typed, or "" when cancelled.
  virtual std::string input_box(const std::string& prompt, const std::string& title,
                                const std::string& default_text) = 0;

  MsgAnswer message_box(std::string text, MsgButtons buttons, MsgIcon icon,
                        std::string title = kProgramTitle) {
    return message_box(MessageBoxRequest{std::move(text), buttons, icon, std::move(title)});
  }
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime now() const = 0;
  // A steady count of milliseconds for measuring intervals; its zero means nothing.
  virtual long long milliseconds() const = 0;
};

// The system's number and date conventions.
class Locale {
 public:
  virtual ~Locale() = default;
  virtual char decimal_separator() const = 0;
  virtual std::string short_date_pattern() const = 0;  // "dd.MM.yyyy"
  virtual std::string time_pattern() const = 0;        // "HH:mm:ss"
};

// The program's windows besides the main one.
enum class FormId { Form2, Form3, Form4, Form5 };

class WindowHost {
 public:
  virtual ~WindowHost() = default;
  virtual void show(FormId form) = 0;
  virtual void unload(FormId form) = 0;
  virtual bool is_loaded(FormId form) const = 0;
  // Unloading the main window: the program ends once the current handler returns, and every
  // wait still running throws ProgramClosing.
  virtual void end_program() = 0;

  // A window's own unload handler, run as the window goes: unloaded by a handler or closed by
  // the user. Set by whoever puts the windows together.
  std::map<FormId, std::function<void()>> unload_handlers;
};

// Everything a handler may reach, handed to each part of the program at start-up.
struct Platform {
  SerialPort& comm;  // the main window's MSComm1
  TimerHost& timers;
  EventPump& pump;
  Dialogs& dialogs;
  Clock& clock;
  Locale& locale;
  WindowHost& windows;
  SerialPorts& ports;  // further ports, for windows with a link of their own

  std::string time_text() const { return format_date_time(clock.now(), locale.time_pattern()); }
  std::string date_text() const {
    return format_date_time(clock.now(), locale.short_date_pattern());
  }
  char decimal_separator() const { return locale.decimal_separator(); }
};

}  // namespace nerit
