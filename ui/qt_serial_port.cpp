#include "ui/qt_serial_port.h"

#include <QByteArray>
#include <charconv>
#include <vector>

#include "shell/errors.h"

namespace nerit::ui {

namespace {

std::vector<std::string> split_fields(const std::string& text) {
  std::vector<std::string> fields(1);
  for (char c : text) {
    if (c == ',')
      fields.emplace_back();
    else if (c != ' ')
      fields.back() += c;
  }
  return fields;
}

std::optional<int> whole_number(const std::string& text) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value);
  if (text.empty() || ec != std::errc() || ptr != end) return std::nullopt;
  return value;
}

}  // namespace

std::optional<LineSettings> parse_line_settings(const std::string& text) {
  const std::vector<std::string> f = split_fields(text);
  if (f.size() != 4) return std::nullopt;
  LineSettings line;

  const auto baud = whole_number(f[0]);
  if (!baud || *baud <= 0) return std::nullopt;
  line.baud = *baud;

  if (f[1].size() != 1) return std::nullopt;
  switch (f[1][0]) {
    case 'N':
    case 'n':
      line.parity = QSerialPort::NoParity;
      break;
    case 'E':
    case 'e':
      line.parity = QSerialPort::EvenParity;
      break;
    case 'O':
    case 'o':
      line.parity = QSerialPort::OddParity;
      break;
    case 'M':
    case 'm':
      line.parity = QSerialPort::MarkParity;
      break;
    case 'S':
    case 's':
      line.parity = QSerialPort::SpaceParity;
      break;
    default:
      return std::nullopt;
  }

  const auto bits = whole_number(f[2]);
  if (!bits || *bits < 5 || *bits > 8) return std::nullopt;
  line.data_bits = static_cast<QSerialPort::DataBits>(*bits);

  if (f[3] == "1")
    line.stop_bits = QSerialPort::OneStop;
  else if (f[3] == "1.5")
    line.stop_bits = QSerialPort::OneAndHalfStop;
  else if (f[3] == "2")
    line.stop_bits = QSerialPort::TwoStop;
  else
    return std::nullopt;
  return line;
}

QtSerialPort::QtSerialPort(PortNumbering ports, HandlerRunner run, QObject* parent)
    : QObject(parent), ports_(std::move(ports)), run_(std::move(run)) {
  connect(&port_, &QSerialPort::readyRead, this, [this] { received(); });
  connect(&port_, &QSerialPort::errorOccurred, this,
          [this](QSerialPort::SerialPortError e) { failed(e); });
}

QtSerialPort::~QtSerialPort() {
  // Nothing may call back into this object while the port member goes.
  disconnect(&port_, nullptr, this, nullptr);
  if (port_.isOpen()) port_.close();
}

void QtSerialPort::set_comm_port(int number) {
  if (port_.isOpen()) throw SerialError("Port already open");
  if (number < 1 || number > 255) throw SerialError("Invalid port number");
  number_ = number;
}

void QtSerialPort::set_settings(const std::string& settings) {
  const std::optional<LineSettings> line = parse_line_settings(settings);
  if (!line) throw SerialError("Invalid settings");
  settings_ = settings;
  if (port_.isOpen() && !apply(*line)) {
    const std::string text = port_.errorString().toStdString();
    port_.clearError();
    throw SerialError(text);
  }
}

bool QtSerialPort::apply(const LineSettings& line) {
  // Before opening these only store the values; open() applies them.
  bool ok = port_.setBaudRate(line.baud);
  ok = port_.setParity(line.parity) && ok;
  ok = port_.setDataBits(line.data_bits) && ok;
  ok = port_.setStopBits(line.stop_bits) && ok;
  ok = port_.setFlowControl(QSerialPort::NoFlowControl) && ok;
  return ok;
}

