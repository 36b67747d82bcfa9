// nerit-sim's command line.
#include "sim/cli_options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nerit::sim {
namespace {

TEST(SimCommandLine, PacesByDefaultReadsEveryOptionAndRejectsBadOnes) {
  std::string error;
  const auto plain = parse_command_line({}, error);
  ASSERT_TRUE(plain);
  EXPECT_TRUE(plain->options.paced);
  EXPECT_FALSE(plain->help);
  EXPECT_TRUE(parse_command_line({"-h"}, error)->help);

  const auto cl =
      parse_command_line({"--no-pacing",    "--interval", "20",           "--debug-interval=100",
                          "--delay",        "7.5",        "--state",      "/tmp/s.bin",
                          "--hold",         "3000",       "--firmware",   "Test",
                          "--boot-loader",  "--drop",     "3,5",          "--drop=9",
                          "--garbage",      "00 ff:55",   "--garbage-on", "2",
                          "--chunk",        "4",          "--silent-at",  "900",
                          "--silent-after", "6",          "--vanish-at",  "1200",
                          "--vanish-after", "8"},
                         error);
  ASSERT_TRUE(cl) << error;
  const Options& o = cl->options;
  const Faults& f = o.faults;
  EXPECT_FALSE(o.paced);
  EXPECT_EQ(std::tuple(o.stream_interval_ms, o.debug_interval_ms, o.reply_delay_ms),
            std::tuple(20, 100, 7.5));
  EXPECT_EQ(o.state_file, "/tmp/s.bin");
  EXPECT_EQ(o.hold_engine_at_ms, 3000);
  EXPECT_EQ(o.firmware, "Test            ");
  EXPECT_TRUE(o.start_in_boot_loader);
  EXPECT_EQ(f.drop_replies, (std::set<int>{3, 5, 9}));
  EXPECT_EQ(f.garbage, std::string("\x00\xFF\x55", 3));
  EXPECT_EQ(f.garbage_replies, (std::set<int>{2}));
  EXPECT_EQ(f.chunk_size, 4u);
  EXPECT_EQ(
      std::tuple(f.silent_from_ms, f.silent_after_replies, f.vanish_at_ms, f.vanish_after_replies),
      std::tuple(900, 6, 1200, 8));

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
    error.clear();
    EXPECT_FALSE(parse_command_line(bad, error)) << bad[0];
    EXPECT_NE(error, "") << bad[0];
  }
}

}  // namespace
}  // namespace nerit::sim
