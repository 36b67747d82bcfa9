#pragma once
// The subcommands of nerit-cli: each one a function over its arguments, listed in one table.
#include <iosfwd>
#include <string>
#include <vector>

namespace nerit::cli {

// Exit statuses, distinct for scripts.
enum Exit : int {
  kOk = 0,
  kDiffer = 1,        // diff: the tunes differ
  kUsage = 2,         // unknown command, missing or extra arguments
  kNoController = 3,  // no controller answered on the port
  kTimeOut = 4,       // the controller stopped answering
  kBadFile = 5,       // a file cannot be read, written or is no tune
  kRefused = 6,       // the controller refused what was sent
};

using Args = std::vector<std::string>;

struct Command {
  const char* name;
  const char* usage;    // the arguments, as --help shows them
  const char* summary;  // one line
  int (*run)(const Args& args, std::ostream& out, std::ostream& err);
};

// A usage failure: what() says what is wrong; the command's usage line follows it.
struct UsageError : std::exception {
  explicit UsageError(std::string text) : text_(std::move(text)) {}
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  std::string text_;
};

int run_ports(const Args& args, std::ostream& out, std::ostream& err);
int run_info(const Args& args, std::ostream& out, std::ostream& err);
int run_read(const Args& args, std::ostream& out, std::ostream& err);
int run_write(const Args& args, std::ostream& out, std::ostream& err);
int run_log(const Args& args, std::ostream& out, std::ostream& err);
int run_flash(const Args& args, std::ostream& out, std::ostream& err);
int run_show(const Args& args, std::ostream& out, std::ostream& err);
int run_diff(const Args& args, std::ostream& out, std::ostream& err);
int run_export(const Args& args, std::ostream& out, std::ostream& err);
int run_import(const Args& args, std::ostream& out, std::ostream& err);

const std::vector<Command>& commands();

// Runs argv as nerit-cli does: the exit status, output on out, errors on err.
int run_cli(const Args& argv, std::ostream& out, std::ostream& err);

}  // namespace nerit::cli
