#include "ui/map_keys.h"

#include "maps/cell_editor.h"

namespace nerit::ui {

int key_code(const QKeyEvent& event) {
  const int key = event.key();
  switch (key) {
    case Qt::Key_Left:
      return kKeyLeft;
    case Qt::Key_Up:
      return kKeyUp;
    case Qt::Key_Right:
      return kKeyRight;
    case Qt::Key_Down:
      return kKeyDown;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return kKeyReturn;
    case Qt::Key_Backspace:
      return kKeyBack;
    case Qt::Key_Home:
      return 36;
    case Qt::Key_End:
      return 35;
    case Qt::Key_Delete:
      return 46;
    default:
      break;
  }
  // Qt's own codes of these keys are their upper-case ASCII codes.
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
  return 0;
}

char key_char(const QKeyEvent& event) {
  const QString text = event.text();
  if (text.size() != 1) return 0;
  const char16_t ch = text.at(0).unicode();
  if ((ch >= 0x20 && ch < 0x7F) || ch == 8 || ch == 13) return static_cast<char>(ch);
  return 0;
}

EditKey edit_key(const QKeyEvent& event) {
  const Qt::KeyboardModifiers mods = event.modifiers() & ~Qt::KeypadModifier;
  if (mods == Qt::ControlModifier) {
    switch (event.key()) {
      case Qt::Key_C:
        return EditKey::Copy;
      case Qt::Key_V:
        return EditKey::Paste;
      case Qt::Key_Z:
        return EditKey::Undo;
      case Qt::Key_Y:
        return EditKey::Redo;
      default:
        return EditKey::None;
    }
  }
  if (mods == (Qt::ControlModifier | Qt::ShiftModifier) && event.key() == Qt::Key_Z)
    return EditKey::Redo;
  return EditKey::None;
}

bool caret_key(const QKeyEvent& event) {
  const Qt::KeyboardModifiers mods = event.modifiers() & ~Qt::KeypadModifier;
  if (mods != Qt::NoModifier && mods != Qt::ShiftModifier) return false;
  const int key = event.key();
  return key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_Delete;
}

}  // namespace nerit::ui
