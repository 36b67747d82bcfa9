// The Nerit tuning program.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QMessageBox>
#include <QStandardPaths>
#include <memory>

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
  std::unique_ptr<nerit::ui::Simulator> simulator;
  if (args.isSet("simulate")) {
    simulator = std::make_unique<nerit::ui::Simulator>(
        nerit::ui::simulator_options(options.program_folder));
    if (simulator->start()) {
      options.simulator_device = simulator->slave_path();
      if (!simulator->state_error().empty())
        QMessageBox::critical(nullptr, "Error",
                              QString::fromStdString(simulator->state_error() +
                                                     "\nThe virtual controller starts from its "
                                                     "default tune."));
    } else {
      QMessageBox::critical(
          nullptr, "Error",
          QString::fromStdString("The virtual controller cannot start: " + simulator->error()));
      simulator.reset();
    }
  }
  nerit::ui::Application program(options);
  program.start();
  return app.exec();
}
