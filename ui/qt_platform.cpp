#include "ui/qt_platform.h"

#include <QApplication>
#include <QDateTime>
#include <QEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QLocale>
#include <QMessageBox>
#include <QStringList>
#include <utility>

#include "shell/controls.h"
#include "shell/errors.h"
#include "ui/qt_date_time.h"

namespace nerit::ui {

// --- timers --------------------------------------------------------------------------------

QtTimers::~QtTimers() {
  for (auto& [timer, qt] : pending_) delete qt.data();
}

void QtTimers::timer_changed(Timer& timer) {
  disarm(timer);
  if (timer.enabled() && timer.interval() > 0) arm(timer);
}

void QtTimers::timer_destroyed(Timer& timer) {
  disarm(timer);
}

void QtTimers::arm(Timer& timer) {
  auto* qt = new QTimer(this);
  qt->setSingleShot(true);
  qt->setTimerType(Qt::PreciseTimer);
  pending_[&timer] = qt;
  connect(qt, &QTimer::timeout, this, [this, &timer, qt] {
    qt->deleteLater();
    auto it = pending_.find(&timer);
    if (it == pending_.end() || it->second != qt) return;
    pending_.erase(it);
    if (timer.enabled() && timer.interval() > 0) arm(timer);
    run_([&timer] { timer.tick(); });
  });
  qt->start(timer.interval());
}

void QtTimers::disarm(Timer& timer) {
  auto it = pending_.find(&timer);
  if (it == pending_.end()) return;
  if (it->second) {
    it->second->stop();
    it->second->deleteLater();
  }
  pending_.erase(it);
}

// --- pump ----------------------------------------------------------------------------------

void QtPump::process_events() {
  if (closing) throw ProgramClosing{};
  if (before_wait) before_wait();
  handled = false;
  // Sleeps until something arrives: a wait costs no CPU.
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  if (closing) throw ProgramClosing{};
}

// --- dialogs -------------------------------------------------------------------------------

namespace {

QMessageBox* make_box(const MessageBoxRequest& r, QWidget* owner) {
  auto* box = new QMessageBox(owner);
  box->setWindowTitle(QString::fromStdString(r.title));
  box->setText(QString::fromStdString(r.text));
  box->setAccessibleName(QString::fromStdString(r.title));
  box->setAccessibleDescription(QString::fromStdString(r.text));
  switch (r.icon) {
    case MsgIcon::Critical:
      box->setIcon(QMessageBox::Critical);
      break;
    case MsgIcon::Question:
      box->setIcon(QMessageBox::Question);
      break;
    case MsgIcon::Exclamation:
      box->setIcon(QMessageBox::Warning);
      break;
    case MsgIcon::Information:
      box->setIcon(QMessageBox::Information);
      break;
    case MsgIcon::None:
      box->setIcon(QMessageBox::NoIcon);
      break;
  }
  switch (r.buttons) {
    case MsgButtons::Ok:
      box->setStandardButtons(QMessageBox::Ok);
      break;
    case MsgButtons::OkCancel:
      box->setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
      break;
    case MsgButtons::YesNo:
      box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      break;
    case MsgButtons::YesNoCancel:
      box->setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      break;
    case MsgButtons::RetryCancel:
      box->setStandardButtons(QMessageBox::Retry | QMessageBox::Cancel);
      break;
  }
  return box;
}

}  // namespace

void QtDialogs::notify(const MessageBoxRequest& r) {
  QMessageBox* box = make_box(r, owner_);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::NonModal);
  box->show();
}

MsgAnswer QtDialogs::message_box(const MessageBoxRequest& r) {
  const QPointer<QMessageBox> box = make_box(r, owner_);
  const int result = box->exec();
  delete box.data();  // null when the program already took the box down
  switch (result) {
    case QMessageBox::Ok:
      return MsgAnswer::Ok;
    case QMessageBox::Yes:
      return MsgAnswer::Yes;
    case QMessageBox::No:
      return MsgAnswer::No;
    case QMessageBox::Retry:
      return MsgAnswer::Retry;
    default:
      return r.buttons == MsgButtons::Ok ? MsgAnswer::Ok : MsgAnswer::Cancel;
  }
}

QString qt_file_filter(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).split('|');
  QStringList out;
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    QString patterns = parts[i + 1];
    patterns.replace(';', ' ');
    out << (parts[i].contains('(') ? parts[i] : parts[i] + " (" + patterns + ")");
  }
  return out.join(";;");
}

