// nerit-sim's command line.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sim/cli_options.h"

namespace nerit::sim {
namespace {

std::optional<CommandLine> parse(const std::vector<std::string>& args) {
  std::string error;
  auto cl = parse_command_line(args, error);
  EXPECT_EQ(cl.has_value(), error.empty()) << error;
  return cl;
}

TEST(SimCommandLine, PacesByDefaultAndReadsEveryOption) {
  const auto plain = parse({});
  ASSERT_TRUE(plain);
  EXPECT_TRUE(plain->options.paced);
  EXPECT_FALSE(plain->help);

  const auto cl = parse({"--no-pacing",    "--interval", "20",           "--debug-interval=100",
                         "--delay",        "7.5",        "--state",      "/tmp/s.bin",
                         "--hold",         "3000",       "--firmware",   "Test",
                         "--boot-loader",  "--drop",     "3,5",          "--drop=9",
                         "--garbage",      "00 ff:55",   "--garbage-on", "2",
                         "--chunk",        "4",          "--silent-at",  "900",
                         "--silent-after", "6",          "--vanish-at",  "1200",
                         "--vanish-after", "8"});
  ASSERT_TRUE(cl);
  const Options& o = cl->options;
  EXPECT_FALSE(o.paced);
  EXPECT_EQ(o.stream_interval_ms, 20);
  EXPECT_EQ(o.debug_interval_ms, 100);
  EXPECT_EQ(o.reply_delay_ms, 7.5);
  EXPECT_EQ(o.state_file, "/tmp/s.bin");
  EXPECT_EQ(o.hold_engine_at_ms, 3000);
  EXPECT_EQ(o.firmware, "Test            ");
  EXPECT_TRUE(o.start_in_boot_loader);
  EXPECT_EQ(o.faults.drop_replies, (std::set<int>{3, 5, 9}));
  EXPECT_EQ(o.faults.garbage, std::string("\x00\xFF\x55", 3));
  EXPECT_EQ(o.faults.garbage_replies, (std::set<int>{2}));
  EXPECT_EQ(o.faults.chunk_size, 4u);
  EXPECT_EQ(o.faults.silent_from_ms, 900);
  EXPECT_EQ(o.faults.silent_after_replies, 6);
  EXPECT_EQ(o.faults.vanish_at_ms, 1200);
  EXPECT_EQ(o.faults.vanish_after_replies, 8);
  EXPECT_TRUE(parse({"-h"})->help);
}

TEST(SimCommandLine, RejectsBadValuesAndUnknownFlags) {
  for (const std::vector<std::string>& bad : {std::vector<std::string>{"--interval", "0"},
                                              {"--interval", "fast"},
                                              {"--delay", "-1"},
                                              {"--drop", "0"},
                                              {"--drop", "2,,3"},
                                              {"--garbage", "abc"},
                                              {"--garbage", "zz"},
                                              {"--chunk"},
                                              {"--colour", "red"},
                                              {"--vanish-after", "2x"}}) {
    std::string error;
    EXPECT_FALSE(parse_command_line(bad, error)) << bad[0];
    EXPECT_NE(error, "");
  }
}

}  // namespace
}  // namespace nerit::sim
