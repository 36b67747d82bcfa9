// Port numbering, and the Qt serial port against a real pseudo-terminal pair: exact bytes both
// ways, the arrival callback, refusals, line settings on the device, and a device that vanishes.
#include <poll.h>
#include <termios.h>

#include <QComboBox>
#include <QLabel>
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

TEST(PortNumbering, NamedThenSimulatorThenAdaptersThenTheRestInNaturalOrderEachOnce) {
  const Paths ordered = order_ports({"/dev/ttyS3", "ttyUSB7", "/dev/ttyS3"}, "/dev/pts/9",
                                    {"/dev/ttyS10", "/dev/ttyUSB10", "/dev/ttyS2", "/dev/ttyACM0",
                                     "/dev/ttyUSB2", "/dev/ttyUSB7", "/dev/ttyS3", "/dev/ttyAMA0"});
  EXPECT_EQ(ordered,
            (Paths{"/dev/ttyS3", "/dev/ttyUSB7", "/dev/pts/9", "/dev/ttyACM0", "/dev/ttyUSB2",
                   "/dev/ttyUSB10", "/dev/ttyAMA0", "/dev/ttyS2", "/dev/ttyS10"}));
  EXPECT_EQ(port_at(ordered, 9), "/dev/ttyS10");
  EXPECT_EQ(port_at(ordered, 10), "");
  EXPECT_EQ(port_at(ordered, 0), "");
  EXPECT_TRUE(natural_less("ttyS", "ttyS0"));
  EXPECT_NE(natural_less("ttyS01", "ttyS1"), natural_less("ttyS1", "ttyS01"));

  // The system is listed again only for numbers past the named devices, at most once per
  // interval; a link given by name hides the device it points to.
  testing::TempFolder dir;
  const auto target = dir.path() / "ttyUSB0", link = dir.path() / "usb-adapter-if00";
  std::ofstream(target).put('x');
  std::filesystem::create_symlink(target, link);
  Paths system = {target.string()};
  int listings = 0;
  auto lister = [&] { return ++listings, system; };
  PortNumbering ports({link.string()}, "/dev/pts/8", lister, std::chrono::milliseconds(0));
  EXPECT_EQ(ports.device_to_open(1), link.string());
  EXPECT_EQ(ports.device_to_open(2), "/dev/pts/8");
  EXPECT_EQ(ports.device_name(3), "");
  EXPECT_EQ(listings, 1);
  system.push_back("/dev/ttyS0");  // plugged in after start
  EXPECT_EQ(ports.device_name(3), "");
  EXPECT_EQ(ports.device_to_open(3), "/dev/ttyS0");
  EXPECT_EQ(listings, 2);
  PortNumbering hourly({"/dev/pts/3"}, "", lister, std::chrono::hours(1));
  for (int n = 1; n <= 255; ++n) hourly.device_to_open(n);
  EXPECT_EQ(listings, 3);
}

TEST(SerialLineSettings, ParsesTheSettingsText) {
  const char* parity = "N?EOSM";  // by QSerialPort::Parity
  const char* stop[] = {"?", "1", "2", "1.5"};
  for (auto [text, want] : {std::pair{"9600,e,7,2", "9600,E,7,2"},
                            {"300,O,5,1.5", "300,O,5,1.5"},
                            {"1200,m,6,1", "1200,M,6,1"},
                            {"1200,s, 8,1", "1200,S,8,1"}}) {
    const auto l = parse_line_settings(text);
    ASSERT_TRUE(l) << text;
    EXPECT_EQ(std::to_string(l->baud) + "," + parity[l->parity] + "," +
                  std::to_string(l->data_bits) + "," + stop[l->stop_bits],
              want);
  }
  for (const char* bad :
       {"", "19200,N,8", "19200,N,8,1,1", "19200,X,8,1", "19200,NN,8,1", "19200,N,9,1",
        "19200,N,4,1", "19200,N,8,1.25", "0,N,8,1", "19200x,N,8,1"})
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
};

