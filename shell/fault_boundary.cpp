#include "shell/fault_boundary.h"

#include <new>
#include <stdexcept>

#include "shell/errors.h"

namespace nerit {

namespace {

void report(Dialogs& dialogs, const std::string& text) {
  dialogs.message_box(text, MsgButtons::Ok, MsgIcon::Critical, "Error");
}

}  // namespace

bool run_handler(Dialogs& dialogs, const std::function<void()>& handler) {
  try {
    handler();
    return true;
  } catch (const ProgramClosing&) {
    throw;
  } catch (const ProgramError& e) {
    report(dialogs, e.what());
  } catch (const std::out_of_range&) {
    report(dialogs, "Subscript out of range");
  } catch (const std::bad_alloc&) {
    report(dialogs, "Out of memory");
  } catch (const std::exception& e) {
    report(dialogs, std::string("Unexpected failure: ") + e.what());
  } catch (...) {
    report(dialogs, "Unexpected failure");
  }
  return false;
}

}  // namespace nerit
