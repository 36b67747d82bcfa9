#pragma once
// Every event handler runs through here: a failure it raises ends that one action with a
// message box (critical icon, title "Error") and the program goes on.
#include <functional>

#include "shell/platform.h"

namespace nerit {

// Returns false when the handler failed. ProgramClosing passes through.
bool run_handler(Dialogs& dialogs, const std::function<void()>& handler);

}  // namespace nerit
