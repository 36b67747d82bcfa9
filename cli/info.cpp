#include <ostream>

#include "cli/cli_options.h"
#include "cli/command.h"
#include "cli/controller_line.h"

namespace nerit::cli {

int run_info(const Args& args, std::ostream& out, std::ostream& err) {
  const ParsedArgs a = parse_args(args, {"--port", "--timeout"}, {});
  if (!a.positional.empty()) throw UsageError("unknown argument " + a.positional[0]);
  ControllerLine line(port_of(a), a.number("--timeout", kDefaultTimeoutMs, 1), err);
  out << line.connect() << "\n";
  return kOk;
}

}  // namespace nerit::cli
