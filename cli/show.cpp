#include <ostream>

#include "cli/command.h"
#include "files/tune_file.h"
#include "files/tune_text.h"

namespace nerit::cli {

int run_show(const Args& args, std::ostream& out, std::ostream&) {
  if (args.size() != 1) throw UsageError("one tune file, please");
  out << tune_text(read_tune_file(args[0]));
  return kOk;
}

}  // namespace nerit::cli
