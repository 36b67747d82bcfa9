#pragma once
// Failures that end one action of the program with a message box, never the program.
#include <stdexcept>
#include <string>

namespace nerit {

// Base of every failure a handler may raise; what() is the text the user sees.
struct ProgramError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A number does not fit the byte, word or long it must become.
struct OverflowError : ProgramError {
  OverflowError() : ProgramError("Overflow") {}
};

struct DivisionByZeroError : ProgramError {
  DivisionByZeroError() : ProgramError("Division by zero") {}
};

// A control was given a value it cannot take (a list index past its entries, a negative size).
struct InvalidPropertyError : ProgramError {
  InvalidPropertyError() : ProgramError("Invalid property value") {}
};

// A file could not be opened, read or written.
struct FileError : ProgramError {
  using ProgramError::ProgramError;
};

// A serial port could not be opened or used.
struct SerialError : ProgramError {
  using ProgramError::ProgramError;
};

// The system refused the port to this user (or another program holds it); what() says how to
// get access, in plain words.
struct SerialPermissionError : SerialError {
  explicit SerialPermissionError(const std::string& device)
      : SerialError("No permission to open " + device +
                    ". On Linux your user must be in the 'dialout' group: run "
                    "'sudo usermod -aG dialout $USER' and log in again. If it is, another "
                    "program (ModemManager, for one) may hold the port.") {}
};

// Thrown out of a wait whose port has closed under it (the device went away, or the link was
// closed from inside the wait): the action ends without a box, the link has logged why.
// Not a std::exception, so only the fault boundary's own clause takes it.
struct LinkLost {};

// Thrown out of a wait when the main window has been closed: it unwinds every nested
// handler up to the event loop, which then ends. Deliberately not a std::exception, so
// that no fault boundary turns it into a message box.
struct ProgramClosing {};

}  // namespace nerit
