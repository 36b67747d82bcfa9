#include <ostream>
#include <string>
#include <variant>

#include "cli/command.h"
#include "cli/serial_line.h"
#include "link/frames.h"
#include "link/replies.h"

namespace nerit::cli {

int run_info(const Args& args, std::ostream& out, std::ostream& err) {
  std::string port;
  int timeout_ms = 2000;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (i + 1 == args.size()) throw UsageError("a value is missing after " + args[i]);
    if (args[i] == "--port")
      port = resolve_port(args[++i]);
    else if (args[i] == "--timeout")
      timeout_ms = std::stoi(args[++i]);
    else
      throw UsageError("unknown argument " + args[i]);
  }
  if (port.empty()) throw UsageError("--port DEVICE or a port number, please");
  SerialLine line;
  if (!line.open(port)) {
    err << "nerit-cli info: " << line.error() << "\n";
    return kNoController;
  }
  line.write(connect_frame());
  // The stream may still be on: status frames go by until the firmware's text comes.
  while (auto frame = line.next_frame(timeout_ms)) {
    const auto reply = decode_reply(*frame);
    if (reply && std::holds_alternative<FirmwareReply>(*reply)) {
      std::string text = std::get<FirmwareReply>(*reply).text;
      text.erase(text.find_last_not_of(' ') + 1);
      out << text << "\n";
      return kOk;
    }
  }
  err << "nerit-cli info: no controller answered on " << port << " within " << timeout_ms
      << " ms\n";
  return kNoController;
}

}  // namespace nerit::cli
