// The firmware window against a boot loader stand-in on the virtual clock: the bytes it sends,
// the waits, the progress, the loader's replies, the port it opens and how it ends.
#include "firmware/form2.h"

#include <gtest/gtest.h>

#include "shell/data_files.h"
#include "shell/fault_boundary.h"
#include "tests/support/fake_platform.h"

namespace nerit::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Strings = std::vector<std::string>;

// A boot loader on the far end of the firmware window's port: 0x05 after the start request,
// 0x06 after each 128 image bytes (unless told to lose one), 0x07 after the last block.
class LoaderStandIn {
 public:
  LoaderStandIn(FakeSerialPort& port, int number) : port_(port) {
    port_.present.insert(number);
    port_.on_output = [this](int, const std::string& chars) {
      for (char ch : chars) take(static_cast<std::uint8_t>(ch));
    };
  }
  void take(std::uint8_t byte) {
    if (start_.size() < 22 && expect_request) {
      start_.push_back(byte);
      if (start_.size() == 22) port_.arrive_after(ready_after_ms, "\x05");
      return;
    }
    if (first_image_byte_ms < 0) first_image_byte_ms = port_.clock().now_ms();
    image.push_back(byte);
    if (image.size() % 128 != 0) return;
    const auto block = static_cast<long>(image.size() / 128);
    if (on_block) on_block(block);
    if (block == lose_ack_of_block) return;
    port_.arrive_after(2, "\x06");
    if (block == 1016) port_.arrive_after(100, "\x07");
  }

  bool expect_request = true;
  long long ready_after_ms = 10;
  long lose_ack_of_block = 0;
  long long first_image_byte_ms = -1;
  Bytes image;
  std::function<void(long block)> on_block;

 private:
  FakeSerialPort& port_;
  Bytes start_;
};

class Form2Test : public ::testing::Test {
 protected:
  Form2Test() {
    vars.pfad = folder.path();
    vars.comport = 3;
  }
  FakeSerialPort& port() { return *fp.ports.made.at(0); }
  void load_image(const Bytes& image, const std::string& name = "fw.bin") {
    write_file_bytes(folder.path() / name, image);
    fp.dialogs.expect_file(folder.path() / name);
    form.Command1_Click();
  }
  static Bytes image_of(std::size_t size) {
    Bytes b(size);
    for (std::size_t i = 0; i < size; ++i) b[i] = static_cast<std::uint8_t>(i * 31 + 7);
    return b;
  }
  void run(const std::function<void()>& handler) { run_handler(fp.dialogs, handler); }

  FakePlatform fp;
  TempFolder folder;
  ProgramState vars;
  Form2 form{fp.platform, vars};
  LoaderStandIn loader{port(), 3};
};

TEST(FirmwareImage, TheStartRequestIs22Bytes) {
  const std::string r = boot_loader_request();
  ASSERT_EQ(r.size(), 22u);
  EXPECT_EQ(r.substr(0, 2), "\x55\x04");
  EXPECT_EQ(r.substr(2, 19), std::string(19, '\0'));
  EXPECT_EQ(r.back(), '\x0D');
}

TEST(FirmwareImage, TheTimeTextGivesElapsedAndLeft) {
  EXPECT_EQ(transfer_time_text(kTransferBytes / 2, 33000), "0:33 elapsed, 0:33 left");
  EXPECT_EQ(transfer_time_text(kTransferBytes, 67700), "1:07 elapsed");
}

TEST_F(Form2Test, OpeningUsesTheMainWindowsPortAtTheLineSettings) {
  form.Form_Load();
  EXPECT_EQ(port().opened, std::vector<int>{3});
  EXPECT_EQ(port().opened_settings, Strings{"19200,N,8,1"});
  EXPECT_EQ(form.c.caption, "Firmwareupdate Com:3");
}

TEST_F(Form2Test, WithoutAPortTheUserIsAsked) {
  vars.comport = 0;
  fp.dialogs.expect_input("3");
  form.Form_Load();
  EXPECT_EQ(fp.dialogs.input_prompts, Strings{"Comport:"});
  EXPECT_EQ(port().opened, std::vector<int>{3});
  EXPECT_EQ(form.c.caption, "Firmwareupdate Com:3");
}

TEST_F(Form2Test, AnEmptyAnswerLeavesTheWindowWithoutAPort) {
  vars.comport = 0;
  fp.dialogs.expect_input("");
  form.Form_Load();
  EXPECT_TRUE(port().opened.empty());
  EXPECT_EQ(form.c.caption, "Firmwareupdate");
  EXPECT_EQ(form.c.Label1.caption, "No port chosen: use \"Port Open\" for port 14.");
}

