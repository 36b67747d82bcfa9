#pragma once
// The controller's serial line for nerit-cli: port numbers as the window gives them, and a port
// read with a time limit on every wait. Qt Core and SerialPort only; no event loop needed.
#include <QDeadlineTimer>
#include <QSerialPort>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace nerit::cli {

// The devices the window would number 1, 2, ...: `named` first, then the system's adapters.
std::vector<std::string> numbered_ports(const std::vector<std::string>& named);
// "USB adapter", "ACM adapter" or "serial port", by the device's name.
std::string port_kind(const std::string& device);
// A --port value: a device path, or a number as the window numbers the ports ("" when none).
std::string resolve_port(const std::string& value);

class SerialLine {
 public:
  // Opens at 19200,N,8,1; false with error() set when it cannot.
  bool open(const std::string& device);
  const std::string& error() const { return error_; }
  void write(const std::string& bytes);
  // The next whole reply frame, or nothing when none came within timeout_ms.
  std::optional<std::string> next_frame(int timeout_ms);
  // The next byte as it came, or nothing when none came within timeout_ms.
  std::optional<std::uint8_t> next_byte(int timeout_ms);

 private:
  // Appends what the port holds once it has something; false when the deadline passes first.
  bool read_more(const QDeadlineTimer& deadline);

  QSerialPort port_;
  std::string buffer_;
  std::string error_;
};

}  // namespace nerit::cli
