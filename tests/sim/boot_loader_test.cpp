// Firmware updates through the boot loader on the virtual clock: the bytes it stores and keeps
// in the image file, the answers it sends and when, and the faults on its line.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "sim/boot_loader.h"
#include "sim/controller.h"
#include "tests/sim/image_updater.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::command;
using test::ImageUpdater;
using test::joined;

// Long enough for any block's answer, short enough to go on when none comes.
constexpr double kPatienceMs = 50;

std::string erased(std::size_t bytes) {
  return std::string(bytes, '\xFF');
}

// An image whose blocks all differ, so a shifted or lost block shows.
std::string numbered_image() {
  std::string image(BootLoader::kImageBytes, '\0');
  for (std::size_t i = 0; i < image.size(); ++i) image[i] = static_cast<char>(i * 7 + i / 128);
  return image;
}

std::vector<std::uint8_t> as_vector(const std::string& s) {
  return {s.begin(), s.end()};
}

std::vector<std::uint8_t> read_file(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// When each 0x06 arrived.
std::vector<double> acknowledgement_times(const std::vector<Emission>& heard) {
  std::vector<double> times;
  for (const Emission& e : heard) {
    if (e.bytes == "\x06") times.push_back(e.at_ms);
  }
  return times;
}

class SimBootLoader : public ::testing::Test {
 protected:
  SimBootLoader() {
    options.paced = true;
    image_path = std::filesystem::temp_directory_path() /
                 ("nerit_sim_image_" + std::to_string(::getpid()) + "_" +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".bin");
  }
  ~SimBootLoader() override {
    std::filesystem::remove(image_path);
    std::filesystem::remove(image_path.string() + ".tmp");
  }

  // The controller as `options` make it, and the updater on its line.
  void power_up() {
    controller.emplace(options);
    updater.emplace(*controller);
  }

  // The start request to the running firmware, then its answer.
  void request_boot_loader() {
    updater->write(command(0x04));
    updater->wait(kPatienceMs);
  }

  // A whole update as "Update - Normal" runs it, up to the 0x07.
  void update(const std::string& image) {
    request_boot_loader();
    send_image(image);
  }

  void send_image(const std::string& image) {
    updater->send_image(image, kPatienceMs);
    updater->wait(BootLoader::kProgrammingMs + kPatienceMs);
  }

  Options options;
  std::filesystem::path image_path;
  std::optional<Controller> controller;
  std::optional<ImageUpdater> updater;
};

TEST_F(SimBootLoader, AThousandByteImageIsStoredWithItsErasedTailAndWrittenToTheImageFile) {
  options.flash_image_file = image_path.string();
  power_up();
  std::string file(1000, '\0');
  for (std::size_t i = 0; i < file.size(); ++i) file[i] = static_cast<char>(i * 13 + 5);
  update(file + erased(129048));

  std::vector<std::uint8_t> expected(file.begin(), file.end());
  expected.resize(130048, 0xFF);
  EXPECT_EQ(controller->boot_loader().flashed_image(), expected);
  EXPECT_EQ(read_file(image_path), expected);
  EXPECT_FALSE(std::filesystem::exists(image_path.string() + ".tmp"));
  EXPECT_EQ(controller->image_file_error(), "");
}

TEST_F(SimBootLoader, EveryBlockIsAcknowledgedThenTheFinishFollowsTheProgrammingTime) {
  power_up();
  update(numbered_image());
  const std::vector<Emission>& heard = updater->heard();
  ASSERT_EQ(joined(heard), "\x05" + std::string(1016, '\x06') + "\x07");
  const double last_byte = updater->block_ends_ms().back();
  EXPECT_DOUBLE_EQ(heard.at(1016).at_ms, last_byte + 5 + kByteMs);
  EXPECT_DOUBLE_EQ(heard.at(1017).at_ms, last_byte + (5 + 100) + kByteMs);
}

// What a benchmark reports as programming time is what the update takes besides the wire.
TEST_F(SimBootLoader, AWholeUpdateTakesItsWireTimePlusTheImagesProgrammingTime) {
  power_up();
  update(numbered_image());
  ASSERT_EQ(updater->heard().back().bytes, "\x07");
  // The request and 0x05, then each block and its 0x06; the last 0x06 goes out while the
  // loader finishes, so the 0x07 takes its place on the wire.
  const double wire_bytes = 22 + 1 + 1016 * (128 + 1);
  EXPECT_NEAR(updater->heard().back().at_ms,
              wire_bytes * kByteMs + BootLoader::image_programming_ms(5), 1e-6);
}

TEST_F(SimBootLoader, StartedWaitingItSendsNothingUntilBlocksComeAndTakesThemAtOnce) {
  options.start_in_boot_loader = true;
  power_up();
  EXPECT_EQ(controller->next_due(), -1);
  updater->listen_until(5000);
  EXPECT_TRUE(updater->heard().empty());

  const std::string image = numbered_image();
  send_image(image);
  EXPECT_EQ(joined(updater->heard()), std::string(1016, '\x06') + "\x07");
  EXPECT_EQ(controller->boot_loader().flashed_image(), as_vector(image));
  EXPECT_TRUE(controller->frames_received().empty());
}

TEST_F(SimBootLoader, ADroppedAcknowledgementIsNeverSentAndTheNextBlockIsStillAcknowledged) {
  options.faults.drop_replies = {4};  // 0x05 is reply 1, so this is block 3's 0x06
  power_up();
  const std::string image = numbered_image();
  update(image);

  std::vector<double> expected;
  const std::vector<double>& ends = updater->block_ends_ms();
  for (std::size_t k = 0; k < ends.size(); ++k) {
    if (k != 2) expected.push_back(ends[k] + 5 + kByteMs);
  }
  EXPECT_EQ(acknowledgement_times(updater->heard()), expected);
  EXPECT_EQ(updater->heard().back().bytes, "\x07");
  EXPECT_EQ(controller->boot_loader().flashed_image(), as_vector(image));
}

TEST_F(SimBootLoader, SilentAfterItsRepliesTheLoaderStopsAnsweringButStillProgramsTheImage) {
  options.faults.silent_after_replies = 3;
  power_up();
  const std::string image = numbered_image();
  update(image);
  EXPECT_EQ(joined(updater->heard()), "\x05\x06\x06");
  EXPECT_EQ(controller->boot_loader().flashed_image(), as_vector(image));
}

TEST_F(SimBootLoader, AVanishingLineCutsTheTransferMidway) {
  options.faults.vanish_at_ms = 1000;
  power_up();
  update(numbered_image());
  std::size_t arrived = 0, answered = 0;
  for (double end : updater->block_ends_ms()) {
    arrived += end < 1000 ? 1 : 0;
    answered += end + 5 + kByteMs <= 1000 ? 1 : 0;
  }
  ASSERT_GT(answered, 0u);
  EXPECT_TRUE(controller->vanished());
  EXPECT_EQ(joined(updater->heard()), "\x05" + std::string(answered, '\x06'));
  EXPECT_EQ(controller->boot_loader().blocks_received(), arrived);
  EXPECT_EQ(controller->boot_loader().images_flashed(), 0);
}

TEST_F(SimBootLoader, AfterTheLastBlockTheFirmwareRestartsFromThePermanentState) {
  power_up();
  updater->write(command(0x0B, 0x02A0, Block{1, 2, 3}));
  updater->wait(kPatienceMs);
  ASSERT_EQ(controller->working_memory().at(0x02A0), 1);
  update(numbered_image());
  EXPECT_FALSE(controller->boot_loader().active());
  EXPECT_EQ(controller->working_memory(), controller->permanent().ram);

  const std::size_t before = updater->heard().size();
  updater->write(test::short_connect());
  ASSERT_TRUE(updater->wait(kPatienceMs));
  EXPECT_EQ(updater->heard().at(before).bytes.substr(0, 2), "\x55\xFD");
}

TEST_F(SimBootLoader, AnImageFileThatCannotBeWrittenIsReportedAndTheImageStillKept) {
  const std::filesystem::path missing = image_path.string() + ".missing/image.bin";
  options.flash_image_file = missing.string();
  power_up();
  const std::string image = numbered_image();
  update(image);
  EXPECT_NE(controller->image_file_error().find(missing.string()), std::string::npos);
  EXPECT_EQ(controller->boot_loader().flashed_image(), as_vector(image));
}

}  // namespace
}  // namespace nerit::sim
