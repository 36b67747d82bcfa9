#pragma once
// The main window's serial port on QSerialPort.
//
// Every arrival reaches on_comm with the receive event (2), on the next turn of the event loop,
// so that a handler of an earlier arrival that is still running (a box, a wait) never holds
// back the next one. The overrun (1006) and receive buffer overflow (1008) events never occur
// here: Qt 6 does not report overrun or framing errors, and the read buffer is unlimited.
#include <QObject>
#include <QSerialPort>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "shell/platform.h"
#include "ui/port_numbering.h"
#include "ui/qt_platform.h"

namespace nerit::ui {

// "19200,N,8,1": speed, parity (N, E, O, M, S), data bits (5 to 8), stop bits (1, 1.5, 2).
struct LineSettings {
  qint32 baud = 9600;
  QSerialPort::Parity parity = QSerialPort::NoParity;
  QSerialPort::DataBits data_bits = QSerialPort::Data8;
  QSerialPort::StopBits stop_bits = QSerialPort::OneStop;
};

// Empty when the text is not a valid settings string.
std::optional<LineSettings> parse_line_settings(const std::string& text);

class QtSerialPort : public QObject, public SerialPort {
 public:
  // `run` runs the arrival notifications, so that they pass the program's fault boundary.
  QtSerialPort(PortNumbering ports, HandlerRunner run, QObject* parent = nullptr);
  ~QtSerialPort() override;

  void set_comm_port(int number) override;
  int comm_port() const override { return number_; }
  void set_settings(const std::string& settings) override;
  const std::string& settings() const override { return settings_; }
  void set_port_open(bool open) override;
  bool port_open() const override { return port_.isOpen(); }
  void output(const std::string& chars) override;
  // What has arrived, up to and including the first CR LF; anything after it comes with a
  // further receive event.
  std::string input() override;
  int comm_event() const override { return event_; }
  // The device as listed; for the port in use, the device it opened even after it went away.
  std::string device_name(int number) const override;

  // Hands what output() buffered to the driver now, as far as it takes it, instead of on the
  // next turn of the event loop: the program calls it before it waits or repaints.
  void send_pending();
  // An arrival waits for its handler on the next turn of the event loop.
  bool delivery_pending() const { return delivery_posted_; }

  // Further ports numbered like this one, for windows with a link of their own.
  std::unique_ptr<QtSerialPort> sibling() const;

 private:
  void received();
  void deliver();
  void failed(QSerialPort::SerialPortError error);
  bool apply(const LineSettings& line);
  void close_port();

  QSerialPort port_;
  PortNumbering ports_;
  HandlerRunner run_;
  int number_ = 1;
  std::string settings_ = "9600,N,8,1";
  int event_ = 0;
  std::string last_device_;  // the device the port last opened
  int session_ = 0;          // counts opens and closes, to drop stale deferred closes
  bool close_pending_ = false;
  bool delivery_posted_ = false;
};

class QtSerialPorts : public SerialPorts {
 public:
  explicit QtSerialPorts(const QtSerialPort& main) : main_(main) {}
  std::unique_ptr<SerialPort> make_port() override { return main_.sibling(); }

 private:
  const QtSerialPort& main_;
};

}  // namespace nerit::ui
