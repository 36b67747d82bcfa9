// The Nerit tuning program.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QMessageBox>
#include <QStandardPaths>
#include <memory>

#include "setup/sensor_calibration.h"
#include "shell/errors.h"
#include "shell/program_folder.h"
#include "ui/application.h"
#include "ui/program_setup.h"
#include "ui/simulator.h"

namespace {

std::filesystem::path data_folder(const QCommandLineParser& args) {
  nerit::ProgramFolderSources sources;
  sources.executable_folder = QCoreApplication::applicationDirPath().toStdString();
  sources.per_user_folder =
      QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation).toStdString();
  if (args.isSet("data-dir")) sources.data_dir_option = args.value("data-dir").toStdString();
  try {
    return nerit::choose_program_folder(sources);
  } catch (const nerit::ProgramError& e) {
    const auto fallback = std::filesystem::path(QDir::tempPath().toStdString()) / "nerit";
    std::filesystem::create_directories(fallback);
    QMessageBox::critical(
        nullptr, "Error",
        QString::fromStdString(std::string(e.what()) + "\nUsing " + fallback.string()));
    return fallback;
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  nerit::ui::set_up_application();

  QCommandLineParser args;
  args.setApplicationDescription("Tuning tool for the Nerit piggyback injection controller");
  args.addHelpOption();
  args.addVersionOption();
  args.addOption({"data-dir", "Keep the data files (pressure tables, logs) in DIR.", "DIR"});
  args.addOption({"port", "Serial device to number first (repeatable).", "DEVICE"});
  args.addOption({"simulate", "Attach the built-in virtual controller."});
  args.addOption({"no-splash", "Start without the splash window."});
  args.process(app);

  nerit::ui::Application::Options options;
  options.program_folder = data_folder(args);
  options.show_splash = !args.isSet("no-splash");
  for (const QString& device : args.values("port")) options.ports.push_back(device.toStdString());

  // --simulate: the virtual controller serves in this process and gets the next port number.
  // Its MAP sensor is an MPX4250; a folder without pressure tables gets that calibration before
  // the main window's first activation reads Pressure.raw.
  std::unique_ptr<nerit::ui::Simulator> simulator;
  bool wrote_tables = false;
  if (args.isSet("simulate")) {
    try {
      wrote_tables = nerit::write_mpx4250_tables_if_none(options.program_folder);
    } catch (const nerit::ProgramError& e) {
      QMessageBox::critical(nullptr, "Error", QString::fromStdString(e.what()));
    }
    simulator = std::make_unique<nerit::ui::Simulator>(
        nerit::ui::simulator_options(options.program_folder));
    if (simulator->start()) {
      options.simulator_device = simulator->slave_path();
      if (!simulator->state_error().empty())
        QMessageBox::critical(nullptr, "Error",
                              QString::fromStdString(simulator->state_error() +
                                                     "\nThe virtual controller starts from its "
                                                     "demo tune."));
    } else {
      QMessageBox::critical(
          nullptr, "Error",
          QString::fromStdString("The virtual controller cannot start: " + simulator->error()));
      simulator.reset();
    }
  }
  nerit::ui::Application program(options);
  program.start();
  if (wrote_tables) nerit::ui::log_simulator_pressure_tables(program, options.program_folder);
  return app.exec();
}
