// nerit-cli: Nerit tune files from a terminal. The table of subcommands is in commands.cpp.
#include <iostream>

#include "cli/command.h"

int main(int argc, char** argv) {
  return nerit::cli::run_cli(nerit::cli::Args(argv, argv + argc), std::cout, std::cerr);
}
