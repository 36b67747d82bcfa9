#include "ui/application.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include "shell/errors.h"
#include "shell/fault_boundary.h"
#include "ui/form2_window.h"
#include "ui/form3_window.h"
#include "ui/form5_window.h"
#include "ui/splash_window.h"

namespace nerit::ui {

Application::Application(Options options)
    : options_(std::move(options)),
      timers_(runner()),
      comm_(PortNumbering(options_.ports, options_.simulator_device), runner(FaultBox::Modeless)),
      ports_(comm_),
      platform_{comm_,    timers_,
                pump_,    options_.dialogs ? *options_.dialogs : static_cast<Dialogs&>(qt_dialogs_),
                clock_,   locale_,
                windows_, ports_} {
  program_ = std::make_unique<Program>(platform_, options_.program_folder);
  main_ = std::make_unique<MainWindow>(program_->form1, runner());
  qt_dialogs_.set_owner(main_.get());
  windows_.busy = [this] { return run_depth_ > 0; };
  main_->on_close = [this] { run([this] { program_->form1.shell.Form_Unload(); }); };
  catch_up_.setSingleShot(true);
  connect(&catch_up_, &QTimer::timeout, this, [this] { catch_up(); });
  pump_.before_wait = [this] {
    comm_.send_pending();  // the request goes out before the loop sleeps
    if (stale_) catch_up_later();
  };

  windows_.factories[FormId::Form4] = [this] {
    const Form4& f = program_->form4;
    return new SplashWindow(f.width / kTwipsPerPixel, f.height / kTwipsPerPixel);
  };
  windows_.factories[FormId::Form3] = [this] { return new Form3Window(program_->form3, runner()); };
  windows_.run = runner();
  windows_.factories[FormId::Form2] = [this] { return new Form2Window(program_->form2, runner()); };
  windows_.factories[FormId::Form5] = [this] { return new Form5Window(program_->form5, runner()); };
  windows_.on_end = [this] { end_program(); };

  connect(qApp, &QGuiApplication::focusWindowChanged, this,
          [this](QWindow* now) { focus_changed(now); });
}

Application::~Application() {
  // Timers of the models go before the host that makes them tick.
  main_.reset();
  program_.reset();
}

void Application::start() {
  if (options_.show_splash) {
    windows_.show(FormId::Form4);
    if (QWidget* splash = windows_.widget(FormId::Form4)) {
      const QRect screen = splash->screen()->availableGeometry();
      Form4& f = program_->form4;
      run([&] { f.Form_Load(screen.width() * kTwipsPerPixel, screen.height() * kTwipsPerPixel); });
      splash->move(screen.left() + f.left / kTwipsPerPixel, screen.top() + f.top / kTwipsPerPixel);
      QCoreApplication::processEvents();
    }
  }
  run([this] { program_->form1.Form_Load(); });
  if (QWidget* screen = main_->window(); screen && screen->screen()) {
    const QRect avail = screen->screen()->availableGeometry();
    main_->resize(main_->size().boundedTo(avail.size()));
  }
  main_->show();
  if (QWidget* splash = windows_.widget(FormId::Form4)) splash->raise();
  run([this] { program_->form1.shell.Form_Activate(); });
}

void Application::run(const std::function<void()>& handler, FaultBox box) {
  if (pump_.closing) return;
  stale_ = true;  // a handler may change any model
  {
    struct Depth {
      int& n;
      explicit Depth(int& d) : n(++d) {}
      ~Depth() { --n; }
    } depth(run_depth_);
    try {
      run_handler(platform_.dialogs, handler, box);
    } catch (const ProgramClosing&) {
      // The main window was closed inside a wait; the event loop is ending.
    }
  }
  comm_.send_pending();
  if (pump_.closing) return;
  if (run_depth_ == 0) {
    windows_.collect();  // nothing stands on a closed window any more
    // What the user did shows at once; what the controller streams shows at the display's
    // pace, however many frames arrive meanwhile.
    if (box == FaultBox::Modal)
      refresh();
    else
      catch_up_later();
    return;
  }
  // Inside another handler's wait or dialog: the window catches up later, so a reply does not
  // hold back the request the waiting handler sends next.
  pump_.handled = true;
  catch_up_later();
}

void Application::catch_up_later() {
  if (!catch_up_.isActive()) catch_up_.start(kCatchUpMs);
}

void Application::catch_up() {
  if (!stale_ || pump_.closing) return;
  // A reply that came or was handled in this turn of a wait ends the wait: the waiting handler
  // sends its next request first, and the window follows in a turn of its own.
  if (pump_.handled || comm_.delivery_pending()) {
    pump_.handled = false;
    catch_up_.start(1);
    return;
  }
  refresh(true);
}

void Application::refresh(bool paced) {
  stale_ = false;
  const bool waiting = main_ && main_->refresh(paced);
  if (auto* base = dynamic_cast<Form3Window*>(windows_.widget(FormId::Form3))) base->refresh();
  if (auto* flash = dynamic_cast<Form2Window*>(windows_.widget(FormId::Form2))) flash->refresh();
  if (auto* graph = dynamic_cast<Form5Window*>(windows_.widget(FormId::Form5))) graph->refresh();
  if (waiting) {
    stale_ = true;  // the rest follows in a later turn
    catch_up_later();
  }
}

void Application::end_program() {
  pump_.closing = true;
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w != main_.get()) w->close();
  main_->hide();
  QTimer::singleShot(0, qApp, &QCoreApplication::quit);
}

void Application::focus_changed(QWindow* now) {
  // The main window is activated again when the user comes back from one of the program's
  // own windows (not from another application or a message box).
  const bool back_from_form = last_focus_was_form_;
  last_focus_was_form_ = false;
  if (!now) return;
  for (FormId f : {FormId::Form2, FormId::Form3, FormId::Form5})
    if (QWidget* w = windows_.widget(f); w && w->windowHandle() == now) last_focus_was_form_ = true;
  if (now != main_->windowHandle() || !back_from_form) return;
  QTimer::singleShot(0, this, [this] { run([this] { program_->form1.shell.Form_Activate(); }); });
}

}  // namespace nerit::ui
