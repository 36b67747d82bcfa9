// Answers to each command code, checked byte for byte against the memory they touch.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "sim/controller.h"
#include "tests/sim/sim_test_support.h"
#include "tests/support/reply_frames.h"

namespace nerit::sim {
namespace {

using test::bytes;
using test::command;
using test::exchange;
using test::joined;
using testing::hex_bytes;
using testing::text_reply;

// A reply frame of `type` for the block at `address`.
std::string block_frame(int type, int address, const Block& data) {
  return bytes({0x55, type, address >> 8, address & 0xFF}) + std::string(data.begin(), data.end()) +
         "\r\n";
}

TEST(SimCommands, ReadWorkingMemoryReturnsTheDefaultTune) {
  Controller c;
  EXPECT_EQ(hex_bytes(joined(exchange(c, 0, command(0x0C, 0x0240), 0))),
            "55 0C 02 40 01 01 14 E6 50 01 20 01 B8 01 B8 01 80 00 FF 00 0D 0A");
  EXPECT_EQ(hex_bytes(joined(exchange(c, 1, command(0x0C, 0x0250), 1))),
            "55 0C 02 50 82 80 04 0F 03 02 14 02 14 00 01 00 00 00 00 00 0D 0A");
  // Periods of 500 ... 4000 rpm at 30000000 / rpm.
  EXPECT_EQ(hex_bytes(joined(exchange(c, 2, command(0x0C, 0x0280), 2))),
            "55 0C 02 80 60 EA 30 75 20 4E 98 3A E0 2E 10 27 7B 21 4C 1D 0D 0A");
  const MemoryWindow& ram = c.working_memory();
  EXPECT_EQ(ram.word(0x0260) * 1000 + ram.word(0x027E), 26 * 1000 + 211);  // 20 and 250 kPa
}

TEST(SimCommands, WritesAreAcknowledgedAndReadBackEachInItsOwnMemory) {
  const Block row{0, 1, 2, 13, 0x55, 128, 200, 255, 9, 10, 11, 12, 13, 14, 15, 16};
  Controller c;
  EXPECT_EQ(joined(exchange(c, 0, command(0x0B, 0x02B0, row), 0)), text_reply("Write SDram"));
  EXPECT_EQ(joined(exchange(c, 1, command(0x0C, 0x02B0), 1)), block_frame(0x0C, 0x2B0, row));
  EXPECT_EQ(c.working_memory().at(0x02AF) + c.working_memory().at(0x02C0), 2 * 128);
  EXPECT_EQ(c.eeprom(), Controller().eeprom());
  const MemoryWindow ram = c.working_memory();
  EXPECT_EQ(joined(exchange(c, 2, command(0x01, 0x0060, row), 2)), text_reply("Write EEProm"));
  EXPECT_EQ(joined(exchange(c, 3, command(0x02, 0x0060), 3)), block_frame(0x02, 0x060, row));
  // Outside the memories: writes are ignored, reads give zeros.
  exchange(c, 4, command(0x0B, 0x0100, Block{1, 2, 3}), 4);
  EXPECT_EQ(c.working_memory(), ram);
  EXPECT_EQ(joined(exchange(c, 5, command(0x0C, 0x0598), 5)),
            bytes({0x55, 0x0C, 0x05, 0x98}) +
                std::string(ram.bytes().end() - 8, ram.bytes().end()) + std::string(8, '\0') +
                "\r\n");
}

TEST(SimCommands, AControllerThatForgetsWritesAcknowledgesThemAndKeepsItsMemory) {
  Options o;
  o.faults.forget_ram_writes = true;
  Controller c(o);
  const MemoryWindow ram = c.working_memory();
  EXPECT_EQ(joined(exchange(c, 0, command(0x0B, 0x02B0, Block{1, 2, 3}), 0)),
            text_reply("Write SDram"));
  EXPECT_EQ(c.working_memory(), ram);
}

TEST(SimCommands, ReloadCopiesTheReducedEepromImageBackIntoWorkingMemoryWithoutAnAnswer) {
  Controller c;  // the default EEPROM holds the reduced copy of the default tune
  c.receive(0, command(0x06));
  EXPECT_EQ(c.working_memory(), Controller().working_memory());
  Block maps{};
  for (int i = 0; i < 16; ++i) maps[i] = static_cast<std::uint8_t>(160 + i);
  const Block settings{0, 1, 30, 220, 0, 2, 0, 1, 0xB8, 1, 0x26, 2, 102, 1, 127, 0};
  c.receive(0,
            command(0x01, 0x0060, maps) + command(0x01, 0x0010, settings) +
                command(0x01, 0x0030, Block{40, 0, 41, 0, 42, 0, 43, 0, 7, 7, 7, 7, 7, 7, 7, 7}) +
                command(0x0A, 0, Block{1, 2, 3}));
  const MemoryWindow before = c.working_memory();
  EXPECT_EQ(c.poll(0).size(), 4u);

  c.receive(1, command(0x06));
  EXPECT_TRUE(c.poll(1000).empty());
  const MemoryWindow& ram = c.working_memory();
  // EEPROM 0x60: row 3, columns 1-8 and row 4, columns 1-8; columns 9-16 stay.
  EXPECT_EQ(ram.block(0x02C0), (Block{160, 161, 162, 163, 164, 165, 166, 167, 128, 128, 128, 128,
                                      128, 128, 128, 128}));
  EXPECT_EQ(ram.at(0x02A0 + 3 * 16 + 7), 175);
  EXPECT_EQ(ram.block(0x0240),  // boost_enable is not in EEPROM
            (Block{0, 1, 30, 220, 0, 2, 0, 1, 0xB8, 1, 0x26, 2, 102, 1, 127, 1}));
  for (int k = 0; k < 4; ++k) EXPECT_EQ(ram.word(0x0270 + 2 * k), 40 + k);
  for (int a = 0x0250; a < 0x02A0; ++a)  // block B, load points 1-8 and 13-16, the speed axis
    EXPECT_EQ(ram.at(a), a >= 0x0270 && a < 0x0278 ? ram.at(a) : before.at(a)) << a;
}

TEST(SimCommands, SettingsCommandsUpdateTheirBytesAndUnknownCodesAreOnlyRecorded) {
  Controller c;
  // Slider, offset in 0x0123 (high first), offset out 0x07D0, injsizecorr 102, channels 63.
  EXPECT_EQ(
      joined(exchange(c, 0,
                      command(0x03, 0, Block{160, 0x01, 0x23, 0x07, 0xD0, 102, 63}) +
                          command(0x09, 0, Block{2, 127}) + command(0x0A, 0, Block{1, 140, 204}),
                      0)),
      text_reply("Write Injector") + text_reply("Write Airflow") + text_reply("Write Boost"));
  EXPECT_EQ(c.working_memory().block(0x0240),
            (Block{1, 1, 20, 230, 0x23, 0x01, 0xD0, 0x07, 0xB8, 0x01, 0xB8, 0x01, 102, 2, 127, 1}));
  EXPECT_EQ(c.working_memory().block(0x0250),
            (Block{140, 204, 4, 63, 3, 2, 20, 2, 20, 0, 1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(c.manual_adjust(), 160);
  const MemoryWindow ram = c.working_memory();
  c.receive(1, command(0x07) + command(0x42, 0x0240, Block{1}));
  EXPECT_TRUE(c.poll(1000).empty());
  EXPECT_EQ(c.frames_received().back().frame.code, 0x42);
  EXPECT_EQ(c.working_memory(), ram);
}

TEST(SimPermanent, MakePermanentAnswersWithFlagOneAndOnlyThatSurvivesARestart) {
  const std::string path =
      (std::filesystem::temp_directory_path() / ("nerit_sim_state_" + std::to_string(::getpid())))
          .string();
  std::filesystem::remove(path);
  const Options with_state = test::with([&](Options& o) { o.state_file = path; });
  const Block row{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
  const Block ee{9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9};
  {
    Controller first(with_state);
    exchange(first, 0, command(0x0B, 0x0300, row), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
    exchange(first, 1, command(0x01, 0x0090, ee), 1);
    EXPECT_EQ(joined(exchange(first, 2, command(0x08), 2)), text_reply("Permanent", 1));
    exchange(first, 3, command(0x0B, 0x0310, row), 3);  // volatile after the last 0x08
  }
  Controller second(with_state);
  EXPECT_EQ(second.state_error(), "");
  EXPECT_EQ(second.working_memory().block(0x0300), row);
  EXPECT_EQ(second.working_memory().block(0x0310), Controller().working_memory().block(0x0310));
  EXPECT_EQ(second.eeprom().block(0x0090), ee);

  std::ofstream(path) << "not a state file";
  Controller foreign(with_state);
  EXPECT_NE(foreign.state_error(), "");
  EXPECT_EQ(foreign.working_memory(), Controller().working_memory());
  std::filesystem::remove(path);
}

}  // namespace
}  // namespace nerit::sim
