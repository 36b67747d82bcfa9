#include "ui/port_numbering.h"

#include <QSerialPortInfo>
#include <algorithm>
#include <filesystem>
#include <system_error>

namespace nerit::ui {

namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

bool is_adapter(const std::string& path) {
  const std::string name = std::filesystem::path(path).filename().string();
  return name.starts_with("ttyUSB") || name.starts_with("ttyACM");
}

// Links such as /dev/serial/by-id/... and the device they point to are one port.
std::string same_device_key(const std::string& path) {
  std::error_code ec;
  const auto resolved = std::filesystem::weakly_canonical(path, ec);
  return ec ? path : resolved.string();
}

}  // namespace

bool natural_less(std::string_view a, std::string_view b) {
  std::size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    if (is_digit(a[i]) && is_digit(b[j])) {
      std::size_t i_end = i, j_end = j;
      while (i_end < a.size() && is_digit(a[i_end])) ++i_end;
      while (j_end < b.size() && is_digit(b[j_end])) ++j_end;
      std::string_view x = a.substr(i, i_end - i), y = b.substr(j, j_end - j);
      while (x.size() > 1 && x.front() == '0') x.remove_prefix(1);
      while (y.size() > 1 && y.front() == '0') y.remove_prefix(1);
      if (x.size() != y.size()) return x.size() < y.size();
      if (x != y) return x < y;
      i = i_end;
      j = j_end;
    } else {
      if (a[i] != b[j]) return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[j]);
      ++i;
      ++j;
    }
  }
  if (a.size() - i != b.size() - j) return a.size() - i < b.size() - j;
  return a < b;  // "x01" and "x1" still get a fixed order
}

std::string device_path(const std::string& name) {
  if (name.empty() || name.find('/') != std::string::npos) return name;
  return "/dev/" + name;
}

std::vector<std::string> order_ports(const std::vector<std::string>& named,
                                     const std::string& simulator,
                                     const std::vector<std::string>& available) {
  std::vector<std::string> ordered;
  auto add = [&ordered](const std::string& name) {
    const std::string path = device_path(name);
    if (path.empty() || std::find(ordered.begin(), ordered.end(), path) != ordered.end()) return;
    ordered.push_back(path);
  };
  for (const auto& n : named) add(n);
  add(simulator);

  std::vector<std::string> adapters, rest;
  for (const auto& a : available) (is_adapter(a) ? adapters : rest).push_back(device_path(a));
  std::sort(adapters.begin(), adapters.end(), natural_less);
  std::sort(rest.begin(), rest.end(), natural_less);
  for (const auto& a : adapters) add(a);
  for (const auto& r : rest) add(r);
  return ordered;
}

std::string port_at(const std::vector<std::string>& ordered, int number) {
  if (number < 1 || static_cast<std::size_t>(number) > ordered.size()) return {};
  return ordered[static_cast<std::size_t>(number) - 1];
}

std::vector<std::string> system_serial_ports() {
  std::vector<std::string> ports;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
    ports.push_back(info.systemLocation().toStdString());
  return ports;
}

PortNumbering::PortNumbering(std::vector<std::string> named, std::string simulator, Lister list,
                             std::chrono::milliseconds relist_interval)
    : named_(order_ports(named, simulator, {})),
      list_(std::move(list)),
      relist_interval_(relist_interval) {
  relist();
}

std::string PortNumbering::device_to_open(int number) {
#ifdef _WIN32
  return device_name(number);
#else
  if (number > static_cast<int>(named_.size()) &&
      std::chrono::steady_clock::now() - listed_at_ >= relist_interval_)
    relist();
  return port_at(ordered_, number);
#endif
}

std::string PortNumbering::device_name(int number) const {
#ifdef _WIN32
  return number >= 1 ? "COM" + std::to_string(number) : std::string();
#else
  return port_at(ordered_, number);
#endif
}

void PortNumbering::relist() {
  listed_at_ = std::chrono::steady_clock::now();
  std::vector<std::string> available = list_ ? list_() : std::vector<std::string>{};
  std::vector<std::string> named_keys;
  for (const auto& n : named_) named_keys.push_back(same_device_key(n));
  std::erase_if(available, [&](const std::string& a) {
    const std::string key = same_device_key(device_path(a));
    return std::find(named_keys.begin(), named_keys.end(), key) != named_keys.end();
  });
  ordered_ = order_ports(named_, {}, available);
}

}  // namespace nerit::ui
