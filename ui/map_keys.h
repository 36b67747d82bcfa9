#pragma once
// Qt key events as the map editors' handlers see them: the key code, the character, the edit
// shortcuts and the keys that only move the caret.
#include <QKeyEvent>

namespace nerit::ui {

// The handlers' key codes (maps/cell_editor.h) for the arrows, Return/Enter and Backspace,
// letters by their upper-case code, digits 48-57, Home 36, End 35, Delete 46; anything else 0.
int key_code(const QKeyEvent& event);
// The typed character when it is one printable ASCII character, backspace or CR; else 0.
char key_char(const QKeyEvent& event);

enum class EditKey { None, Copy, Paste, Undo, Redo };
// Ctrl+C, Ctrl+V, Ctrl+Z, Ctrl+Y and Ctrl+Shift+Z.
EditKey edit_key(const QKeyEvent& event);

// Home, End and Delete (also with Shift): the line edit handles them itself.
bool caret_key(const QKeyEvent& event);

}  // namespace nerit::ui
