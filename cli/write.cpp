#include <ostream>
#include <sstream>

#include "cli/cli_options.h"
#include "cli/command.h"
#include "cli/controller_line.h"
#include "cli/controller_tune.h"
#include "files/tune_memory.h"

namespace nerit::cli {

namespace {

// Reads the blocks back: a block that differs is one the controller did not take.
void verify(ControllerLine& line, const MemoryImage& sent) {
  const MemoryImage held = read_memory(line);
  for (int i = 0; i < kMemoryBlocks; ++i) {
    if (held[static_cast<std::size_t>(i)] == sent[static_cast<std::size_t>(i)]) continue;
    std::ostringstream where;
    where << "0x" << std::hex << std::uppercase << memory_block_address(i);
    throw CliFailure(kRefused, "block " + where.str() + " reads back differently after the write");
  }
}

}  // namespace

int run_write(const Args& args, std::ostream& out, std::ostream& err) {
  const ParsedArgs a = parse_args(args, kLineOptions, {"--eeprom", "--permanent", "--no-backup"});
  if (a.positional.size() != 1) throw UsageError("one FILE.inj to write, please");
  const std::filesystem::path data = data_folder_of(a);
  const LoadAxisInputs in = load_axis_inputs(data);
  // The file is checked whole before anything goes to the controller.
  const Tune tune = tune_to_send(a.positional[0], in);
  const MemoryImage memory = memory_from_tune(tune);
  const EepromImage eeprom = eeprom_from_tune(tune);

  ControllerLine line(port_of(a), a.number("--timeout", kDefaultTimeoutMs, 1), err);
  err << "connected: " << line.connect() << "\n";
  if (!a.has("--no-backup")) keep_restore_point(line, in, data, "nerit-cli write", err);
  write_memory(line, memory);
  verify(line, memory);
  out << "wrote " << a.positional[0] << " into the working memory"
      << (a.has("--permanent") ? "\n" : " (lost at power-off until made permanent)\n");
  if (a.has("--eeprom")) {
    write_eeprom(line, eeprom);
    out << "wrote it to the EEPROM\n";
  }
  if (a.has("--permanent")) {
    make_permanent(line);
    out << "made the working memory permanent\n";
  }
  return kOk;
}

}  // namespace nerit::cli
