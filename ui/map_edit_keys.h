#pragma once
// Copy, paste, undo and redo on one map, from the keyboard of its grid or its cell editor.
#include "maps/edit_commands.h"
#include "ui/map_keys.h"
#include "ui/qt_platform.h"

namespace nerit::ui {

class MapEditKeys {
 public:
  MapEditKeys(EditCommands& edits, MapId map, HandlerRunner run)
      : edits_(edits), map_(map), run_(std::move(run)) {}
  // Runs the command through the handler runner; the clipboard holds the copied block.
  void run(EditKey key) const;

 private:
  EditCommands& edits_;
  MapId map_;
  HandlerRunner run_;
};

}  // namespace nerit::ui
