// nerit-screenshots DIR: the program against its built-in virtual controller, driven through
// its handlers, with a picture of each window written to DIR as PNG. Run it on an X server
// (scripts/screenshots starts Xvfb), where the 3-D graph has OpenGL.
#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QTemporaryDir>
#include <QThread>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "files/tune_file.h"
#include "files/tune_window.h"
#include "setup/sensor_calibration.h"
#include "ui/application.h"
#include "ui/main_window.h"
#include "ui/program_setup.h"
#include "ui/simulator.h"

namespace {

using nerit::FormId;

// Answers every question with Yes and every file dialog with `file`.
class ScriptDialogs : public nerit::Dialogs {
 public:
  using Dialogs::message_box;
  nerit::MsgAnswer message_box(const nerit::MessageBoxRequest& r) override {
    std::printf("box: %s: %s\n", r.title.c_str(), r.text.c_str());
    return r.buttons == nerit::MsgButtons::YesNo ? nerit::MsgAnswer::Yes : nerit::MsgAnswer::Ok;
  }
  void notify(const nerit::MessageBoxRequest& r) override { message_box(r); }
  std::filesystem::path file_dialog(const nerit::FileDialogRequest&) override { return file; }
  std::string input_box(const std::string&, const std::string&, const std::string&) override {
    return "";
  }
  std::filesystem::path file;
};

void pump_for(int ms) {
  QElapsedTimer t;
  t.start();
  while (t.elapsed() < ms) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QThread::msleep(5);
  }
}

bool shoot(QWidget* w, const std::filesystem::path& file) {
  if (!w) return false;
  w->raise();
  pump_for(400);
  const QPixmap picture = w->screen()->grabWindow(w->winId());
  const bool ok = picture.save(QString::fromStdString(file.string()));
  std::printf("%s %s (%dx%d)\n", ok ? "wrote" : "FAILED", file.string().c_str(), picture.width(),
              picture.height());
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  nerit::ui::set_up_application();
  if (argc != 2) {
    std::fprintf(stderr, "usage: nerit-screenshots DIR\n");
    return 2;
  }
  const std::filesystem::path out = argv[1];
  std::filesystem::create_directories(out);
  QTemporaryDir temp;
  const std::filesystem::path data = temp.path().toStdString();
  nerit::write_mpx4250_tables_if_none(data);

  nerit::ui::Simulator simulator(nerit::ui::simulator_options(data));
  if (!simulator.start()) {
    std::fprintf(stderr, "virtual controller: %s\n", simulator.error().c_str());
    return 1;
  }
  ScriptDialogs dialogs;
  nerit::ui::Application::Options options;
  options.program_folder = data;
  options.show_splash = false;
  options.dialogs = &dialogs;
  options.simulator_device = simulator.slave_path();
  nerit::ui::Application app(options);
  app.start();
  auto& main = app.main_window();
  main.resize(1600, 1000);
  main.move(0, 0);
  nerit::Form1& f = app.program().form1;
  bool ok = true;

  // Online, the tune read, the live stream on with the boost panel beside it.
  app.run([&] { f.session.Command1_Click(); });
  app.run([&] {
    f.map_controls.Check2.value = 1;
    f.c.Check1.value = 1;
    f.stream.Check1_Click();
    f.panel_controls.List2.list_index = 2;
    f.panels.List2_Click();
  });
  pump_for(8000);
  ok = shoot(&main, out / "main-window-live.png") && ok;

  // A block of the correction map selected for editing.
  app.run([&] {
    f.panel_controls.List2.list_index = 4;
    f.panels.List2_Click();
    nerit::Grid& g = f.c.MSFlexGrid2;
    g.set_current(6, 5);
    f.editor.MSFlexGrid2_MouseDown(1);
    g.row_sel = 9;
    g.col_sel = 9;
    f.editor.MSFlexGrid2_MouseUp(1);
  });
  pump_for(1000);
  ok = shoot(&main, out / "map-edit.png") && ok;

  // The 3-D graph of the correction map.
  app.run([&] { app.windows().show(FormId::Form5); });
  if (QWidget* graph = app.windows().widget(FormId::Form5)) {
    graph->resize(900, 700);
    app.run([&] { app.program().form5.Command1_Click(); });
    pump_for(1500);
    ok = shoot(graph, out / "graph.png") && ok;
    app.run([&] { app.windows().unload(FormId::Form5); });
  }

  // A comparison with a file whose map differs in a few cells.
  const std::filesystem::path other = data / "yesterday.inj";
  nerit::Tune tune = nerit::tune_from_window(f.c, f.vars);
  tune.correction[5][4] += 8;
  tune.correction[6][5] += 5;
  tune.correction[7][6] -= 4;
  tune.boost_set = 150;
  nerit::write_tune_file(other, tune);
  dialogs.file = other;
  app.run([&] { f.compare_file.compare_Click(); });
  pump_for(500);
  ok = shoot(main.comparison(), out / "compare.png") && ok;
  if (main.comparison()) main.comparison()->close();

  // The base settings.
  app.run([&] { f.shell.Grundeinstellungen_Click(); });
  ok = shoot(app.windows().widget(FormId::Form3), out / "base-settings.png") && ok;
  app.run([&] { app.windows().unload(FormId::Form3); });

  // The firmware window with an image loaded (the stream off, the port handed over).
  app.run([&] {
    f.c.Check1.value = 0;
    f.stream.Check1_Click();
  });
  pump_for(500);
  dialogs.file = data / "firmware.bin";
  {
    std::FILE* image = std::fopen(dialogs.file.string().c_str(), "wb");
    for (int i = 0; i < 98304; ++i) std::fputc(i * 7 & 0xFF, image);
    std::fclose(image);
  }
  app.run([&] { f.session.firmwareupdate_Click(); });
  app.run([&] { app.program().form2.Command1_Click(); });
  ok = shoot(app.windows().widget(FormId::Form2), out / "firmware.png") && ok;
  return ok ? 0 : 1;
}