void QtSerialPort::set_port_open(bool open) {
  if (!open) {
    close_port();
    return;
  }
  if (port_.isOpen()) throw SerialError("Port already open");
  const std::string device = ports_.device_to_open(number_);
  if (device.empty()) throw SerialError("Device unavailable");

  port_.setPortName(QString::fromStdString(device));
  apply(*parse_line_settings(settings_));  // set_settings let only valid settings in
  port_.setReadBufferSize(0);
  if (!port_.open(QIODevice::ReadWrite)) {
    const bool denied = port_.error() == QSerialPort::PermissionError;
    const std::string text = port_.errorString().toStdString();
    port_.clearError();
    if (denied) throw SerialPermissionError(device);
    throw SerialError(text);
  }
  port_.clear(QSerialPort::AllDirections);
  last_device_ = device;
  close_pending_ = false;
  ++session_;
}

void QtSerialPort::close_port() {
  if (!port_.isOpen()) return;
  port_.close();
  port_.clearError();
  close_pending_ = false;
  ++session_;
}

void QtSerialPort::output(const std::string& chars) {
  if (!port_.isOpen()) throw SerialError("Operation valid only when the port is open");
  // Buffered by QSerialPort and written when the device is ready: never blocks.
  if (port_.write(chars.data(), static_cast<qint64>(chars.size())) < 0)
    throw SerialError(port_.errorString().toStdString());
}

void QtSerialPort::send_pending() {
  if (port_.isOpen() && port_.bytesToWrite() > 0) port_.flush();
}

std::string QtSerialPort::input() {
  if (!port_.isOpen()) throw SerialError("Operation valid only when the port is open");
  // Up to the first CR LF: frames that came in together reach the receive event one by one
  // instead of only the last of them; the rest follows in a delivery of its own.
  const QByteArray waiting = port_.peek(port_.bytesAvailable());
  const qsizetype line_end = waiting.indexOf("\r\n");
  const QByteArray chunk = port_.read(line_end < 0 ? waiting.size() : line_end + 2);
  if (port_.bytesAvailable() > 0) received();
  return std::string(chunk.constData(), static_cast<std::size_t>(chunk.size()));
}

std::string QtSerialPort::device_name(int number) const {
  const std::string listed = ports_.device_name(number);
  return listed.empty() && number == number_ ? last_device_ : listed;
}

std::unique_ptr<QtSerialPort> QtSerialPort::sibling() const {
  return std::make_unique<QtSerialPort>(ports_, run_);
}

void QtSerialPort::received() {
  // Qt signals readyRead again only once its handler has returned: the handler runs later, from
  // the event loop, so that a box or a wait inside it never stops the next arrival.
  if (delivery_posted_) return;
  delivery_posted_ = true;
  QMetaObject::invokeMethod(
      this, [this] { deliver(); }, Qt::QueuedConnection);
}

void QtSerialPort::deliver() {
  delivery_posted_ = false;
  if (!port_.isOpen() || port_.bytesAvailable() == 0) return;
  event_ = kReceive;
  run_([this] {
    if (on_comm) on_comm();
  });
}

void QtSerialPort::failed(QSerialPort::SerialPortError error) {
  std::string why;
  switch (error) {
    // A tty that went away reads as end of file, which Qt reports as a read error with a stale
    // system message.
    case QSerialPort::ResourceError:
    case QSerialPort::ReadError:
      why = "device removed";
      break;
    case QSerialPort::WriteError:
      why = "write failed (" + port_.errorString().toStdString() + ")";
      break;
    default:
      return;  // open failures are thrown by set_port_open
  }
  if (!port_.isOpen() || close_pending_) return;
  // Left open, the port repeats the error in a tight loop. The close waits until Qt has left its
  // notification handler.
  close_pending_ = true;
  QMetaObject::invokeMethod(
      this,
      [this, session = session_, why] {
        if (session != session_ || !port_.isOpen()) return;
        close_port();
        run_([this, why] {
          if (on_closed) on_closed(why);
        });
      },
      Qt::QueuedConnection);
}

}  // namespace nerit::ui
