#include <ostream>

#include "cli/command.h"
#include "files/tune_file.h"
#include "files/tune_text.h"

namespace nerit::cli {

int run_diff(const Args& args, std::ostream& out, std::ostream&) {
  if (args.size() != 2) throw UsageError("two tune files, please");
  const auto lines = tune_differences(read_tune_file(args[0]), read_tune_file(args[1]));
  for (const std::string& line : lines) out << line << "\n";
  return lines.empty() ? kOk : kDiffer;
}

}  // namespace nerit::cli
