#include <fstream>
#include <ostream>

#include "cli/command.h"
#include "files/tune_file.h"
#include "files/tune_text.h"
#include "shell/data_files.h"

namespace nerit::cli {

int run_export(const Args& args, std::ostream& out, std::ostream&) {
  if (args.size() < 2 || args.size() > 3 || args[1] != "--csv")
    throw UsageError("a tune file and --csv, please");
  const std::string csv = maps_csv(read_tune_file(args[0]));
  if (args.size() == 2) {
    out << csv;
    return kOk;
  }
  replace_file_bytes(args[2], std::vector<std::uint8_t>(csv.begin(), csv.end()));
  return kOk;
}

}  // namespace nerit::cli
