// nerit-sim as a program: its command line, and the controller on a real pseudo-terminal,
// spoken to through the slave like a serial port.
#include "sim/pty_server.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "sim/cli_options.h"
#include "tests/sim/sim_test_support.h"

namespace nerit::sim {
namespace {

class SimPty : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!server_.open()) GTEST_SKIP() << "no pseudo-terminal: " << server_.error();
    open_port();
  }
  void TearDown() override {
    if (port_ >= 0) ::close(port_);
  }
  void open_port() {
    port_ = ::open(server_.slave_path().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_GE(port_, 0);
    termios tio{};
    ASSERT_EQ(tcgetattr(port_, &tio), 0);
    cfmakeraw(&tio);
    ASSERT_EQ(tcsetattr(port_, TCSANOW, &tio), 0);
  }
  // Writes `frame`, then pumps the server and reads the port until 22 bytes came or two
  // seconds passed.
  std::string exchange(const std::string& frame) {
    EXPECT_EQ(::write(port_, frame.data(), frame.size()), static_cast<ssize_t>(frame.size()));
    std::string got;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    while (got.size() < 22 && std::chrono::steady_clock::now() < deadline) {
      server_.pump(5);
      char buf[256];
      const ssize_t n = ::read(port_, buf, sizeof buf);
      if (n > 0) got.append(buf, static_cast<std::size_t>(n));
    }
    return got;
  }

  PtyServer server_{test::with([](Options& o) { o.paced = true; })};
  int port_ = -1;
};

TEST_F(SimPty, AnswersOnTheSlaveAndKeepsServingWhenThePortIsReopened) {
  EXPECT_EQ(server_.slave_path().rfind("/dev/pts/", 0), 0u);
  // The same bytes as the controller in the test process answers (see its command tests).
  Controller direct;
  EXPECT_EQ(exchange(test::short_connect()),
            test::joined(test::exchange(direct, 0, test::short_connect(), 0)));
  ::close(port_);
  server_.pump(5);
  open_port();
  EXPECT_EQ(exchange(test::command(0x0C, 0x0240)),
            test::joined(test::exchange(direct, 1, test::command(0x0C, 0x0240), 1)));
  EXPECT_EQ(server_.controller().frames_received().size(), 2u);
  EXPECT_TRUE(server_.is_open());
}

TEST(SimPtyVanish, PumpStopsOnceTheLineIsGone) {
  PtyServer server(test::with([](Options& o) { o.faults.vanish_at_ms = 30; }));
  if (!server.open()) GTEST_SKIP() << server.error();
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(2);
  while (server.pump(10) && std::chrono::steady_clock::now() < deadline) {
  }
  EXPECT_FALSE(server.is_open());
  EXPECT_EQ(server.master_fd(), -1);
  EXPECT_TRUE(server.controller().vanished());
  EXPECT_GE(server.now_ms(), 30);
}

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

  for (const char* bad :
       {"--interval 0", "--interval fast", "--delay -1", "--drop 0", "--drop 2,,3", "--garbage abc",
        "--garbage zz", "--chunk", "--colour red", "--vanish-after 2x"}) {
    std::istringstream words(bad);
    error.clear();
    EXPECT_FALSE(parse_command_line({std::istream_iterator<std::string>(words), {}}, error)) << bad;
    EXPECT_NE(error, "") << bad;
  }
}

}  // namespace
}  // namespace nerit::sim
