#include <ostream>
#include <sstream>

#include "cli/command.h"
#include "cli/controller_line.h"
#include "shell/errors.h"

namespace nerit::cli {

const std::vector<Command>& commands() {
  static const std::vector<Command> table{
      {"ports", "[--port DEVICE]...", "the ports as the window numbers them, with their kind",
       run_ports},
      {"info", "--port DEVICE|N [--timeout MS]", "connects and prints the firmware text", run_info},
      {"read", "FILE.inj|--json --port DEVICE|N [--timeout MS] [--data-dir DIR]",
       "reads the controller's tune into a file (or as JSON to standard output)", run_read},
      {"write",
       "FILE.inj --port DEVICE|N [--eeprom] [--permanent] [--no-backup] [--timeout MS] "
       "[--data-dir DIR]",
       "writes a tune into the working memory and reads it back; --eeprom then writes the "
       "EEPROM, --permanent then makes it permanent",
       run_write},
      {"log",
       "[FILE.csv] --port DEVICE|N [--seconds N] [--frames N] [--timeout MS] [--data-dir DIR]",
       "switches the stream on and writes the data log (to standard output without FILE) until "
       "--seconds, --frames or Ctrl-C; the stream goes off again",
       run_log},
      {"flash",
       "IMAGE.bin --port DEVICE|N [--recovery] [--no-backup] [--timeout MS] [--data-dir DIR]",
       "keeps a restore point of the tune, then sends a firmware image to the boot loader; a "
       "lost acknowledgement ends the update (no block is sent twice); --recovery when the "
       "loader already waits",
       run_flash},
      {"show", "FILE.inj", "the settings and both maps of a tune as text", run_show},
      {"diff", "A.inj B.inj", "the settings and cells that differ (exit status 1 when any do)",
       run_diff},
      {"export", "FILE.inj --csv [OUT.csv]", "both maps as CSV (to standard output without OUT)",
       run_export},
      {"import", "FILE.inj MAPS.csv", "both maps of FILE.inj replaced by those of the CSV",
       run_import},
  };
  return table;
}

namespace {

void help(std::ostream& out) {
  out << "usage: nerit-cli COMMAND [ARGUMENTS]\n       nerit-cli --help | --version\n\n"
         "Reads, writes, logs and flashes a Nerit controller, and works on tune files (.inj),\n"
         "from a terminal.\n\ncommands:\n";
  for (const Command& c : commands()) {
    // The usage line, then the summary under it, wrapped at 80 columns.
    out << "  " << c.name << " " << c.usage;
    std::size_t column = 80;
    std::istringstream words(c.summary);
    for (std::string word; words >> word; column += word.size()) {
      if (column + 1 + word.size() > 80) {
        out << "\n      ";
        column = 6;
      } else {
        out << ' ';
        ++column;
      }
      out << word;
    }
    out << "\n";
  }
  out << "\nEvery wait for the controller ends after --timeout MS (2000); a lost answer is asked\n"
         "for twice more. --port takes a device or a number as the window numbers the ports.\n"
         "Restore points and the pressure-sensor table are in --data-dir (the per-user folder).\n"
         "\nexit status: 0 done, 1 the tunes differ (diff), 2 usage, 3 no controller, 4 the\n"
         "controller stopped answering, 5 a file that cannot be used, 6 the controller refused\n";
}

}  // namespace

int run_cli(const Args& argv, std::ostream& out, std::ostream& err) {
  if (argv.size() == 2 && argv[1] == "--version") {
    out << "nerit-cli " NERIT_VERSION "\n";
    return kOk;
  }
  if (argv.size() < 2 || argv[1] == "--help" || argv[1] == "-h") {
    help(argv.size() < 2 ? err : out);
    return argv.size() < 2 ? kUsage : kOk;
  }
  for (const Command& c : commands()) {
    if (argv[1] != c.name) continue;
    const Args args(argv.begin() + 2, argv.end());
    if (!args.empty() && (args[0] == "--help" || args[0] == "-h")) {
      out << "usage: nerit-cli " << c.name << " " << c.usage << "\n" << c.summary << "\n";
      return kOk;
    }
    try {
      return c.run(args, out, err);
    } catch (const CliFailure& e) {
      err << "nerit-cli " << c.name << ": " << e.what() << "\n";
      return e.exit;
    } catch (const UsageError& e) {
      err << "nerit-cli " << c.name << ": " << e.what() << "\nusage: nerit-cli " << c.name << " "
          << c.usage << "\n";
      return kUsage;
    } catch (const ProgramError& e) {
      err << "nerit-cli " << c.name << ": " << e.what() << "\n";
      return kBadFile;
    }
  }
  err << "nerit-cli: unknown command \"" << argv[1] << "\" (nerit-cli --help lists them)\n";
  return kUsage;
}

}  // namespace nerit::cli
