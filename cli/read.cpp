#include <ostream>

#include "cli/cli_options.h"
#include "cli/command.h"
#include "cli/controller_line.h"
#include "cli/controller_tune.h"
#include "cli/tune_json.h"
#include "files/tune_file.h"

namespace nerit::cli {

int run_read(const Args& args, std::ostream& out, std::ostream& err) {
  const ParsedArgs a = parse_args(args, kLineOptions, {"--json"});
  const bool json = a.has("--json");
  if (a.positional.size() != (json ? 0u : 1u))
    throw UsageError(json ? "--json writes to standard output: no file, please"
                          : "one FILE.inj to save, or --json");
  ControllerLine line(port_of(a), a.number("--timeout", kDefaultTimeoutMs, 1), err);
  err << "connected: " << line.connect() << "\n";
  const LoadAxisInputs in = load_axis_inputs(data_folder_of(a));
  const Tune tune = read_controller_tune(line, in);
  if (tune.load_type == kLoadMap && in.pressure.empty())
    err << "no PressureSensor.dat in " << data_folder_of(a).string()
        << ": the MAP load headings are 0\n";
  if (json) {
    out << tune_json(tune);
    return kOk;
  }
  write_tune_file(a.positional[0], tune);
  out << "read the controller's tune into " << a.positional[0] << "\n";
  return kOk;
}

}  // namespace nerit::cli
