// The firmware window against the virtual controller: "Update - Normal" takes the running
// firmware into its boot loader and the loader stores exactly what the window sent.
#include <gtest/gtest.h>

#include "firmware/form2.h"
#include "shell/data_files.h"
#include "sim/controller.h"
#include "tests/support/fake_platform.h"
#include "tests/support/sim_wire.h"

namespace nerit::testing {
namespace {

class Form2SimTest : public ::testing::Test {
 protected:
  Form2SimTest() {
    vars.pfad = folder.path();
    vars.comport = 2;
    form.Form_Load();
    image.resize(1000);
    for (std::size_t i = 0; i < image.size(); ++i) image[i] = static_cast<std::uint8_t>(i ^ 0x5A);
    write_file_bytes(folder.path() / "fw.bin", image);
    fp.dialogs.expect_file(folder.path() / "fw.bin");
    form.Command1_Click();
  }
  std::vector<std::uint8_t> expected() const {
    auto e = image;
    e.resize(130048, 0xFF);
    return e;
  }

  FakePlatform fp;
  TempFolder folder;
  ProgramState vars;
  Form2 form{fp.platform, vars};
  sim::Controller controller;
  SimWire wire{*fp.ports.made.at(0), controller, 2};
  std::vector<std::uint8_t> image;
};

TEST_F(Form2SimTest, NormalUpdateIsStoredByTheVirtualBootLoader) {
  form.Command2_Click();
  fp.clock.advance(500);
  EXPECT_EQ(controller.boot_loader().images_flashed(), 1);
  EXPECT_EQ(controller.boot_loader().flashed_image(), expected());
  EXPECT_EQ(form.c.Label1.caption, "Fertig.");
  EXPECT_FALSE(form.port().port_open());
}

}  // namespace
}  // namespace nerit::testing
