// Port numbering, and the Qt serial port against a real pseudo-terminal pair: exact bytes both
// ways, the receive event, refusals, line settings on the device, and a device that vanishes.
#include <poll.h>
#include <termios.h>

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <filesystem>
#include <fstream>

#include "link/frames.h"
#include "shell/errors.h"
#include "tests/support/reply_frames.h"
#include "tests/ui/ui_test_support.h"
#include "ui/port_numbering.h"
#include "ui/qt_serial_port.h"

namespace nerit::ui {
namespace {

using Paths = std::vector<std::string>;

std::string error_of(const std::function<void()>& f) {
  try {
    f();
  } catch (const SerialError& e) {
    return e.what();
  }
  return "(no SerialError)";
}

TEST(PortOrdering, NamedThenSimulatorThenAdaptersThenTheRestEachOnce) {
  const Paths ordered = order_ports({"/dev/ttyS3", "ttyUSB7", "/dev/ttyS3"}, "/dev/pts/9",
                                    {"/dev/ttyS10", "/dev/ttyUSB10", "/dev/ttyS2", "/dev/ttyACM0",
                                     "/dev/ttyUSB2", "/dev/ttyUSB7", "/dev/ttyS3", "/dev/ttyAMA0"});
  EXPECT_EQ(ordered,
            (Paths{"/dev/ttyS3", "/dev/ttyUSB7", "/dev/pts/9", "/dev/ttyACM0", "/dev/ttyUSB2",
                   "/dev/ttyUSB10", "/dev/ttyAMA0", "/dev/ttyS2", "/dev/ttyS10"}));
  EXPECT_EQ(port_at(ordered, 1), "/dev/ttyS3");
  EXPECT_EQ(port_at(ordered, 9), "/dev/ttyS10");
  for (int outside : {10, 255, 0, -1}) EXPECT_EQ(port_at(ordered, outside), "") << outside;
  EXPECT_TRUE(order_ports({}, "", {}).empty());
  const char* ascending[] = {"ttyS", "ttyS0", "ttyS9", "ttyS10a", "ttyUSB2", "ttyUSB10"};
  for (std::size_t i = 1; i < std::size(ascending); ++i) {
    EXPECT_TRUE(natural_less(ascending[i - 1], ascending[i])) << ascending[i];
    EXPECT_FALSE(natural_less(ascending[i], ascending[i - 1])) << ascending[i];
  }
  EXPECT_FALSE(natural_less("ttyS1", "ttyS1"));
  EXPECT_NE(natural_less("ttyS01", "ttyS1"), natural_less("ttyS1", "ttyS01"));
}

TEST(PortNumbering, ListsTheSystemAgainOnlyPastTheNamedDevicesAndAtMostOncePerInterval) {
  Paths system = {"/dev/ttyS0"};
  int listings = 0;
  auto lister = [&] {
    ++listings;
    return system;
  };
  PortNumbering ports({"/dev/pts/3"}, "/dev/pts/8", lister, std::chrono::milliseconds(0));
  EXPECT_EQ(ports.device_name(3), "/dev/ttyS0");
  EXPECT_EQ(ports.device_to_open(1), "/dev/pts/3");
  EXPECT_EQ(ports.device_to_open(2), "/dev/pts/8");
  EXPECT_EQ(listings, 1);
  system.push_back("/dev/ttyUSB0");  // plugged in after start
  EXPECT_EQ(ports.device_name(3), "/dev/ttyS0");
  EXPECT_EQ(ports.device_to_open(3), "/dev/ttyUSB0");
  EXPECT_EQ(listings, 2);
  EXPECT_EQ(ports.device_name(4), "/dev/ttyS0");
  PortNumbering hourly({"/dev/pts/3"}, "", lister, std::chrono::hours(1));
  for (int n = 1; n <= 255; ++n) hourly.device_to_open(n);
  EXPECT_EQ(listings, 3);
}

TEST(PortNumbering, ALinkGivenWithPortIsTheDeviceItPointsTo) {
  testing::TempFolder dir;
  const auto target = dir.path() / "ttyUSB0", link = dir.path() / "usb-adapter-if00";
  std::ofstream(target).put('x');
  std::filesystem::create_symlink(target, link);
  PortNumbering ports({link.string()}, "", [&] { return Paths{target.string(), "/dev/ttyS0"}; });
  EXPECT_EQ(ports.device_name(1), link.string());
  EXPECT_EQ(ports.device_name(2), "/dev/ttyS0");
  EXPECT_EQ(ports.device_name(3), "");
}

// Parsed settings shown back as "baud,parity,bits,stop bits".
TEST(SerialLineSettings, ParsesTheSettingsText) {
  const char* parity = "N?EOSM";  // by QSerialPort::Parity
  const char* stop[] = {"?", "1", "2", "1.5"};
  auto shown = [&](const std::optional<LineSettings>& l) {
    return l ? std::to_string(l->baud) + "," + parity[l->parity] + "," +
                   std::to_string(l->data_bits) + "," + stop[l->stop_bits]
             : "none";
  };
  EXPECT_EQ(shown(parse_line_settings("19200,N,8,1")), "19200,N,8,1");
  EXPECT_EQ(shown(parse_line_settings("9600,e,7,2")), "9600,E,7,2");
  EXPECT_EQ(shown(parse_line_settings("300,O,5,1.5")), "300,O,5,1.5");
  EXPECT_EQ(shown(parse_line_settings("1200,M,6,1")), "1200,M,6,1");
  EXPECT_EQ(shown(parse_line_settings("1200,s, 8,1")), "1200,S,8,1");
  for (const char* bad : {"", "19200", "19200,N,8", "19200,N,8,1,1", "19200,X,8,1", "19200,NN,8,1",
                          "19200,N,9,1", "19200,N,4,1", "19200,N,8,3", "19200,N,8,1.25",
                          "abc,N,8,1", "0,N,8,1", "-5,N,8,1", "19200x,N,8,1"})
    EXPECT_FALSE(parse_line_settings(bad)) << bad;
}

class SerialPortTest : public ::testing::Test {
 protected:
  void open_first(const std::string& settings = "19200,N,8,1") {
    port.set_comm_port(1);
    port.set_settings(settings);
    port.set_port_open(true);
  }

