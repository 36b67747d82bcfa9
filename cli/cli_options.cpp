#include "cli/cli_options.h"

#include <QStandardPaths>

#include "cli/serial_line.h"

namespace nerit::cli {

std::string ParsedArgs::value(const std::string& option, const std::string& otherwise) const {
  const auto it = values.find(option);
  return it == values.end() ? otherwise : it->second;
}

int ParsedArgs::number(const std::string& option, int otherwise, int min) const {
  const auto it = values.find(option);
  if (it == values.end()) return otherwise;
  const std::string& text = it->second;
  if (text.empty() || text.size() > 9 ||
      text.find_first_not_of("0123456789") != std::string::npos || std::stoi(text) < min)
    throw UsageError(option + " takes a whole number of at least " + std::to_string(min) +
                     ", not \"" + text + "\"");
  return std::stoi(text);
}

ParsedArgs parse_args(const Args& args, const std::set<std::string>& valued,
                      const std::set<std::string>& flags) {
  ParsedArgs parsed;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (valued.count(a)) {
      if (i + 1 == args.size()) throw UsageError("a value is missing after " + a);
      parsed.values[a] = args[++i];
    } else if (flags.count(a)) {
      parsed.flags.insert(a);
    } else if (a.rfind("--", 0) == 0) {
      throw UsageError("unknown option " + a);
    } else {
      parsed.positional.push_back(a);
    }
  }
  return parsed;
}

std::string port_of(const ParsedArgs& args) {
  const std::string port = resolve_port(args.value("--port"));
  if (port.empty()) throw UsageError("--port DEVICE or a port number, please");
  return port;
}

std::filesystem::path data_folder_of(const ParsedArgs& args) {
  if (args.values.count("--data-dir")) return args.value("--data-dir");
  return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation).toStdString();
}

}  // namespace nerit::cli
