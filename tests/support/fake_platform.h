#pragma once
// The platform the core tests run on: a virtual clock that drives timers and serial arrivals,
// a pump that fails the test when a wait could never end, scripted dialogs, recorded windows.
#include <deque>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "shell/controls.h"
#include "shell/errors.h"
#include "shell/platform.h"
#include "tests/support/virtual_clock.h"

namespace nerit::testing {

// Thrown by the pump when nothing is left that could end a wait (the test has failed already).
struct WaitNeverEnds {};

// Dialogs the test expects, in order, with their answers. A box, file dialog or input box that
// was not expected fails the test (and is answered Ok/No/Cancel); so does an expectation left
// over at the end. Everything shown is recorded.
class FakeDialogs : public Dialogs {
 public:
  FakeDialogs() = default;
  FakeDialogs(const FakeDialogs&) = delete;
  FakeDialogs& operator=(const FakeDialogs&) = delete;
  ~FakeDialogs() override;

  // The next box, as "title|icon|buttons|text" (icon and buttons by name), and its answer.
  void expect(std::string box, MsgAnswer answer = MsgAnswer::Ok);
  // The next file dialog answers with this file (an empty path: cancelled).
  void expect_file(std::filesystem::path chosen);
  // The next input box answers with this text ("" : cancelled).
  void expect_input(std::string typed);
  // Lets every box through unchecked (answered as without expectation), for tests that count
  // boxes themselves.
  bool any_box = false;

  using Dialogs::message_box;
  MsgAnswer message_box(const MessageBoxRequest& request) override;
  void notify(const MessageBoxRequest& request) override;
  std::filesystem::path file_dialog(const FileDialogRequest& request) override;
  std::string input_box(const std::string& prompt, const std::string& title,
                        const std::string& default_text) override;

  // Each box shown as "title|icon|buttons|text".
  std::vector<std::string> boxes() const;
  static std::string line(const MessageBoxRequest& request);

  std::vector<MessageBoxRequest> shown;
  std::vector<FileDialogRequest> file_requests;
  std::vector<std::string> input_prompts;

 private:
  MsgAnswer take(const MessageBoxRequest& request);
  std::deque<std::pair<std::string, MsgAnswer>> expected_;
  std::deque<std::filesystem::path> files_;
  std::deque<std::string> inputs_;
};

class FakeTimers : public TimerHost {
 public:
  FakeTimers(VirtualClock& clock, Dialogs& dialogs) : clock_(clock), dialogs_(dialogs) {}
  void timer_changed(Timer& timer) override {  // a new interval counts from now
    timer_destroyed(timer);
    if (timer.enabled() && timer.interval() > 0) arm(timer);
  }
  void timer_destroyed(Timer& timer) override {
    if (armed_.count(&timer)) clock_.cancel(armed_[&timer]);
    armed_.erase(&timer);
  }

 private:
  void arm(Timer& timer);
  VirtualClock& clock_;
  Dialogs& dialogs_;
  std::map<Timer*, VirtualClock::Id> armed_;
};

// Serial ports on the virtual clock. Ports listed in `present` open; the others fail like an
// absent device. Everything written is recorded per port; arrivals are scheduled by the test
// (or by a peer that watches the output).
class FakeSerialPort : public SerialPort {
 public:
  FakeSerialPort(VirtualClock& clock, Dialogs& dialogs) : clock_(clock), dialogs_(dialogs) {}

  // The device of the open port goes away after delay_ms: the port closes by itself and
  // on_closed is told "device removed".
  void vanish_after(long long delay_ms);

  void set_comm_port(int number) override {
    if (open_) throw SerialError("Port already open");
    if (number < 1 || number > 255) throw SerialError("Invalid port number");
    port_ = number;
  }
  int comm_port() const override { return port_; }
  void set_settings(const std::string& settings) override { settings_ = settings; }
  const std::string& settings() const override { return settings_; }
  void set_port_open(bool open) override {
    if (!open) {
      open_ = false;
      received_.clear();
      return;
    }
    if (open_) throw SerialError("Port already open");
    open_attempts.push_back(port_);
    if (denied.count(port_)) throw SerialPermissionError("/dev/fake" + std::to_string(port_));
    if (!present.count(port_)) throw SerialError("Device unavailable");
    open_ = true;
    opened.push_back(port_);
    opened_settings.push_back(settings_);
  }
  bool port_open() const override { return open_; }
  void output(const std::string& chars) override {
    if (!open_) throw SerialError("Operation valid only when the port is open");
    ++output_calls;
    written[port_] += chars;
    if (on_output) on_output(port_, chars);
  }
  std::string input() override {
    if (!open_) throw SerialError("Operation valid only when the port is open");
    return std::exchange(received_, {});
  }
  int comm_event() const override { return event_; }
  std::string device_name(int number) const override {
    return present.count(number) ? "fake" + std::to_string(number) : "";
  }
  VirtualClock& clock() { return clock_; }