TEST_F(Form2Test, AnAnswerThatIsNoNumberLeavesTheWindowWithoutAPort) {
  vars.comport = 0;
  fp.dialogs.expect_input("COM3");
  form.Form_Load();
  EXPECT_TRUE(port().opened.empty());
  EXPECT_EQ(form.c.Label1.caption, "\"COM3\" is no port number (1-255).");
}

TEST_F(Form2Test, APortThatCannotOpenIsSaidInTheStatus) {
  vars.comport = 9;
  form.Form_Load();
  EXPECT_EQ(form.c.Label1.caption, "Port 9 cannot be opened: Device unavailable");
}

TEST_F(Form2Test, LoadFileAsksInTheProgramFolderForBinaryFiles) {
  load_image(image_of(10));
  const FileDialogRequest& r = fp.dialogs.file_requests.at(0);
  EXPECT_EQ(r.title, "Open");
  EXPECT_EQ(r.folder, folder.path());
  EXPECT_EQ(r.filter, "Binary Files (*.bin)|*.bin");
  EXPECT_EQ(form.file_length(), 10);
}

TEST_F(Form2Test, BothUpdateButtonsWaitForAnImage) {
  EXPECT_FALSE(form.c.Command2.enabled);
  EXPECT_FALSE(form.c.Command5.enabled);
  load_image(image_of(10));
  EXPECT_TRUE(form.c.Command2.enabled);
  EXPECT_TRUE(form.c.Command5.enabled);
}

TEST_F(Form2Test, AnImageOf130084BytesIsTaken) {
  load_image(image_of(130084));
  EXPECT_TRUE(fp.dialogs.shown.empty());
}

TEST_F(Form2Test, AnImageOf130085BytesIsTooLargeButTheButtonsAreEnabled) {
  fp.dialogs.expect("Error|Critical|Ok|Datei zu groß!");
  load_image(image_of(130085));
  EXPECT_TRUE(form.c.Command2.enabled);
  EXPECT_TRUE(form.c.Command5.enabled);
}

class Form2TransferTest : public Form2Test {
 protected:
  Form2TransferTest() { form.Form_Load(); }
};

TEST_F(Form2TransferTest, ASmallImageGoesOutWithErasedFlashAfterIt) {
  const Bytes image = image_of(1000);
  load_image(image);
  form.Command2_Click();
  Bytes expected = image;
  expected.resize(130048, 0xFF);
  EXPECT_EQ(loader.image, expected);
}

TEST_F(Form2TransferTest, NormalSendsTheStartRequestFirst) {
  load_image(image_of(1000));
  form.Command2_Click();
  EXPECT_EQ(port().written[3].substr(0, 22), boot_loader_request());
  EXPECT_EQ(port().written[3].size(), 22u + 130048u);
}

TEST_F(Form2TransferTest, EveryByteIsWrittenOnItsOwn) {
  load_image(image_of(1000));
  form.Command2_Click();
  EXPECT_EQ(port().output_calls, 22 + 130048);
}

TEST_F(Form2TransferTest, NormalWaitsForAReplyBeforeTheFirstImageByte) {
  loader.ready_after_ms = 700;
  load_image(image_of(1000));
  form.Command2_Click();
  EXPECT_EQ(loader.first_image_byte_ms, 700);
}

TEST_F(Form2TransferTest, RecoverySendsNoStartRequest) {
  loader.expect_request = false;
  const Bytes image = image_of(300);
  load_image(image);
  form.Command5_Click();
  EXPECT_EQ(static_cast<std::uint8_t>(port().written[3][0]), image[0]);
  EXPECT_EQ(port().written[3].size(), 130048u);
  EXPECT_EQ(loader.first_image_byte_ms, 0);
}

TEST_F(Form2TransferTest, EachBlockWaitsForItsAcknowledgement) {
  load_image(image_of(1000));
  std::vector<long long> block_at;
  loader.on_block = [&](long) { block_at.push_back(fp.clock.now_ms()); };
  form.Command2_Click();
  ASSERT_EQ(block_at.size(), 1016u);
  // The stand-in acknowledges 2 ms after a block: the next block comes no earlier.
  for (std::size_t i = 1; i < block_at.size(); ++i)
    EXPECT_EQ(block_at[i], block_at[i - 1] + 2) << i;
}

