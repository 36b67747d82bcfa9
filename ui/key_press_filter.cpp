#include "ui/key_press_filter.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace nerit::ui {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;

// The character a key types, or 0 for a key that types none.
int typed_code(const QKeyEvent& e) {
  if (e.key() == Qt::Key_Return || e.key() == Qt::Key_Enter) return kEnter;
  if (e.key() == Qt::Key_Backspace) return kBackspace;
  const QString text = e.text();
  if (text.size() != 1) return 0;
  return text.at(0).unicode();
}

}  // namespace

KeyPressFilter::KeyPressFilter(QLineEdit* edit, std::function<int(int)> key_press)
    : QObject(edit), edit_(edit), key_press_(std::move(key_press)) {
  edit->installEventFilter(this);
}

bool KeyPressFilter::eventFilter(QObject* watched, QEvent* event) {
  if (watched != edit_ || event->type() != QEvent::KeyPress || passing_) return false;
  const auto* e = static_cast<QKeyEvent*>(event);
  const int code = typed_code(*e);
  if (code == 0) return false;
  const int key = key_press_(code);
  if (key == code) return false;
  if (key == 0) return true;
  // The handler typed another character in its place.
  QKeyEvent replaced(QEvent::KeyPress, key == kBackspace ? Qt::Key_Backspace : Qt::Key_unknown,
                     Qt::NoModifier, key == kBackspace ? QString() : QString(QChar(key)));
  passing_ = true;
  QCoreApplication::sendEvent(edit_, &replaced);
  passing_ = false;
  return true;
}

}  // namespace nerit::ui