  // Bytes (or another event) due after delay_ms on port `on`: 0 is the port open now, -1
  // whichever is open then. Lost when that port is not open when they are due.
  void arrive_after(long long delay_ms, std::string bytes, int event = kReceive, int on = 0);

  std::set<int> present;
  std::set<int> denied;                      // ports this user may not open
  std::vector<int> open_attempts;            // every port number an open was tried on
  std::vector<int> opened;                   // every port number that opened
  std::vector<std::string> opened_settings;  // the settings of each of those opens
  std::map<int, std::string> written;        // bytes per port
  int output_calls = 0;
  // A peer on the wire: sees every write, may schedule arrivals.
  std::function<void(int port, const std::string& chars)> on_output;

 private:
  VirtualClock& clock_;
  Dialogs& dialogs_;
  int port_ = 1;
  std::string settings_ = "9600,N,8,1";  // as a new serial control starts
  bool open_ = false;
  std::string received_;
  int event_ = 0;
};

class FakePump : public EventPump {
 public:
  explicit FakePump(VirtualClock& clock) : clock_(clock) {}
  void process_events() override;
  bool closing = false;
  static constexpr long long kMaxSteps = 2'000'000;  // a wait that spins this long is a fault too

 private:
  VirtualClock& clock_;
  long long steps_ = 0;
};

// Wall time = 2026-11-15 12:00:00 plus the virtual milliseconds.
class FakeClock : public Clock {
 public:
  explicit FakeClock(const VirtualClock& clock) : clock_(clock) {}
  DateTime now() const override {
    const int s = static_cast<int>((12 * 3600 + clock_.now_ms() / 1000) % (24 * 3600));
    return {2026, 11, 15, s / 3600, s / 60 % 60, s % 60};
  }
  long long milliseconds() const override { return clock_.now_ms(); }

 private:
  const VirtualClock& clock_;
};

class FakeLocale : public Locale {
 public:
  char decimal_separator() const override { return decimal; }
  std::string short_date_pattern() const override { return date_pattern; }
  std::string time_pattern() const override { return clock_pattern; }
  char decimal = '.';
  std::string date_pattern = "dd.MM.yyyy";
  std::string clock_pattern = "HH:mm:ss";
};

// Records "show Form3", "unload Form2", "end"; the end makes the pump end every wait. Unloading
// a loaded window runs its unload handler.
class FakeWindows : public WindowHost {
 public:
  explicit FakeWindows(FakePump& pump) : pump_(pump) {}
  void show(FormId form) override { loaded.insert(form), calls.push_back("show " + name(form)); }
  void unload(FormId form) override {
    calls.push_back("unload " + name(form));
    if (!loaded.erase(form)) return;
    if (auto h = unload_handlers.find(form); h != unload_handlers.end() && h->second) h->second();
  }
  bool is_loaded(FormId form) const override { return loaded.count(form) != 0; }
  void end_program() override { calls.push_back("end"), pump_.closing = true; }
  std::set<FormId> loaded;
  std::vector<std::string> calls;

 private:
  static std::string name(FormId form) {
    return "Form" + std::to_string(static_cast<int>(form) + 2);
  }
  FakePump& pump_;
};

// Further ports on the same clock; the test reaches each one it handed out.
class FakeSerialPorts : public SerialPorts {
 public:
  FakeSerialPorts(VirtualClock& clock, Dialogs& dialogs) : clock_(clock), dialogs_(dialogs) {}
  std::unique_ptr<SerialPort> make_port() override {
    auto port = std::make_unique<FakeSerialPort>(clock_, dialogs_);
    made.push_back(port.get());
    return port;
  }
  std::vector<FakeSerialPort*> made;

 private:
  VirtualClock& clock_;
  Dialogs& dialogs_;
};

struct FakePlatform {
  VirtualClock clock;
  FakeDialogs dialogs;
  FakeTimers timers{clock, dialogs};
  FakeSerialPort comm{clock, dialogs};
  FakeSerialPorts ports{clock, dialogs};
  FakePump pump{clock};
  FakeClock wall{clock};
  FakeLocale locale;
  FakeWindows windows{pump};
  Platform platform{comm, timers, pump, dialogs, wall, locale, windows, ports};
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
