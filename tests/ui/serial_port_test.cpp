// Port numbering, and the Qt serial port against a real pseudo-terminal pair: exact bytes both
// ways, the receive event, refusals, line settings on the device, and a device that vanishes.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QThread>
#include <filesystem>
#include <fstream>

#include "shell/errors.h"
#include "tests/support/fake_platform.h"
#include "tests/ui/event_loop_waits.h"
#include "ui/application.h"
#include "ui/port_numbering.h"
#include "ui/qt_serial_port.h"

namespace nerit::ui {
namespace {

std::string bytes(std::initializer_list<int> codes) {
  std::string s;
  for (int c : codes) s += static_cast<char>(c);
  return s;
}

// A pseudo-terminal pair: the port opens the device end by its path, the test plays the
// controller on the other end.
struct Pty {
  Pty() {
    char name[256] = {};
    if (openpty(&master, &device, name, nullptr, nullptr) != 0) return;
    path = name;
    fcntl(master, F_SETFL, fcntl(master, F_GETFL) | O_NONBLOCK);
  }
  ~Pty() {
    close_master();
    if (device >= 0) ::close(device);
  }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  void close_master() {
    if (master >= 0) ::close(master);
    master = -1;
  }
  void send(const std::string& s) const {
    ASSERT_EQ(::write(master, s.data(), s.size()), static_cast<ssize_t>(s.size()));
  }
  // What the port wrote so far.
  std::string take() {
    char buf[256];
    ssize_t n;
    while ((n = ::read(master, buf, sizeof buf)) > 0) got.append(buf, static_cast<std::size_t>(n));
    std::string s;
    s.swap(got);
    return s;
  }
  // Waits until `count` bytes have come from the port.
  std::string receive(std::size_t count) {
    std::string all;
    wait_until([&] {
      all += take();
      return all.size() >= count;
    });
    return all;
  }

