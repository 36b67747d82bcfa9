#pragma once
// Every event handler runs through here: a failure it raises ends that one action with a
// message box (critical icon, title "Error") and the program goes on.
#include <functional>

#include "shell/platform.h"

namespace nerit {

// How the failure's box is shown: modal for actions of the user and timers; without stopping
// anything for serial arrivals, which a wait further down may be waiting on.
enum class FaultBox { Modal, Modeless };

// Returns false when the handler failed. ProgramClosing passes through; LinkLost ends the
// action without a box.
bool run_handler(Dialogs& dialogs, const std::function<void()>& handler,
                 FaultBox box = FaultBox::Modal);

}  // namespace nerit