// Every arrival runs the handler through the runner, also while an earlier arrival's handler
// still waits (as under a message box).
TEST_F(SerialPortTest, ExchangesExactBytesAndEveryArrivalRunsTheHandler) {
  open_first();
  // Bytes a terminal would translate or act on must pass untouched.
  const std::string frame("\x55\x0C\x02\x50\x0A\x0D\x11\x13\x03\x04\x7F\xFF\x00\x1A\x08\x15", 16);
  for (char ch : frame) port.output(std::string(1, ch));
  std::string sent;
  ASSERT_TRUE(wait_until([&] { return (sent += pty.take()).size() >= frame.size(); }));
  run_events_for(50);
  EXPECT_EQ(sent + pty.take(), frame);

  std::string received;
  int calls = 0, depth = 0, deepest = 0;
  port.on_comm = [&] {
    deepest = std::max(deepest, ++depth);
    EXPECT_EQ(port.comm_event(), SerialPort::kReceive);
    received += port.input();
    if (++calls == 1) {
      pty.send(frame.substr(10));
      run_events_for(150);  // a wait inside the handler, as a message box would
    }
    --depth;
  };
  pty.send(frame.substr(0, 10));
  ASSERT_TRUE(wait_until([&] { return received.size() >= frame.size(); }));
  EXPECT_EQ(received, frame);
  EXPECT_EQ(deepest, 2);
  EXPECT_EQ(runs, calls);
}

// Frames that arrive together reach the receive event one by one, each chunk ending on its
// CR LF, so none is lost to the framing that keeps only a chunk's last frame.
TEST_F(SerialPortTest, WhatArrivesTogetherIsHandedOverOneLineAtATime) {
  open_first();
  std::vector<std::string> chunks;
  port.on_comm = [&] { chunks.push_back(port.input()); };
  pty.send(std::string("U\xFF\x01\r\nU\xFF\x02\r\n\rtail", 15));
  ASSERT_TRUE(wait_until([&] { return chunks.size() >= 3; }));
  run_events_for(50);
  EXPECT_EQ(chunks, (std::vector<std::string>{std::string("U\xFF\x01\r\n"),
                                              std::string("U\xFF\x02\r\n"), "\rtail"}));
}

TEST_F(SerialPortTest, RefusesWhatTheControlRefuses) {
  const std::string closed = "Operation valid only when the port is open";
  EXPECT_EQ(error_of([&] { port.set_comm_port(0); }), "Invalid port number");
  EXPECT_EQ(error_of([&] { port.set_comm_port(256); }), "Invalid port number");
  EXPECT_EQ(error_of([&] { port.output("U"); }), closed);
  EXPECT_EQ(error_of([&] { port.input(); }), closed);
  EXPECT_EQ(error_of([&] { port.set_settings("19200,N,9,1"); }), "Invalid settings");
  EXPECT_EQ(port.settings(), "9600,N,8,1");
  port.set_comm_port(255);
  EXPECT_EQ(error_of([&] { port.set_port_open(true); }), "Device unavailable");
  open_first();
  EXPECT_EQ(error_of([&] { port.set_comm_port(2); }), "Port already open");
  EXPECT_EQ(error_of([&] { port.set_port_open(true); }), "Port already open");

  // A device that is named but missing fails with the system's reason.
  QtSerialPort missing(PortNumbering({"/dev/nerit-no-such-device"}, "", {}), [](auto& h) { h(); });
  const std::string why = error_of([&] { missing.set_port_open(true); });
  EXPECT_NE(why, "(no SerialError)");
  EXPECT_NE(why, "Device unavailable");
}

TEST_F(SerialPortTest, LineSettingsReachTheDevice) {
  open_first("9600,E,7,2");
  termios t{};
  ASSERT_EQ(tcgetattr(pty.device, &t), 0);
  EXPECT_EQ(cfgetospeed(&t), static_cast<speed_t>(B9600));
  // A pseudo-terminal always keeps 8 data bits without parity; the parity's sense and the stop
  // bits stay as set.
  EXPECT_FALSE(t.c_cflag & PARODD);
  EXPECT_TRUE(t.c_cflag & CSTOPB);
  EXPECT_FALSE(t.c_cflag & CRTSCTS);
  port.set_settings("19200,O,8,1");  // while open: applied at once
  ASSERT_EQ(tcgetattr(pty.device, &t), 0);
  EXPECT_EQ(cfgetispeed(&t), static_cast<speed_t>(B19200));
  EXPECT_TRUE(t.c_cflag & PARODD);
  EXPECT_FALSE(t.c_cflag & CSTOPB);
}