  int master = -1;
  int device = -1;
  std::string path;
  std::string got;
};

const std::vector<std::string> kNoSystemPorts;

PortNumbering numbering(std::vector<std::string> named) {
  return PortNumbering(std::move(named), "", [] { return kNoSystemPorts; });
}

std::string error_of(const std::function<void()>& f) {
  try {
    f();
  } catch (const SerialError& e) {
    return e.what();
  }
  return "(no SerialError)";
}

TEST(PortOrdering, NamedThenSimulatorThenAdaptersThenTheRest) {
  const std::vector<std::string> available = {"/dev/ttyS10",  "/dev/ttyUSB10", "/dev/ttyS2",
                                              "/dev/ttyACM0", "/dev/ttyUSB2",  "/dev/ttyUSB7",
                                              "/dev/ttyS3",   "/dev/ttyAMA0"};
  const auto ordered = order_ports({"/dev/ttyS3", "ttyUSB7"}, "/dev/pts/9", available);
  const std::vector<std::string> expected = {"/dev/ttyS3",   "/dev/ttyUSB7", "/dev/pts/9",
                                             "/dev/ttyACM0", "/dev/ttyUSB2", "/dev/ttyUSB10",
                                             "/dev/ttyAMA0", "/dev/ttyS2",   "/dev/ttyS10"};
  EXPECT_EQ(ordered, expected);

  EXPECT_EQ(port_at(ordered, 1), "/dev/ttyS3");
  EXPECT_EQ(port_at(ordered, 3), "/dev/pts/9");
  EXPECT_EQ(port_at(ordered, 9), "/dev/ttyS10");
  EXPECT_EQ(port_at(ordered, 10), "");
  EXPECT_EQ(port_at(ordered, 255), "");
  EXPECT_EQ(port_at(ordered, 0), "");
  EXPECT_EQ(port_at(ordered, -1), "");
}

TEST(PortOrdering, EachDeviceOnceAndNoEmptyEntries) {
  EXPECT_EQ(order_ports({"/dev/pts/4", "/dev/pts/4"}, "/dev/pts/4", {}),
            std::vector<std::string>{"/dev/pts/4"});
  EXPECT_EQ(order_ports({}, "", {"/dev/ttyUSB1", "/dev/ttyUSB0"}),
            (std::vector<std::string>{"/dev/ttyUSB0", "/dev/ttyUSB1"}));
  EXPECT_TRUE(order_ports({}, "", {}).empty());
}

TEST(PortOrdering, NaturalOrder) {
  EXPECT_TRUE(natural_less("ttyUSB2", "ttyUSB10"));
  EXPECT_FALSE(natural_less("ttyUSB10", "ttyUSB2"));
  EXPECT_TRUE(natural_less("ttyACM9", "ttyUSB0"));
  EXPECT_TRUE(natural_less("ttyS", "ttyS0"));
  EXPECT_TRUE(natural_less("ttyS9", "ttyS10a"));
  EXPECT_FALSE(natural_less("ttyS1", "ttyS1"));
  EXPECT_NE(natural_less("ttyS01", "ttyS1"), natural_less("ttyS1", "ttyS01"));
}

TEST(PortNumbering, ListsTheSystemAgainOnlyPastTheNamedDevices) {
  std::vector<std::string> system = {"/dev/ttyS0"};
  int listings = 0;
  PortNumbering ports(
      {"/dev/pts/3"}, "/dev/pts/8",
      [&] {
        ++listings;
        return system;
      },
      std::chrono::milliseconds(0));
  EXPECT_EQ(listings, 1);
  EXPECT_EQ(ports.device_name(3), "/dev/ttyS0");

  EXPECT_EQ(ports.device_to_open(1), "/dev/pts/3");
  EXPECT_EQ(ports.device_to_open(2), "/dev/pts/8");
  EXPECT_EQ(listings, 1);

  system.push_back("/dev/ttyUSB0");  // plugged in after start
  EXPECT_EQ(ports.device_name(3), "/dev/ttyS0");
  EXPECT_EQ(ports.device_to_open(3), "/dev/ttyUSB0");
  EXPECT_EQ(listings, 2);
  EXPECT_EQ(ports.device_name(3), "/dev/ttyUSB0");
  EXPECT_EQ(ports.device_name(4), "/dev/ttyS0");

  EXPECT_EQ(ports.device_to_open(5), "");
  EXPECT_EQ(listings, 3);
}

TEST(PortNumbering, AScanOverAbsentNumbersListsAtMostOncePerInterval) {
  int listings = 0;
  PortNumbering ports(
      {"/dev/pts/3"}, "",
      [&] {
        ++listings;
        return std::vector<std::string>{"/dev/ttyUSB0"};
      },
      std::chrono::hours(1));
  for (int n = 1; n <= 255; ++n) ports.device_to_open(n);
  EXPECT_EQ(listings, 1);
  EXPECT_EQ(ports.device_to_open(2), "/dev/ttyUSB0");
}

TEST(PortNumbering, ALinkGivenWithPortIsTheDeviceItPointsTo) {
  const auto dir =
      std::filesystem::temp_directory_path() / ("nerit-ports-" + std::to_string(getpid()));
  std::filesystem::create_directories(dir);
  const auto target = dir / "ttyUSB0";
  const auto link = dir / "usb-adapter-if00";
  std::ofstream(target).put('x');
  std::filesystem::create_symlink(target, link);

  PortNumbering ports({link.string()}, "", [&] {
    return std::vector<std::string>{target.string(), "/dev/ttyS0"};
  });
  EXPECT_EQ(ports.device_name(1), link.string());
  EXPECT_EQ(ports.device_name(2), "/dev/ttyS0");
  EXPECT_EQ(ports.device_name(3), "");
  std::filesystem::remove_all(dir);
}

TEST(SerialLineSettings, ParsesTheSettingsText) {
  const auto a = parse_line_settings("19200,N,8,1");
  ASSERT_TRUE(a);
  EXPECT_EQ(a->baud, 19200);
  EXPECT_EQ(a->parity, QSerialPort::NoParity);
  EXPECT_EQ(a->data_bits, QSerialPort::Data8);
  EXPECT_EQ(a->stop_bits, QSerialPort::OneStop);

  const auto b = parse_line_settings("9600,e,7,2");
  ASSERT_TRUE(b);
  EXPECT_EQ(b->baud, 9600);
  EXPECT_EQ(b->parity, QSerialPort::EvenParity);
  EXPECT_EQ(b->data_bits, QSerialPort::Data7);
  EXPECT_EQ(b->stop_bits, QSerialPort::TwoStop);

  const auto c = parse_line_settings("300,O,5,1.5");
  ASSERT_TRUE(c);
  EXPECT_EQ(c->parity, QSerialPort::OddParity);
  EXPECT_EQ(c->data_bits, QSerialPort::Data5);
  EXPECT_EQ(c->stop_bits, QSerialPort::OneAndHalfStop);
  EXPECT_EQ(parse_line_settings("1200,M,6,1")->parity, QSerialPort::MarkParity);
  EXPECT_EQ(parse_line_settings("1200,S,8,1")->parity, QSerialPort::SpaceParity);

  for (const char* bad : {"", "19200", "19200,N,8", "19200,N,8,1,1", "19200,X,8,1", "19200,NN,8,1",
                          "19200,N,9,1", "19200,N,4,1", "19200,N,8,3", "19200,N,8,1.25",
                          "abc,N,8,1", "0,N,8,1", "-5,N,8,1", "19200x,N,8,1"})
    EXPECT_FALSE(parse_line_settings(bad)) << bad;
}

class SerialPortTest : public ::testing::Test {
 protected:
  SerialPortTest() {
    port = std::make_unique<QtSerialPort>(numbering({pty.path}),
                                          [this](const std::function<void()>& h) {
                                            ++runs;
                                            h();
                                          });
    port->on_problem = [this](const std::string& text) { problems.push_back(text); };
  }

