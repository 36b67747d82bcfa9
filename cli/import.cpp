#include <ostream>
#include <string>

#include "cli/command.h"
#include "files/tune_file.h"
#include "files/tune_text.h"
#include "shell/data_files.h"
#include "shell/errors.h"

namespace nerit::cli {

int run_import(const Args& args, std::ostream& out, std::ostream&) {
  if (args.size() != 2) throw UsageError("a tune file and a CSV file, please");
  const auto csv = read_file_bytes(args[1]);
  if (!csv) throw FileError("The file " + args[1] + " does not exist.");
  const Tune tune = with_maps_csv(read_tune_file(args[0]), std::string(csv->begin(), csv->end()));
  write_tune_file(args[0], tune);
  out << "Both maps of " << args[0] << " replaced from " << args[1] << "\n";
  return kOk;
}

}  // namespace nerit::cli
