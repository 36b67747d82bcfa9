#include <ostream>

#include "cli/command.h"
#include "cli/serial_line.h"

namespace nerit::cli {

int run_ports(const Args& args, std::ostream& out, std::ostream&) {
  std::vector<std::string> named;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] != "--port" || i + 1 == args.size())
      throw UsageError("unknown argument " + args[i]);
    named.push_back(args[++i]);
  }
  const auto ports = numbered_ports(named);
  for (std::size_t i = 0; i < ports.size(); ++i)
    out << i + 1 << "  " << ports[i] << "  " << port_kind(ports[i]) << "\n";
  if (ports.empty()) out << "no serial ports\n";
  return kOk;
}

}  // namespace nerit::cli