  void open_first() {
    port->set_comm_port(1);
    port->set_settings("19200,N,8,1");
    port->set_port_open(true);
  }

  Pty pty;
  std::unique_ptr<QtSerialPort> port;
  int runs = 0;
  std::vector<std::string> problems;
};

TEST_F(SerialPortTest, ExchangesExactBytesWithTheDevice) {
  ASSERT_FALSE(pty.path.empty());
  EXPECT_EQ(port->device_name(1), pty.path);
  EXPECT_EQ(port->device_name(2), "");
  open_first();
  ASSERT_TRUE(port->port_open());

  // Bytes a terminal would translate or act on must pass untouched.
  const std::string frame =
      bytes({0x55, 0x0C, 0x02, 0x50, 0x0A, 0x0D, 0x11, 0x13, 0x03, 0x04, 0x7F,
             0xFF, 0x00, 0x1A, 0x08, 0x15, 0x17, 0x12, 0x80, 0x00, 0x00, 0x0D});
  ASSERT_EQ(frame.size(), 22u);
  for (char ch : frame) port->output(std::string(1, ch));
  EXPECT_EQ(pty.receive(22), frame);
  run_events_for(50);
  EXPECT_EQ(pty.take(), "");

  std::string received;
  std::vector<int> events;
  port->on_comm = [&] {
    events.push_back(port->comm_event());
    received += port->input();
  };
  const std::string reply =
      bytes({0x55, 0xFD, 0x03, 0x11, 0x13, 0x0D, 0x0A, 0x7F, 0x04, 0x1C, 0xFF,
             0x00, 0x4E, 0x45, 0x52, 0x49, 0x54, 0x00, 0x00, 0x01, 0x0D, 0x0A});
  pty.send(reply.substr(0, 10));
  ASSERT_TRUE(wait_until([&] { return received.size() >= 10; }));
  pty.send(reply.substr(10));
  ASSERT_TRUE(wait_until([&] { return received.size() >= 22; }));
  run_events_for(50);
  EXPECT_EQ(received, reply);
  ASSERT_FALSE(events.empty());
  for (int e : events) EXPECT_EQ(e, SerialPort::kReceive);
  EXPECT_EQ(runs, static_cast<int>(events.size()));  // every arrival went through the runner
  EXPECT_EQ(port->input(), "");
  EXPECT_TRUE(problems.empty());
}

TEST_F(SerialPortTest, RefusesWhatTheControlRefuses) {
  EXPECT_EQ(error_of([&] { port->set_comm_port(0); }), "Invalid port number");
  EXPECT_EQ(error_of([&] { port->set_comm_port(256); }), "Invalid port number");
  EXPECT_EQ(error_of([&] { port->output("U"); }), "Operation valid only when the port is open");
  EXPECT_EQ(error_of([&] { port->input(); }), "Operation valid only when the port is open");
  EXPECT_EQ(error_of([&] { port->set_settings("19200,N,9,1"); }), "Invalid settings");
  EXPECT_EQ(port->settings(), "9600,N,8,1");

  port->set_comm_port(2);  // nothing behind number 2
  EXPECT_EQ(error_of([&] { port->set_port_open(true); }), "Device unavailable");
  EXPECT_FALSE(port->port_open());
  port->set_comm_port(255);
  EXPECT_EQ(error_of([&] { port->set_port_open(true); }), "Device unavailable");

  open_first();
  EXPECT_EQ(error_of([&] { port->set_comm_port(2); }), "Port already open");
  EXPECT_EQ(port->comm_port(), 1);
  EXPECT_EQ(error_of([&] { port->set_port_open(true); }), "Port already open");
  EXPECT_TRUE(port->port_open());

  port->set_port_open(false);
  EXPECT_FALSE(port->port_open());
  port->set_port_open(false);
  port->set_comm_port(2);
  EXPECT_EQ(port->comm_port(), 2);
  EXPECT_TRUE(problems.empty());
}

TEST(SerialPortOpen, AMissingDeviceFailsWithTheSystemsReason) {
  QtSerialPort port(numbering({"/dev/nerit-no-such-device"}), [](auto& h) { h(); });
  port.set_comm_port(1);
  const std::string why = error_of([&] { port.set_port_open(true); });
  EXPECT_NE(why, "(no SerialError)");
  EXPECT_NE(why, "Device unavailable");
  EXPECT_FALSE(why.empty());
  EXPECT_FALSE(port.port_open());
}

TEST_F(SerialPortTest, LineSettingsReachTheDevice) {
  port->set_comm_port(1);
  port->set_settings("9600,E,7,2");
  port->set_port_open(true);
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

  port->set_settings("19200,O,8,1");  // while open: applied at once
  EXPECT_EQ(port->settings(), "19200,O,8,1");
  ASSERT_EQ(tcgetattr(pty.device, &t), 0);
  EXPECT_EQ(cfgetospeed(&t), static_cast<speed_t>(B19200));
  EXPECT_TRUE(t.c_cflag & PARODD);
  EXPECT_FALSE(t.c_cflag & CSTOPB);
}

TEST_F(SerialPortTest, BytesThatCameWhileTheHandlerWaitedAreHandedOnAfterIt) {
  open_first();
  std::vector<std::string> chunks;
  int depth = 0, deepest = 0;
  port->on_comm = [&] {
    deepest = std::max(deepest, ++depth);
    chunks.push_back(port->input());
    if (chunks.size() == 1) {
      pty.send("B");
      run_events_for(150);  // a wait inside the handler, as a message box would
    }
    --depth;
  };
  pty.send("A");
  ASSERT_TRUE(wait_until([&] { return chunks.size() >= 2; }));
  run_events_for(50);
  EXPECT_EQ(chunks, (std::vector<std::string>{"A", "B"}));
  EXPECT_EQ(deepest, 1);
}

TEST_F(SerialPortTest, AVanishedDeviceClosesThePortOnce) {
  open_first();
  int arrivals = 0;
  port->on_comm = [&] {
    ++arrivals;
    port->input();
  };
  pty.close_master();
  ASSERT_TRUE(wait_until([&] { return !port->port_open(); }));
  run_events_for(300);  // a port left open would repeat its error all this time
  EXPECT_FALSE(port->port_open());
  EXPECT_EQ(problems, std::vector<std::string>{"Port 1 (" + pty.path + ") closed: device removed"});
  EXPECT_EQ(arrivals, 0);

  // The program carries on: the next open is refused normally.
  port->set_comm_port(2);
  EXPECT_EQ(error_of([&] { port->set_port_open(true); }), "Device unavailable");
}

// The port inside the running program: tooltips name the devices, problems reach the log,
// arrivals pass the fault boundary.
class ProgramSerialTest : public ::testing::Test {
 protected:
  ProgramSerialTest() {
    Application::Options options;
    options.program_folder = folder.path();
    options.show_splash = false;
    options.dialogs = &dialogs;
    options.ports = {first.path, second.path};
    app = std::make_unique<Application>(options);
    app->start();
  }
  const MainWindow::Widgets& w() { return app->main_window().widgets(); }
  SerialPort& comm() { return app->platform().comm; }

