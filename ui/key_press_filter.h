#pragma once
// Every character typed into a line edit passes a KeyPress handler first: it returns the
// character to insert, or 0 to drop it. Keys that type nothing (arrows, Delete, Home) pass
// untouched.
#include <QObject>
#include <functional>

class QLineEdit;

namespace nerit::ui {

class KeyPressFilter : public QObject {
 public:
  // key_press gets the character's code (Enter 13, Backspace 8) and returns the one to insert.
  KeyPressFilter(QLineEdit* edit, std::function<int(int)> key_press);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLineEdit* edit_;
  std::function<int(int)> key_press_;
  bool passing_ = false;  // a replaced character on its way into the edit
};

}  // namespace nerit::ui
