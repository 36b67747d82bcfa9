#pragma once
// The running program: the Qt platform, every window's models and handlers, and the widgets.
// Every handler runs through run(): fault boundary first, then the windows show the result.
#include <QObject>
#include <QTimer>
#include <filesystem>
#include <memory>

#include "app/form1.h"
#include "shell/fault_boundary.h"
#include "ui/main_window.h"
#include "ui/qt_platform.h"
#include "ui/qt_serial_port.h"

class QWindow;

namespace nerit::ui {

class Application : public QObject {
 public:
  struct Options {
    std::filesystem::path program_folder;
    bool show_splash = true;
    Dialogs* dialogs = nullptr;      // tests record dialogs instead of showing them
    std::vector<std::string> ports;  // --port devices, numbered first
    std::string simulator_device;    // the virtual controller's device, numbered next
  };

  explicit Application(Options options);
  ~Application() override;

  // Splash, main window load, show, first activation.
  void start();
  // Runs a handler behind the fault boundary (a failure becomes a box: modal, or for serial
  // arrivals one that stops nothing), then shows what it changed.
  void run(const std::function<void()>& handler, FaultBox box = FaultBox::Modal);
  // Shows the models. Paced (for what the controller streams), parts that change fast may
  // follow a little later.
  void refresh(bool paced = false);

  Program& program() { return *program_; }
  MainWindow& main_window() { return *main_; }
  QtWindows& windows() { return windows_; }
  Platform& platform() { return platform_; }
  bool closing() const { return pump_.closing; }

 private:
  HandlerRunner runner(FaultBox box = FaultBox::Modal) {
    return [this, box](const std::function<void()>& h) { run(h, box); };
  }
  void end_program();
  void catch_up_later();
  void catch_up();
  void focus_changed(QWindow* now);

  // While a handler waits, the window shows its changes this long after them, in a turn of the
  // event loop without a reply.
  static constexpr int kCatchUpMs = 100;

  Options options_;
  QtTimers timers_;
  QtPump pump_;
  QtDialogs qt_dialogs_;
  QtClock clock_;
  QtLocale locale_;
  QtWindows windows_;
  QtSerialPort comm_;
  QtSerialPorts ports_;
  Platform platform_;
  std::unique_ptr<Program> program_;
  std::unique_ptr<MainWindow> main_;
  bool last_focus_was_form_ = false;
  int run_depth_ = 0;   // handlers running, one inside the other's wait
  bool stale_ = false;  // a handler ran since the window last showed the models
  QTimer catch_up_;     // refreshes the window while a handler waits
};

}  // namespace nerit::ui