  Pty first, second;
  testing::TempFolder folder;
  testing::FakeDialogs dialogs;
  std::unique_ptr<Application> app;
};

TEST_F(ProgramSerialTest, TooltipsNameTheDevices) {
  ASSERT_EQ(w().Combo2->count(), 33);
  EXPECT_TRUE(w().Combo2->itemData(0, Qt::ToolTipRole).isNull());
  EXPECT_EQ(w().Combo2->itemData(1, Qt::ToolTipRole).toString().toStdString(), first.path);
  EXPECT_EQ(w().Combo2->itemData(2, Qt::ToolTipRole).toString().toStdString(), second.path);
  for (int n = 3; n < 33; ++n)
    EXPECT_FALSE(w().Combo2->itemData(n, Qt::ToolTipRole).toString().isEmpty()) << n;
  EXPECT_EQ(w().Label4[1]->toolTip(), "Port");

  app->run([this] {
    comm().set_comm_port(2);
    comm().set_port_open(true);
    app->program().form1.c.Label4[1].caption = "Port: 2";
  });
  EXPECT_EQ(w().Label4[1]->toolTip().toStdString(), "Port 2: " + second.path);

  app->run([this] {
    comm().set_port_open(false);
    app->program().form1.c.Label4[1].caption = "Connection";
  });
  EXPECT_EQ(w().Label4[1]->toolTip(), "Port");
}

TEST_F(ProgramSerialTest, AVanishedDeviceIsLogged) {
  app->run([this] {
    comm().set_comm_port(1);
    comm().set_port_open(true);
  });
  ASSERT_TRUE(comm().port_open());
  const int before = w().List1->count();
  first.close_master();
  ASSERT_TRUE(wait_until([&] { return w().List1->count() == before + 1; }));
  run_events_for(100);
  ASSERT_EQ(w().List1->count(), before + 1);
  const std::string line = w().List1->item(before)->text().toStdString();
  const std::string tail = " -> Port 1 (" + first.path + ") closed: device removed";
  ASSERT_GT(line.size(), tail.size());
  EXPECT_EQ(line.substr(line.size() - tail.size()), tail);
  EXPECT_EQ(line.find(" -> "), line.size() - tail.size());  // the time comes first
  EXPECT_FALSE(comm().port_open());
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(ProgramSerialTest, AFailingArrivalHandlerEndsInAMessageBox) {
  app->run([this] {
    comm().set_comm_port(2);
    comm().set_port_open(true);
  });
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

}  // namespace
}  // namespace nerit::ui
