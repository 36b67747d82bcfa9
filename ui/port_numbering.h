#pragma once
// Which device each of the program's port numbers (1, 2, ...) stands for. On Windows port n is
// COMn. Elsewhere the numbers go to the devices named with --port, then the virtual
// controller, then USB and ACM adapters, then every other port the system lists, so that a scan
// of the first numbers reaches an adapter.
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace nerit::ui {

// "ttyUSB2" before "ttyUSB10": runs of digits compare by value.
bool natural_less(std::string_view a, std::string_view b);

// A bare name such as "ttyUSB0" is a device in /dev.
std::string device_path(const std::string& name);

// The devices in numbering order (port n is element n - 1): `named` in the order given,
// `simulator` when not empty, the USB and ACM adapters among `available`, then the rest of
// `available`. Each device appears once, at its first place.
std::vector<std::string> order_ports(const std::vector<std::string>& named,
                                     const std::string& simulator,
                                     const std::vector<std::string>& available);

// Element number - 1, or "" when the list has no such port.
std::string port_at(const std::vector<std::string>& ordered, int number);

// The system's serial devices (QSerialPortInfo), as paths.
std::vector<std::string> system_serial_ports();

class PortNumbering {
 public:
  using Lister = std::function<std::vector<std::string>()>;

  // Listing takes milliseconds, so a scan over absent numbers lists at most once per
  // `relist_interval`.
  PortNumbering(std::vector<std::string> named, std::string simulator,
                Lister list = system_serial_ports,
                std::chrono::milliseconds relist_interval = std::chrono::seconds(1));

  // The device to open for a port number, "" when there is none. Numbers past the named devices
  // list the system's ports again, so an adapter plugged in after start is found.
  std::string device_to_open(int number);
  // The device as of the last listing, for display.
  std::string device_name(int number) const;

 private:
  void relist();

  std::vector<std::string> named_;  // --port devices and the virtual controller, in order
  Lister list_;
  std::chrono::milliseconds relist_interval_;
  std::chrono::steady_clock::time_point listed_at_;
  std::vector<std::string> ordered_;
};

}  // namespace nerit::ui
