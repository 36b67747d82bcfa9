#pragma once
// The platform the core tests run on: a virtual clock that drives timers and serial arrivals,
// a pump that fails the test when a wait could never end, scripted dialogs, recorded windows.
#include <deque>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "shell/platform.h"
#include "tests/support/virtual_clock.h"

namespace nerit::testing {

// Thrown by the pump when nothing is left that could end a wait (the test has failed already).
struct WaitNeverEnds {};

class FakeDialogs : public Dialogs {
 public:
  struct FileDialogShown {
    FileDialogRequest request;
  };
  struct InputBoxShown {
    std::string prompt, title, default_text;
  };

  using Dialogs::message_box;
  MsgAnswer message_box(const MessageBoxRequest& request) override;
  std::filesystem::path file_dialog(const FileDialogRequest& request) override;
  std::string input_box(const std::string& prompt, const std::string& title,
                        const std::string& default_text) override;

  // Answers given in turn; without one an Ok box answers Ok, a Yes/No box No, others Cancel.
  std::deque<MsgAnswer> answers;
  std::deque<std::filesystem::path> files;  // without one the dialog is cancelled
  std::deque<std::string> inputs;           // without one the input box is cancelled

  std::vector<MessageBoxRequest> shown;
  std::vector<FileDialogRequest> file_dialogs;
  std::vector<InputBoxShown> input_boxes;
};

class FakeTimers : public TimerHost {
 public:
  FakeTimers(VirtualClock& clock, Dialogs& dialogs) : clock_(clock), dialogs_(dialogs) {}
  void timer_changed(Timer& timer) override;
  void timer_destroyed(Timer& timer) override;
  int ticks(const Timer& timer) const;

 private:
  void arm(Timer& timer);
  VirtualClock& clock_;
  Dialogs& dialogs_;
  std::map<Timer*, VirtualClock::Id> armed_;
  std::map<const Timer*, int> ticks_;
};

// Serial ports on the virtual clock. Ports listed in `present` open; the others fail like an
// absent device. Everything written is recorded per port; arrivals are scheduled by the test
// (or by a peer that watches the output).
class FakeSerialPort : public SerialPort {
 public:
  FakeSerialPort(VirtualClock& clock, Dialogs& dialogs) : clock_(clock), dialogs_(dialogs) {}

  void set_comm_port(int number) override;
  int comm_port() const override { return port_; }
  void set_settings(const std::string& settings) override { settings_ = settings; }
  const std::string& settings() const override { return settings_; }
  void set_port_open(bool open) override;
  bool port_open() const override { return open_; }
  void output(const std::string& chars) override;
  std::string input() override;
  int comm_event() const override { return event_; }
  std::string device_name(int number) const override;
  VirtualClock& clock() { return clock_; }

  // Schedules bytes to arrive on the port that is open now, when they are due (lost if that
  // port is closed by then). With any_port they reach whichever port is open at that time.
  void arrive_after(long long delay_ms, std::string bytes, int event = kReceive,
                    bool any_port = false);

  // Bytes arriving on one port number: lost unless that port is open when they are due.
  void arrive_on(int port_number, long long delay_ms, std::string bytes);

  std::set<int> present;
  std::vector<int> open_attempts;      // every port number an open was tried on
  std::vector<int> opened;             // every port number that opened
  std::map<int, std::string> written;  // bytes per port
  int output_calls = 0;
  // A peer on the wire: sees every write, may schedule arrivals.
  std::function<void(int port, const std::string& chars)> on_output;

 private:
  VirtualClock& clock_;
  Dialogs& dialogs_;
  int port_ = 1;
  std::string settings_ = "9600,N,8,1";
  bool open_ = false;
  std::string received_;
  int event_ = 0;
};

class FakePump : public EventPump {
 public:
  explicit FakePump(VirtualClock& clock) : clock_(clock) {}
  void process_events() override;
  bool closing = false;
  long long max_steps = 2'000'000;  // a wait that spins this long is a fault too
  long long steps = 0;

 private:
  VirtualClock& clock_;
};

// Wall time = 2026-11-15 12:00:00 plus the virtual milliseconds.
class FakeClock : public Clock {
 public:
  explicit FakeClock(const VirtualClock& clock) : clock_(clock) {}
  DateTime now() const override;
  DateTime start{2026, 11, 15, 12, 0, 0};

 private:
  const VirtualClock& clock_;
};

class FakeLocale : public Locale {
 public:
  char decimal_separator() const override { return decimal; }
  std::string short_date_pattern() const override { return date_pattern; }
  std::string time_pattern() const override { return time_pattern_text; }
  char decimal = '.';
  std::string date_pattern = "dd.MM.yyyy";
  std::string time_pattern_text = "HH:mm:ss";
};

class FakeWindows : public WindowHost {
 public:
  void show(FormId form) override;
  void unload(FormId form) override;
  bool is_loaded(FormId form) const override { return loaded.count(form) != 0; }
  void end_program() override;

  std::set<FormId> loaded;
  std::vector<std::string> calls;  // "show Form3", "unload Form2", "end"
  // Set by end_program: the pump then ends every wait.
  FakePump* pump = nullptr;
};

std::string form_name(FormId form);

struct FakePlatform {
  FakePlatform();
  VirtualClock clock;
  FakeDialogs dialogs;
  FakeTimers timers{clock, dialogs};
  FakeSerialPort comm{clock, dialogs};
  FakePump pump{clock};
  FakeClock wall{clock};
  FakeLocale locale;
  FakeWindows windows;
  Platform platform{comm, timers, pump, dialogs, wall, locale, windows};
};

// A fresh folder under the system's temporary folder, removed at the end of the test.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }
  void write(const std::string& name, const std::vector<unsigned char>& bytes) const;

 private:
  std::filesystem::path path_;
};

}  // namespace nerit::testing