TEST_F(Form2TransferTest, ProgressShowsTheFirstTheMiddleAndTheLastBlock) {
  load_image(image_of(1000));
  std::map<long, std::string> shown;
  // Read while the window waits for the block's acknowledgement.
  loader.on_block = [&](long block) {
    fp.clock.schedule(1, [&, block] { shown[block] = form.c.Label2.caption; });
  };
  form.Command2_Click();
  EXPECT_EQ(shown[1], "0%");
  EXPECT_EQ(shown[508], "50%");
  EXPECT_EQ(shown[1015], "99%");
  EXPECT_EQ(shown[1016], "100%");
  EXPECT_EQ(form.c.ProgressBar1.value, 130048);
  EXPECT_EQ(form.c.ProgressBar1.max, 130048);
}

TEST_F(Form2TransferTest, TheEndOfTheTransferIsGreenFertig) {
  load_image(image_of(1000));
  form.Command2_Click();
  EXPECT_EQ(form.c.Label1.caption, "Fertig");
  EXPECT_EQ(form.c.Label1.back_color, 65280);
  EXPECT_TRUE(port().port_open());
}

TEST_F(Form2TransferTest, TheLoadersEndIsGreenFertigWithAPointAndClosesThePort) {
  load_image(image_of(1000));
  form.Command2_Click();
  fp.clock.advance(200);
  EXPECT_EQ(form.c.Label1.caption, "Fertig.");
  EXPECT_EQ(form.c.Label1.back_color, 65280);
  EXPECT_FALSE(port().port_open());
}

TEST_F(Form2TransferTest, ReadyAndBlockRepliesShowInTheStatus) {
  load_image(image_of(1000));
  std::string after_ready;
  loader.on_block = [&](long block) {
    if (block == 1) after_ready = form.c.Label1.caption;
    if (block == 2) after_ready += " " + form.c.Label1.caption;
  };
  form.Command2_Click();
  EXPECT_EQ(after_ready, "Bereit. Übertragen.");
}

TEST_F(Form2TransferTest, NothingCanStartASecondTransferWhileOneRuns) {
  load_image(image_of(1000));
  std::vector<bool> enabled;
  loader.on_block = [&](long block) {
    if (block != 3) return;
    for (const CommandButton* b :
         {&form.c.Command1, &form.c.Command2, &form.c.Command4, &form.c.Command5})
      enabled.push_back(b->enabled);
    form.Command5_Click();  // as a click that got through would
  };
  form.Command2_Click();
  EXPECT_EQ(enabled, std::vector<bool>(4, false));
  EXPECT_EQ(loader.image.size(), 130048u);
  EXPECT_TRUE(form.c.Command2.enabled);
}

TEST_F(Form2TransferTest, ARestorePointIsKeptBeforeTheStartRequest) {
  load_image(image_of(10));
  std::size_t written_before = 99;
  form.before_update = [&] { written_before = port().written[3].size(); };
  form.Command2_Click();
  EXPECT_EQ(written_before, 0u);
}

TEST_F(Form2TransferTest, ALostAcknowledgementLeavesTheWindowWaitingUntilClose) {
  loader.lose_ack_of_block = 40;
  load_image(image_of(1000));
  bool waiting_at_close = false;
  fp.windows.unload_handlers[FormId::Form2] = [&] { form.Form_Unload(); };
  fp.windows.loaded.insert(FormId::Form2);
  fp.clock.schedule(5000, [&] {
    waiting_at_close = form.transferring();
    form.Command3_Click();
  });
  fp.dialogs.expect("Hinweis|None|Ok|Please restart Nerit");
  form.Command2_Click();
  EXPECT_TRUE(waiting_at_close);
  EXPECT_EQ(loader.image.size(), 40u * 128u);
  EXPECT_FALSE(port().port_open());
  EXPECT_FALSE(form.transferring());
}

TEST_F(Form2TransferTest, ALineThatVanishesEndsTheTransfer) {
  load_image(image_of(1000));
  port().vanish_after(300);
  form.Command2_Click();
  EXPECT_EQ(form.c.Label1.caption, "Port closed: device removed");
  EXPECT_LT(loader.image.size(), 130048u);
  EXPECT_TRUE(form.c.Command2.enabled);
}

TEST_F(Form2TransferTest, AnUpdateWithoutAnImageSaysSo) {
  form.c.Command5.enabled = true;
  fp.dialogs.expect("Error|Critical|Ok|Load the firmware file (\"Load File\") before the update.");
  run([&] { form.Command5_Click(); });
  EXPECT_TRUE(port().written[3].empty());
}

TEST_F(Form2Test, PortOpenUsesPort14) {
  LoaderStandIn waiting(port(), 14);
  form.Command4_Click();
  EXPECT_EQ(port().opened, std::vector<int>{14});
  EXPECT_EQ(form.c.Label1.caption, "Warte....");
  EXPECT_TRUE(form.c.Command2.enabled);
  EXPECT_TRUE(form.c.Command5.enabled);
}

}  // namespace
}  // namespace nerit::testing
