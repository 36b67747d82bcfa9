#include "shell/fault_boundary.h"

#include <new>
#include <stdexcept>

#include "shell/errors.h"

namespace nerit {

namespace {

void report(Dialogs& dialogs, FaultBox box, const std::string& text) {
  const MessageBoxRequest request{text, MsgButtons::Ok, MsgIcon::Critical, "Error"};
  if (box == FaultBox::Modeless)
    dialogs.notify(request);
  else
    dialogs.message_box(request);
}

}  // namespace

bool run_handler(Dialogs& dialogs, const std::function<void()>& handler, FaultBox box) {
  try {
    handler();
    return true;
  } catch (const ProgramClosing&) {
    throw;
  } catch (const LinkLost&) {
    return false;
  } catch (const ProgramError& e) {
    report(dialogs, box, e.what());
  } catch (const std::out_of_range&) {
    report(dialogs, box, "Subscript out of range");
  } catch (const std::bad_alloc&) {
    report(dialogs, box, "Out of memory");
  } catch (const std::exception& e) {
    report(dialogs, box, std::string("Unexpected failure: ") + e.what());
  } catch (...) {
    report(dialogs, box, "Unexpected failure");
  }
  return false;
}

}  // namespace nerit