  Pty pty;
  int runs = 0;
  QtSerialPort port{PortNumbering({pty.path}, "", [] { return Paths{}; }),
                    [this](const std::function<void()>& h) { ++runs, h(); }};
  std::vector<std::string> problems;
  SerialPortTest() {
    port.on_problem = [this](const std::string& text) { problems.push_back(text); };
  }
};

TEST_F(SerialPortTest, ExchangesExactBytesWithTheDevice) {
  open_first();
  // Bytes a terminal would translate or act on must pass untouched.
  const std::string frame(
      "\x55\x0C\x02\x50\x0A\x0D\x11\x13\x03\x04\x7F\xFF\x00\x1A\x08\x15\x17\x12"
      "\x80\x00\x00\x0D",
      22);
  for (char ch : frame) port.output(std::string(1, ch));
  std::string sent;
  ASSERT_TRUE(wait_until([&] { return (sent += pty.take()).size() >= 22; }));
  run_events_for(50);
  EXPECT_EQ(sent + pty.take(), frame);

  std::string received;
  std::vector<int> events;
  port.on_comm = [&] {
    events.push_back(port.comm_event());
    received += port.input();
  };
  const std::string reply("\x55\xFD\x03\x11\x13\x0D\x0A\x7F\x04\x1C\xFF\x00NERIT\x00\x00\x01\r\n",
                          22);
  pty.send(reply.substr(0, 10));
  ASSERT_TRUE(wait_until([&] { return received.size() >= 10; }));
  pty.send(reply.substr(10));
  ASSERT_TRUE(wait_until([&] { return received.size() >= 22; }));
  run_events_for(50);
  EXPECT_EQ(received, reply);
  EXPECT_EQ(events, std::vector<int>(events.size(), SerialPort::kReceive));
  EXPECT_EQ(runs, static_cast<int>(events.size()));  // every arrival went through the runner
  EXPECT_EQ(port.input(), "");
  EXPECT_TRUE(problems.empty());
}

TEST_F(SerialPortTest, RefusesWhatTheControlRefuses) {
  const std::string closed = "Operation valid only when the port is open";
  EXPECT_EQ(error_of([&] { port.set_comm_port(0); }), "Invalid port number");
  EXPECT_EQ(error_of([&] { port.set_comm_port(256); }), "Invalid port number");
  EXPECT_EQ(error_of([&] { port.output("U"); }), closed);
  EXPECT_EQ(error_of([&] { port.input(); }), closed);
  EXPECT_EQ(error_of([&] { port.set_settings("19200,N,9,1"); }), "Invalid settings");
  EXPECT_EQ(port.settings(), "9600,N,8,1");
  for (int absent : {2, 255}) {
    port.set_comm_port(absent);
    EXPECT_EQ(error_of([&] { port.set_port_open(true); }), "Device unavailable");
  }
  EXPECT_FALSE(port.port_open());

  open_first();
  EXPECT_EQ(error_of([&] { port.set_comm_port(2); }), "Port already open");
  EXPECT_EQ(error_of([&] { port.set_port_open(true); }), "Port already open");
  EXPECT_EQ(port.comm_port(), 1);
  port.set_port_open(false);
  port.set_port_open(false);
  EXPECT_FALSE(port.port_open());
  EXPECT_TRUE(problems.empty());

  // A device that is named but missing fails with the system's reason.
  QtSerialPort missing(PortNumbering({"/dev/nerit-no-such-device"}, "", {}), [](auto& h) { h(); });
  missing.set_comm_port(1);
  const std::string why = error_of([&] { missing.set_port_open(true); });
  EXPECT_NE(why, "(no SerialError)");
  EXPECT_NE(why, "Device unavailable");
  EXPECT_FALSE(why.empty());
}

TEST_F(SerialPortTest, LineSettingsReachTheDevice) {
  open_first("9600,E,7,2");
  termios t{};
  ASSERT_EQ(tcgetattr(pty.device, &t), 0);
  EXPECT_EQ(cfgetospeed(&t), static_cast<speed_t>(B9600));
  EXPECT_EQ(cfgetispeed(&t), static_cast<speed_t>(B9600));
  // A pseudo-terminal always keeps 8 data bits without parity; the parity's sense and the stop
  // bits stay as set.
  EXPECT_FALSE(t.c_cflag & PARODD);
  EXPECT_TRUE(t.c_cflag & CSTOPB);
  EXPECT_FALSE(t.c_cflag & CRTSCTS);
  EXPECT_FALSE(t.c_iflag & (IXON | IXOFF));
  EXPECT_FALSE(t.c_lflag & (ICANON | ECHO | ISIG));
  port.set_settings("19200,O,8,1");  // while open: applied at once
  ASSERT_EQ(tcgetattr(pty.device, &t), 0);
  EXPECT_EQ(cfgetospeed(&t), static_cast<speed_t>(B19200));
  EXPECT_TRUE(t.c_cflag & PARODD);
  EXPECT_FALSE(t.c_cflag & CSTOPB);
}

TEST_F(SerialPortTest, BytesThatCameWhileTheHandlerWaitedAreHandedOnAfterIt) {
  open_first();
  std::vector<std::string> chunks;
  int depth = 0, deepest = 0;
  port.on_comm = [&] {
    deepest = std::max(deepest, ++depth);
    chunks.push_back(port.input());
    if (chunks.size() == 1) {
      pty.send("B");
      run_events_for(150);  // a wait inside the handler, as a message box would
    }
    --depth;
  };
  pty.send("A");
  ASSERT_TRUE(wait_until([&] { return chunks.size() >= 2; }));
  run_events_for(50);
  EXPECT_EQ(chunks, (Paths{"A", "B"}));
  EXPECT_EQ(deepest, 1);
}

TEST_F(SerialPortTest, AVanishedDeviceClosesThePortOnce) {
  open_first();
  int arrivals = 0;
  port.on_comm = [&] { ++arrivals; };
  pty.close_master();
  ASSERT_TRUE(wait_until([&] { return !port.port_open(); }));
  run_events_for(300);  // a port left open would repeat its error all this time
  EXPECT_FALSE(port.port_open());
  EXPECT_EQ(problems, Paths{"Port 1 (" + pty.path + ") closed: device removed"});
  EXPECT_EQ(arrivals, 0);
  // The program carries on: the next open is refused normally.
  port.set_comm_port(2);
  EXPECT_EQ(error_of([&] { port.set_port_open(true); }), "Device unavailable");
}

// The port inside the running program: tooltips name the devices, problems reach the log,
// arrivals pass the fault boundary.
class ProgramSerialTest : public ProgramTest {
 protected:
  ProgramSerialTest() { start({first.path, second.path}); }
  void open(int number) {
    app->run([this, number] {
      comm().set_comm_port(number);
      comm().set_port_open(true);
    });
  }
  SerialPort& comm() { return app->platform().comm; }
  Pty first, second;
};

TEST_F(ProgramSerialTest, TooltipsNameTheDevices) {
  EXPECT_TRUE(w().Combo2->itemData(0, Qt::ToolTipRole).isNull());
  EXPECT_EQ(w().Combo2->itemData(2, Qt::ToolTipRole).toString().toStdString(), second.path);
  for (int n = 3; n < 33; ++n)
    EXPECT_FALSE(w().Combo2->itemData(n, Qt::ToolTipRole).toString().isEmpty()) << n;
  EXPECT_EQ(w().Label4[1]->toolTip(), "Port");
  open(2);
  app->run([this] { c().Label4[1].caption = "Port: 2"; });
  EXPECT_EQ(w().Label4[1]->toolTip().toStdString(), "Port 2: " + second.path);
}

TEST_F(ProgramSerialTest, AVanishedDeviceIsLoggedAndAFailingArrivalEndsInAMessageBox) {
  open(1);
  const int before = w().List1->count();
  first.close_master();
  ASSERT_TRUE(wait_until([&] { return w().List1->count() == before + 1; }));
  run_events_for(100);
  ASSERT_EQ(w().List1->count(), before + 1);
  EXPECT_EQ(log_text(before), " -> Port 1 (" + first.path + ") closed: device removed");
  EXPECT_FALSE(comm().port_open());
  EXPECT_TRUE(dialogs.shown.empty());
  open(2);
  int calls = 0;
  comm().on_comm = [&] {
    ++calls;
    throw SerialError("arrival failed");
  };
  second.send("x");
  ASSERT_TRUE(wait_until([&] { return !dialogs.shown.empty(); }));
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(dialogs.shown.front().text, "arrival failed");
  EXPECT_TRUE(comm().port_open());
}

// What a handler wrote is on the line when it returns; a reply shows while the handler that
// waits for it still runs.
TEST_F(ProgramSerialTest, RequestsLeaveAtOnceAndRepliesShowDuringAWait) {
  open(1);
  app->run([this] {
    comm().output("U");
    comm().output(std::string("\x00\x0d\x0a", 3));
  });
  std::string got;  // read without running the program's event loop
  for (pollfd p{first.master, POLLIN, 0}; ::poll(&p, 1, 100) > 0 && got.size() < 4;)
    got += first.take();
  EXPECT_EQ(got, std::string("U\x00\x0d\x0a", 4));

  const int before = w().List1->count();
  bool shown_inside = false;
  app->run([&] {
    first.send(testing::ReplyFrame(kReplyText).text("Write SDram"));
    // A loop of its own, as a message box runs one.
    shown_inside = wait_until([&] { return w().List1->count() == before + 1; }, 3000);
  });
  EXPECT_TRUE(shown_inside);
  ASSERT_EQ(w().List1->count(), before + 1);
  EXPECT_EQ(log_text(before), " -> Write SDram @ 0x0");
}

}  // namespace
}  // namespace nerit::ui
