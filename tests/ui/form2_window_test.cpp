// The firmware window on the offscreen platform: opened from the Controller menu, its widgets
// named, and an image flashed over a pseudo-terminal to a loader the test plays.
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSocketNotifier>

#include "shell/data_files.h"
#include "tests/ui/ui_test_support.h"
#include "ui/form2_window.h"

namespace nerit::ui {
namespace {

class Form2WindowTest : public ProgramTest {
 protected:
  void open(const std::string& port_answer) {
    dialogs.expect_input(port_answer);
    w().menu.at("Firmwareupdate")->trigger();
    window = dynamic_cast<Form2Window*>(app->windows().widget(FormId::Form2));
    ASSERT_NE(window, nullptr);
  }
  const Form2Window::Widgets& w2() { return window->widgets(); }
  Form2Window* window = nullptr;
};

TEST_F(Form2WindowTest, OpensFromTheMenuAndSaysWhenNoPortWasGiven) {
  start();
  open("");
  EXPECT_EQ(window->windowTitle(), "Firmwareupdate");
  EXPECT_EQ(w2().Label1->text(), "No port chosen: use \"Port Open\" for port 14.");
  EXPECT_FALSE(w2().Command2->isEnabled());
  EXPECT_FALSE(w2().Command5->isEnabled());
  for (QPushButton* b : {w2().Command1, w2().Command2, w2().Command3, w2().Command4, w2().Command5})
    EXPECT_EQ(b->accessibleName(), b->text());
  EXPECT_EQ(w2().ProgressBar1->accessibleDescription(), "ProgressBar1");
  EXPECT_EQ(w2().ProgressBar1->maximum(), 130048);
}

TEST_F(Form2WindowTest, FlashesAnImageToALoaderOnThePortItWasGiven) {
  Pty loader;
  start({loader.path});
  open("1");
  EXPECT_EQ(window->windowTitle(), "Firmwareupdate Com:1");
  std::vector<std::uint8_t> image(1000);
  for (std::size_t i = 0; i < image.size(); ++i) image[i] = static_cast<std::uint8_t>(i);
  write_file_bytes(folder.path() / "fw.bin", image);
  dialogs.expect_file(folder.path() / "fw.bin");
  w2().Command1->click();

  // The loader: 0x06 for each 128 bytes, 0x07 after the last block.
  std::string received;
  QSocketNotifier readable(loader.master, QSocketNotifier::Read);
  QObject::connect(&readable, &QSocketNotifier::activated, [&] {
    const std::size_t before = received.size() / 128;
    received += loader.take();
    for (std::size_t block = before; block < received.size() / 128; ++block)
      loader.send(block + 1 == 1016 ? "\x06\x07" : "\x06");
  });
  w2().Command5->click();  // returns once the transfer has ended

  ASSERT_EQ(received.size(), 130048u);
  EXPECT_EQ(received.substr(0, 1000), std::string(image.begin(), image.end()));
  EXPECT_EQ(received.substr(1000), std::string(129048, '\xFF'));
  ASSERT_TRUE(wait_until([&] { return w2().Label1->text() == "Fertig."; }));
  EXPECT_EQ(w2().ProgressBar1->value(), 130048);
  EXPECT_EQ(w2().Label2->text(), "100%");
  EXPECT_FALSE(app->program().form2.port().port_open());
}

}  // namespace
}  // namespace nerit::ui
