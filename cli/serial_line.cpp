#include "cli/serial_line.h"

#include "link/replies.h"
#include "shell/errors.h"
#include "ui/port_numbering.h"

namespace nerit::cli {

std::vector<std::string> numbered_ports(const std::vector<std::string>& named) {
  return ui::order_ports(named, "", ui::system_serial_ports());
}

std::string port_kind(const std::string& device) {
  if (device.find("ttyUSB") != std::string::npos) return "USB adapter";
  if (device.find("ttyACM") != std::string::npos) return "ACM adapter";
  return "serial port";
}

std::string resolve_port(const std::string& value) {
  if (value.empty() || value.find_first_not_of("0123456789") != std::string::npos)
    return ui::device_path(value);
  return ui::port_at(numbered_ports({}), std::stoi(value));
}

bool SerialLine::open(const std::string& device) {
  port_.setPortName(QString::fromStdString(device));
  port_.setBaudRate(19200);
  port_.setDataBits(QSerialPort::Data8);
  port_.setParity(QSerialPort::NoParity);
  port_.setStopBits(QSerialPort::OneStop);
  port_.setFlowControl(QSerialPort::NoFlowControl);
  if (port_.open(QIODevice::ReadWrite)) return true;
  error_ = port_.error() == QSerialPort::PermissionError
               ? SerialPermissionError(device).what()
               : "Cannot open " + device + ": " + port_.errorString().toStdString();
  return false;
}

void SerialLine::write(const std::string& bytes) {
  port_.write(bytes.data(), static_cast<qint64>(bytes.size()));
  port_.waitForBytesWritten(1000);
}

bool SerialLine::read_more(const QDeadlineTimer& deadline) {
  const auto left = deadline.remainingTime();
  if (left <= 0 || !port_.waitForReadyRead(static_cast<int>(left))) return false;
  const QByteArray got = port_.readAll();
  buffer_.append(got.constData(), static_cast<std::size_t>(got.size()));
  return true;
}

std::optional<std::string> SerialLine::next_frame(int timeout_ms) {
  const QDeadlineTimer deadline(timeout_ms);
  for (;;) {
    if (auto frame = take_frame(buffer_)) return frame;
    if (!read_more(deadline)) return std::nullopt;
  }
}

std::optional<std::uint8_t> SerialLine::next_byte(int timeout_ms) {
  const QDeadlineTimer deadline(timeout_ms);
  while (buffer_.empty())
    if (!read_more(deadline)) return std::nullopt;
  const auto byte = static_cast<std::uint8_t>(buffer_.front());
  buffer_.erase(0, 1);
  return byte;
}

}  // namespace nerit::cli
