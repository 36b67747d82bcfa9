// Answers to each command code, checked byte for byte against the memory they touch.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "sim/controller.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

using test::bytes;
using test::command;
using test::exchange;
using test::joined;

const std::string kEnd = bytes({0x0D, 0x0A});

std::string text_frame(const std::string& text, int flag = 0) {
  std::string body = text;
  body.resize(16, '\0');
  return bytes({0x55, 0x00, 0x00, flag}) + body + kEnd;
}

TEST(SimCommands, ConnectAnswersWithTheFirmwareTextInBothFrameLengths) {
  const std::string expected = bytes({0x55, 0xFD, 0, 0}) + "Nerit SIM V1.00 " + kEnd;
  Controller c;
  const auto full = exchange(c, 10, command(0x05), 10);
  ASSERT_EQ(full.size(), 1u);
  EXPECT_EQ(full[0], (Emission{10, expected}));
  const auto short_form = exchange(c, 20, test::short_connect(), 20);
  ASSERT_EQ(short_form.size(), 1u);
  EXPECT_EQ(short_form[0], (Emission{20, expected}));
  EXPECT_TRUE(c.frames_received().back().frame.short_connect);
}

TEST(SimCommands, ReadWorkingMemoryReturnsTheDefaultTune) {
  Controller c;
  EXPECT_EQ(joined(exchange(c, 0, command(0x0C, 0x0240), 0)),
            bytes({0x55, 0x0C, 0x02, 0x40, 1,    1,   20, 230, 0x50, 0x01, 0x20,
                   0x01, 0xB8, 0x01, 0xB8, 0x01, 128, 0,  255, 0,    0x0D, 0x0A}));
  EXPECT_EQ(joined(exchange(c, 1, command(0x0C, 0x0250), 1)),
            bytes({0x55, 0x0C, 0x02, 0x50, 130, 128, 4, 15, 3, 2,    20,
                   2,    20,   0,    1,    0,   0,   0, 0,  0, 0x0D, 0x0A}));
  // Periods of 500 ... 4000 rpm at 30000000 / rpm.
  EXPECT_EQ(joined(exchange(c, 2, command(0x0C, 0x0280), 2)),
            bytes({0x55, 0x0C, 0x02, 0x80, 0x60, 0xEA, 0x30, 0x75, 0x20, 0x4E, 0x98,
                   0x3A, 0xE0, 0x2E, 0x10, 0x27, 0x7B, 0x21, 0x4C, 0x1D, 0x0D, 0x0A}));
  const MemoryWindow& ram = c.working_memory();
  EXPECT_EQ(ram.word(0x0260), 26);   // 20 kPa
  EXPECT_EQ(ram.word(0x027E), 211);  // 250 kPa
  for (int k = 1; k < 16; ++k) EXPECT_GT(ram.word(0x0260 + 2 * k), ram.word(0x025E + 2 * k));
  for (int a = 0x02A0; a < 0x03A0; ++a) ASSERT_EQ(ram.at(a), 128) << a;
  for (int cell = 0; cell < 256; ++cell) {
    const int period = ram.word(0x03A0 + 2 * cell);
    EXPECT_TRUE(period >= 250000 / 3000 && period <= 250000 / 20) << cell;
  }
}

TEST(SimCommands, WriteWorkingMemoryIsAcknowledgedAndReadsBack) {
  Controller c;
  const Block row{0, 1, 2, 13, 0x55, 128, 200, 255, 9, 10, 11, 12, 13, 14, 15, 16};
  EXPECT_EQ(joined(exchange(c, 0, command(0x0B, 0x02B0, row), 0)), text_frame("Write SDram"));
  std::string expected = bytes({0x55, 0x0C, 0x02, 0xB0});
  for (auto b : row) expected.push_back(static_cast<char>(b));
  EXPECT_EQ(joined(exchange(c, 1, command(0x0C, 0x02B0), 1)), expected + kEnd);
  EXPECT_EQ(c.working_memory().at(0x02AF), 128);  // the neighbours are untouched
  EXPECT_EQ(c.working_memory().at(0x02C0), 128);
  EXPECT_EQ(c.eeprom(), c.permanent().eeprom);
}

