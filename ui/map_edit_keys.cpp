#include "ui/map_edit_keys.h"

#include <QClipboard>
#include <QGuiApplication>

namespace nerit::ui {

void MapEditKeys::run(EditKey key) const {
  switch (key) {
    case EditKey::Copy: {
      std::string text;
      run_([&] { text = edits_.copy_block(map_); });
      if (!text.empty()) QGuiApplication::clipboard()->setText(QString::fromStdString(text));
      break;
    }
    case EditKey::Paste: {
      const std::string text = QGuiApplication::clipboard()->text().toStdString();
      run_([&] { edits_.paste_block(map_, text); });
      break;
    }
    case EditKey::Undo:
      run_([&] { edits_.undo(); });
      break;
    case EditKey::Redo:
      run_([&] { edits_.redo(); });
      break;
    case EditKey::None:
      break;
  }
}

}  // namespace nerit::ui