// The port inside the running program: tooltips name the devices, problems reach the log,
// arrivals pass the fault boundary, requests leave at once.
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

// Also: the tooltips name the device of each port number.
TEST_F(ProgramSerialTest, AVanishedDeviceIsClosedAndLoggedOnceAndAFailingArrivalBecomesAMessage) {
  EXPECT_TRUE(w().Combo2->itemData(0, Qt::ToolTipRole).isNull());
  EXPECT_EQ(w().Combo2->itemData(1, Qt::ToolTipRole).toString().toStdString(), first.path);
  EXPECT_EQ(w().Combo2->itemData(2, Qt::ToolTipRole).toString().toStdString(), second.path);
  EXPECT_EQ(w().Label4[1]->toolTip(), "Port");
  open(1);
  const int before = w().List1->count();
  first.close_master();
  ASSERT_TRUE(wait_until([&] { return w().List1->count() == before + 1; }));
  run_events_for(300);  // a port left open would repeat its error all this time
  ASSERT_EQ(w().List1->count(), before + 1);
  EXPECT_EQ(log_text(before), " -> Port 1 (" + first.path + ") closed: device removed");
  EXPECT_FALSE(comm().port_open());
  EXPECT_TRUE(dialogs.shown.empty());

  open(2);
  app->run([this] { c().Label4[1].caption = "Port: 2"; });
  EXPECT_EQ(w().Label4[1]->toolTip().toStdString(), "Port 2: " + second.path);
  comm().on_comm = [] { throw SerialError("arrival failed"); };
  dialogs.expect("Error|Critical|Ok|arrival failed");
  second.send("x");
  ASSERT_TRUE(wait_until([&] { return !dialogs.shown.empty(); }));
  EXPECT_EQ(dialogs.shown.front().text, "arrival failed");
  EXPECT_TRUE(comm().port_open());
  second.close_master();
  ASSERT_TRUE(wait_until([&] { return w().List1->count() == before + 2; }));
  EXPECT_EQ(log_text(before + 1), " -> Port 2 (" + second.path + ") closed: device removed");
}

// 16 bytes of firmware text are 16 characters, whatever their codes.
TEST_F(ProgramSerialTest, TheFirmwareTextShowsOneCharacterPerByte) {
  open(1);
  const std::string text("V\xC3\xA4\xB5\xFF\x80 12345678901", 16);
  first.send(testing::firmware_reply(text));
  ASSERT_TRUE(wait_until([&] { return w().Label4[2]->text() != "-"; }));
  EXPECT_EQ(w().Label4[2]->text(), QString::fromLatin1(text.data(), 16));
  EXPECT_EQ(w().Label4[2]->text().size(), 16);
}

// A window with a link of its own gets a port of its own, numbered like the main one.
TEST_F(ProgramSerialTest, AFurtherPortOpensBesideTheMainOne) {
  open(1);
  std::unique_ptr<SerialPort> other = app->platform().ports.make_port();
  other->set_comm_port(2);
  other->set_settings("19200,N,8,1");
  other->set_port_open(true);
  EXPECT_TRUE(comm().port_open());
  other->output("Z");
  comm().output("A");
  ASSERT_TRUE(wait_until([&] { return second.take() == "Z"; }));
  EXPECT_EQ(first.take(), "A");
  std::string got;
  other->on_comm = [&] { got += other->input(); };
  second.send("ok");
  ASSERT_TRUE(wait_until([&] { return got == "ok"; }));
}

// What a handler wrote is on the line when it returns; a reply shows while the handler that
// waits for it still runs.
TEST_F(ProgramSerialTest, RequestsLeaveAtOnceAndRepliesShowDuringAWait) {
  open(1);
  app->run([this] { comm().output(std::string("U\x00\x0d\x0a", 4)); });
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
  EXPECT_EQ(log_text(before), " -> Write SDram @ 0x0");
}

}  // namespace
}  // namespace nerit::ui
