// nerit-cli: tune files and the controller from a terminal. The table of subcommands is in
// commands.cpp.
#include <QCoreApplication>
#include <iostream>

#include "cli/command.h"

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);  // the serial port needs one, though no event loop runs
  QCoreApplication::setApplicationName("nerit");  // the program's per-user data folder
  return nerit::cli::run_cli(nerit::cli::Args(argv, argv + argc), std::cout, std::cerr);
}