std::filesystem::path QtDialogs::file_dialog(const FileDialogRequest& r) {
  const QString title = QString::fromStdString(r.title);
  const QString folder = QString::fromStdString(r.folder.string());
  const QString filter = qt_file_filter(r.filter);
  const QPointer<QFileDialog> dialog = new QFileDialog(owner_, title, folder, filter);
  const bool save = r.kind == FileDialogRequest::Kind::Save;
  dialog->setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog->setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
  const QStringList files = accepted ? dialog->selectedFiles() : QStringList();
  delete dialog.data();
  return files.isEmpty() ? std::filesystem::path()
                         : std::filesystem::path(files.front().toStdString());
}

std::string QtDialogs::input_box(const std::string& prompt, const std::string& title,
                                 const std::string& default_text) {
  const QPointer<QInputDialog> dialog = new QInputDialog(owner_);
  dialog->setWindowTitle(QString::fromStdString(title));
  dialog->setLabelText(QString::fromStdString(prompt));
  dialog->setTextValue(QString::fromStdString(default_text));
  const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
  const std::string text = accepted ? dialog->textValue().toStdString() : std::string();
  delete dialog.data();
  return text;
}

// --- clock and locale ----------------------------------------------------------------------

DateTime QtClock::now() const {
  const long long at = steady_.elapsed();
  if (at < next_second_ms_) return second_;
  const QDateTime t = QDateTime::currentDateTime();
  second_ = date_time_of(t);
  next_second_ms_ = at + 1000 - t.time().msec();
  return second_;
}

QtLocale::QtLocale() {
  const QLocale system = QLocale::system();
  const QString point = system.decimalPoint();
  decimal_ =
      point.size() == 1 && point[0].unicode() < 128 ? static_cast<char>(point[0].unicode()) : '.';
  QString date = system.dateFormat(QLocale::ShortFormat);
  if (!date.contains("yyyy")) date.replace("yy", "yyyy");  // the full year, as file names show it
  date_ = date.toStdString();
  QString time = system.timeFormat(QLocale::LongFormat);
  time.remove('t');  // no time zone
  time_ = time.trimmed().toStdString();
}

// --- windows -------------------------------------------------------------------------------

QtWindows::~QtWindows() {
  for (auto& w : closed_) delete w.data();
  for (auto& [form, w] : open_) delete w.data();
}

void QtWindows::show(FormId form) {
  QPointer<QWidget>& w = open_[form];
  if (!w) {
    auto factory = factories.find(form);
    if (factory == factories.end()) return;
    w = factory->second();
    w->installEventFilter(this);
  }
  w->show();
  w->raise();
  w->activateWindow();
}

void QtWindows::unload(FormId form) {
  retire(form);
}

void QtWindows::retire(FormId form) {
  auto it = open_.find(form);
  if (it == open_.end()) return;
  QPointer<QWidget> w = it->second;
  open_.erase(it);
  // The window's own unload runs while it is still on screen; it no longer counts as loaded.
  if (auto h = unload_handlers.find(form); h != unload_handlers.end() && h->second) {
    if (run)
      run(h->second);
    else
      h->second();
  }
  if (!w) return;
  w->removeEventFilter(this);
  w->hide();
  closed_.push_back(w);
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (!busy || !busy()) collect();
      },
      Qt::QueuedConnection);
}

bool QtWindows::eventFilter(QObject* watched, QEvent* event) {
  // The user closed one of the windows: it is unloaded like any other.
  if (event->type() == QEvent::Close)
    for (const auto& [form, w] : open_)
      if (w == watched) {
        retire(form);
        break;
      }
  return QObject::eventFilter(watched, event);
}

void QtWindows::collect() {
  // Deleted once control is back in the loop that runs now, never under a widget's own signal.
  for (QPointer<QWidget>& w : std::exchange(closed_, {}))
    if (w) w->deleteLater();
}

bool QtWindows::is_loaded(FormId form) const {
  auto it = open_.find(form);
  return it != open_.end() && it->second;
}

QWidget* QtWindows::widget(FormId form) const {
  auto it = open_.find(form);
  return it == open_.end() ? nullptr : it->second.data();
}

void QtWindows::end_program() {
  if (on_end) on_end();
}

}  // namespace nerit::ui
