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

using Clock = std::chrono::steady_clock;

int open_port(const std::string& path) {
  const int port = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
  termios tio{};
  if (port >= 0 && tcgetattr(port, &tio) == 0) {
    cfmakeraw(&tio);
    tcsetattr(port, TCSANOW, &tio);
  }
  return port;
}

// Writes `frame`, then pumps the server and reads the port until 22 bytes came or two seconds
// passed.
std::string exchange(PtyServer& server, int port, const std::string& frame) {
  EXPECT_EQ(::write(port, frame.data(), frame.size()), static_cast<ssize_t>(frame.size()));
  std::string got;
  const auto deadline = Clock::now() + std::chrono::seconds(2);
  while (got.size() < 22 && Clock::now() < deadline) {
    server.pump(5);
    char buf[256];
    const ssize_t n = ::read(port, buf, sizeof buf);
    if (n > 0) got.append(buf, static_cast<std::size_t>(n));
  }
  return got;
}

TEST(SimPty, AnswersOnTheSlaveKeepsServingWhenReopenedAndStopsOnceTheLineIsGone) {
  PtyServer server(test::with([](Options& o) { o.paced = true; }));
  if (!server.open()) GTEST_SKIP() << "no pseudo-terminal: " << server.error();
  EXPECT_EQ(server.slave_path().rfind("/dev/pts/", 0), 0u);
  // The same bytes as the controller in the test process answers.
  Controller direct;
  int port = open_port(server.slave_path());
  ASSERT_GE(port, 0);
  EXPECT_EQ(exchange(server, port, test::short_connect()),
            test::joined(test::exchange(direct, 0, test::short_connect(), 0)));
  ::close(port);
  server.pump(5);
  port = open_port(server.slave_path());
  EXPECT_EQ(exchange(server, port, test::command(0x0C, 0x0240)),
            test::joined(test::exchange(direct, 1, test::command(0x0C, 0x0240), 1)));
  ::close(port);
  EXPECT_EQ(server.controller().frames_received().size(), 2u);
  EXPECT_TRUE(server.is_open());

  PtyServer vanishing(test::with([](Options& o) { o.faults.vanish_at_ms = 30; }));
  ASSERT_TRUE(vanishing.open());
  const auto deadline = Clock::now() + std::chrono::seconds(2);
  while (vanishing.pump(10) && Clock::now() < deadline) {
  }
  EXPECT_FALSE(vanishing.is_open());
  EXPECT_EQ(vanishing.master_fd(), -1);
  EXPECT_GE(vanishing.now_ms(), 30);
}

// A paced reply is waited for to the nanosecond, not to the next whole millisecond, and a
// wait never ends before the due time.
TEST(SimPty, WaitsForAPacedReplyToTheNanosecond) {
  using std::chrono::nanoseconds;
  EXPECT_EQ(wait_until(10.5, 0.25), nanoseconds(10250000));
  EXPECT_EQ(wait_until(22 * kByteMs, 0), nanoseconds(11458334));  // 11458333.3 ns
  EXPECT_EQ(wait_until(1 + 0x1p-30, 1), nanoseconds(1));
  EXPECT_EQ(wait_until(5, 7), nanoseconds(0));

  PtyServer server(test::with([](Options& o) { o.paced = true; }));
  if (!server.open()) GTEST_SKIP() << "no pseudo-terminal: " << server.error();
  EXPECT_FALSE(server.next_timeout());
  EXPECT_EQ(server.next_timeout_ms(), -1);
  const int port = open_port(server.slave_path());
  ASSERT_GE(port, 0);
  const std::string request = test::command(0x0C, 0x0240);
  ASSERT_EQ(::write(port, request.data(), request.size()), static_cast<ssize_t>(request.size()));
  const auto deadline = Clock::now() + std::chrono::seconds(2);
  while (server.controller().frames_received().empty() && Clock::now() < deadline) server.pump(5);
  ASSERT_EQ(server.controller().frames_received().size(), 1u);
  const auto wait = server.next_timeout();
  ASSERT_TRUE(wait);
  // The whole reply's wire time at most; a whole-millisecond wait would be 12 ms.
  EXPECT_LE(*wait, wait_until(22 * kByteMs, 0));
  ::close(port);
}

TEST(SimCommandLine, PacesByDefaultReadsEveryOptionAndRejectsBadOnes) {
  std::string error;
  const auto plain = parse_command_line({}, error);
  ASSERT_TRUE(plain);
  EXPECT_TRUE(plain->options.paced && !plain->help);
  EXPECT_TRUE(parse_command_line({"-h"}, error)->help);

  // The fault flags are read in the wire tests; these are the rest.
  const auto cl = parse_command_line(
      {"--interval", "20", "--debug-interval=100", "--state", "/tmp/s.bin", "--hold", "3000",
       "--firmware", "Test", "--boot-loader", "--drop", "3,5", "--drop=9", "--garbage", "00 ff:55"},
      error);
  ASSERT_TRUE(cl) << error;
  const Options& o = cl->options;
  EXPECT_EQ(std::tuple(o.stream_interval_ms, o.debug_interval_ms, o.state_file, o.hold_engine_at_ms,
                       o.firmware, o.start_in_boot_loader, o.faults.drop_replies, o.faults.garbage),
            std::tuple(20, 100, "/tmp/s.bin", 3000, "Test            ", true,
                       std::set<int>{3, 5, 9}, std::string("\x00\xFF\x55", 3)));

  for (const char* bad :
       {"--interval 0", "--interval fast", "--delay -1", "--drop 0", "--drop 2,,3", "--garbage abc",
        "--garbage zz", "--chunk", "--colour red", "--vanish-after 2x"}) {
    std::istringstream words(bad);
    error.clear();
    EXPECT_FALSE(parse_command_line({std::istream_iterator<std::string>(words), {}}, error)) << bad;
    EXPECT_NE(error, "") << bad;
  }
}

TEST(SimCommandLine, DemoAsksForTheDemoTuneAndTheHelpListsIt) {
  std::string error;
  EXPECT_FALSE(parse_command_line({}, error)->options.demo_tune);
  const auto cl = parse_command_line({"--no-pacing", "--demo"}, error);
  ASSERT_TRUE(cl) << error;
  EXPECT_TRUE(cl->options.demo_tune);
  EXPECT_FALSE(cl->options.paced);
  EXPECT_NE(usage_text().find("\n  --demo "), std::string::npos);
}

TEST(SimCommandLine, TakesTheBootLoaderTimingAndImageFileAndTheHelpListsThem) {
  std::string error;
  const auto plain = parse_command_line({}, error);
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->options.block_programming_ms, 5);
  EXPECT_EQ(plain->options.flash_image_file, "");

  const auto cl =
      parse_command_line({"--block-programming-ms", "7.5", "--flash-image=/tmp/f.bin"}, error);
  ASSERT_TRUE(cl) << error;
  EXPECT_EQ(cl->options.block_programming_ms, 7.5);
  EXPECT_EQ(cl->options.flash_image_file, "/tmp/f.bin");
  for (const std::vector<std::string>& bad : std::vector<std::vector<std::string>>{
           {"--block-programming-ms", "-1"}, {"--block-programming-ms", "x"}, {"--flash-image="}}) {
    EXPECT_FALSE(parse_command_line(bad, error)) << bad.front();
  }

  EXPECT_NE(usage_text().find("\n  --block-programming-ms MS\n"), std::string::npos);
  EXPECT_NE(usage_text().find("\n  --flash-image FILE "), std::string::npos);
}

}  // namespace
}  // namespace nerit::sim