TEST(SimCommands, WriteEepromIsAcknowledgedAndReadsBackWithoutTouchingWorkingMemory) {
  Controller c;
  const Block data{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
  const MemoryWindow ram_before = c.working_memory();
  EXPECT_EQ(joined(exchange(c, 0, command(0x01, 0x0060, data), 0)), text_frame("Write EEProm"));
  std::string expected = bytes({0x55, 0x02, 0x00, 0x60});
  for (auto b : data) expected.push_back(static_cast<char>(b));
  EXPECT_EQ(joined(exchange(c, 1, command(0x02, 0x0060), 1)), expected + kEnd);
  EXPECT_EQ(c.working_memory(), ram_before);
}

TEST(SimCommands, ReadsOutsideTheMemoriesGiveZerosAndWritesThereAreIgnored) {
  Controller c;
  const MemoryWindow ram_before = c.working_memory();
  exchange(c, 0, command(0x0B, 0x0100, Block{1, 2, 3}), 0);
  EXPECT_EQ(c.working_memory(), ram_before);
  EXPECT_EQ(joined(exchange(c, 1, command(0x0C, 0x0598), 1)),
            bytes({0x55, 0x0C, 0x05, 0x98}) +
                std::string(ram_before.bytes().end() - 8, ram_before.bytes().end()) +
                std::string(8, '\0') + kEnd);
}

TEST(SimCommands, ReloadCopiesTheReducedEepromImageBackIntoWorkingMemory) {
  Controller c;
  // EEPROM row 3, columns 1-8 and row 4, columns 1-8 at 0x60.
  Block maps{};
  for (int i = 0; i < 16; ++i) maps[i] = static_cast<std::uint8_t>(160 + i);
  Block settings{0, 1, 30, 220, 0x00, 0x02, 0x00, 0x01, 0xB8, 0x01, 0x26, 0x02, 102, 1, 127, 0};
  Block load_9_to_12{40, 0, 41, 0, 42, 0, 43, 0, 7, 7, 7, 7, 7, 7, 7, 7};
  c.receive(0, command(0x01, 0x0060, maps) + command(0x01, 0x0010, settings) +
                   command(0x01, 0x0030, load_9_to_12) + command(0x0A, 0, Block{1, 2, 3}));
  const MemoryWindow before = c.working_memory();
  EXPECT_EQ(c.poll(0).size(), 4u);

  c.receive(1, command(0x06));
  EXPECT_TRUE(c.poll(1000).empty());  // no answer to a reload
  const MemoryWindow& ram = c.working_memory();
  EXPECT_EQ(ram.at(0x02A0 + 2 * 16 + 4), 164);  // row 3, column 5
  EXPECT_EQ(ram.at(0x02A0 + 2 * 16 + 0), 160);
  EXPECT_EQ(ram.at(0x02A0 + 3 * 16 + 7), 175);  // row 4, column 8
  EXPECT_EQ(ram.at(0x02A0 + 2 * 16 + 8), 128);  // columns 9-16 stay
  for (int i = 0; i < 15; ++i) EXPECT_EQ(ram.at(0x0240 + i), settings[i]) << i;
  EXPECT_EQ(ram.at(0x024F), 1);  // boost_enable is not in EEPROM
  for (int k = 0; k < 4; ++k) EXPECT_EQ(ram.word(0x0270 + 2 * k), 40 + k);
  for (int a = 0x0278; a < 0x0280; ++a) EXPECT_EQ(ram.at(a), before.at(a)) << a;  // points 13-16
  for (int a = 0x0250; a < 0x0260; ++a) EXPECT_EQ(ram.at(a), before.at(a)) << a;  // block B
  for (int a = 0x0280; a < 0x02A0; ++a) EXPECT_EQ(ram.at(a), before.at(a)) << a;  // speed axis
}

TEST(SimCommands, DefaultEepromHoldsTheReducedCopyOfTheDefaultTune) {
  Controller c;
  c.receive(0, command(0x06));
  EXPECT_EQ(c.working_memory(), Controller().working_memory());
  EXPECT_EQ(c.eeprom().at(0x001F), 0);
  EXPECT_EQ(c.eeprom().block(0x0030),
            (Block{c.working_memory().at(0x0270), c.working_memory().at(0x0271),
                   c.working_memory().at(0x0272), c.working_memory().at(0x0273),
                   c.working_memory().at(0x0274), c.working_memory().at(0x0275),
                   c.working_memory().at(0x0276), c.working_memory().at(0x0277)}));
}

TEST(SimCommands, SettingsCommandsUpdateTheirBytesInBlocksAAndB) {
  Controller c;
  // Slider, offset in 0x0123 (high first), offset out 0x07D0, injsizecorr 102, channels 63.
  const std::string replies =
      joined(exchange(c, 0,
                      command(0x03, 0, Block{160, 0x01, 0x23, 0x07, 0xD0, 102, 63}) +
                          command(0x09, 0, Block{2, 127}) + command(0x0A, 0, Block{1, 140, 204}),
                      0));
  EXPECT_EQ(replies,
            text_frame("Write Injector") + text_frame("Write Airflow") + text_frame("Write Boost"));
  EXPECT_EQ(c.working_memory().block(0x0240),
            (Block{1, 1, 20, 230, 0x23, 0x01, 0xD0, 0x07, 0xB8, 0x01, 0xB8, 0x01, 102, 2, 127, 1}));
  EXPECT_EQ(c.working_memory().block(0x0250),
            (Block{140, 204, 4, 63, 3, 2, 20, 2, 20, 0, 1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(c.manual_adjust(), 160);
}

TEST(SimCommands, UnknownCodesAreRecordedButNotAnswered) {
  Controller c;
  c.receive(0, command(0x07) + command(0x42, 0x0240, Block{1}));
  EXPECT_TRUE(c.poll(1000).empty());
  ASSERT_EQ(c.frames_received().size(), 2u);
  EXPECT_EQ(c.frames_received()[1].frame.code, 0x42);
  EXPECT_EQ(c.frames_received()[1].frame.address(), 0x0240);
  EXPECT_EQ(c.working_memory(), Controller().working_memory());
}

class SimPermanent : public ::testing::Test {
 protected:
  void SetUp() override {
    path_ =
        (std::filesystem::temp_directory_path() /
         ("nerit_sim_state_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
          "_" + ::testing::UnitTest::GetInstance()->current_test_info()->name()))
            .string();
    std::filesystem::remove(path_);
  }
  void TearDown() override { std::filesystem::remove(path_); }

  Options with_state() const {
    Options o;
    o.state_file = path_;
    return o;
  }

  std::string path_;
};

TEST_F(SimPermanent, MakePermanentAnswersWithFlagOneAndSurvivesARestart) {
  const Block row{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
  const Block ee{9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9};
  {
    Controller first(with_state());
    EXPECT_EQ(first.state_error(), "");
    first.receive(0, command(0x0B, 0x0300, row) + command(0x01, 0x0090, ee));
    EXPECT_EQ(first.poll(0).size(), 2u);
    EXPECT_EQ(joined(exchange(first, 1, command(0x08), 1)), text_frame("Permanent", 1));
    EXPECT_EQ(first.permanent().ram, first.working_memory());
    EXPECT_EQ(first.state_error(), "");
    // Volatile after the last 0x08.
    exchange(first, 2, command(0x0B, 0x0310, row), 2);
  }
  Controller second(with_state());
  EXPECT_EQ(second.state_error(), "");
  EXPECT_EQ(second.working_memory().block(0x0300), row);
  EXPECT_EQ(second.working_memory().block(0x0310), Controller().working_memory().block(0x0310));
  EXPECT_EQ(second.eeprom().block(0x0090), ee);
}

TEST_F(SimPermanent, WithoutMakePermanentNothingIsKept) {
  {
    Controller first(with_state());
    exchange(first, 0, command(0x0B, 0x0300, Block{1}), 0);
  }
  EXPECT_FALSE(std::filesystem::exists(path_));
  EXPECT_EQ(Controller(with_state()).working_memory(), Controller().working_memory());
}

TEST_F(SimPermanent, AForeignFileIsReportedAndTheDefaultTuneUsed) {
  std::ofstream(path_) << "not a state file";
  Controller c(with_state());
  EXPECT_NE(c.state_error(), "");
  EXPECT_EQ(c.working_memory(), Controller().working_memory());
}

}  // namespace
}  // namespace nerit::sim
