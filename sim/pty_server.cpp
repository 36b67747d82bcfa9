#include "sim/pty_server.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace nerit::sim {

PtyServer::PtyServer(Options options)
    : controller_(std::move(options)), epoch_(std::chrono::steady_clock::now()) {}

PtyServer::~PtyServer() {
  close();
}

bool PtyServer::open() {
  close();
  char name[PATH_MAX] = {};
  if (openpty(&master_, &slave_, name, nullptr, nullptr) != 0) {
    error_ = std::string("openpty: ") + std::strerror(errno);
    master_ = slave_ = -1;
    return false;
  }
  termios tio{};
  if (tcgetattr(slave_, &tio) == 0) {
    cfmakeraw(&tio);
    cfsetispeed(&tio, B19200);
    cfsetospeed(&tio, B19200);
    tcsetattr(slave_, TCSANOW, &tio);
  }
  const int flags = fcntl(master_, F_GETFL);
  fcntl(master_, F_SETFL, flags | O_NONBLOCK);
  fcntl(master_, F_SETFD, FD_CLOEXEC);
  fcntl(slave_, F_SETFD, FD_CLOEXEC);
  slave_path_ = name;
  return true;
}

void PtyServer::close() {
  if (master_ >= 0) ::close(master_);
  if (slave_ >= 0) ::close(slave_);
  master_ = slave_ = -1;
}

double PtyServer::now_ms() const {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - epoch_)
      .count();
}

void PtyServer::on_readable() {
  if (master_ < 0) return;
  char buf[4096];
  while (true) {
    const ssize_t n = ::read(master_, buf, sizeof buf);
    if (n > 0) {
      controller_.receive(now_ms(), std::string_view(buf, static_cast<std::size_t>(n)));
      continue;
    }
    if (n < 0 && errno == EINTR) continue;
    break;  // EAGAIN, or EIO while no program holds the slave
  }
  on_timer();
}

void PtyServer::on_timer() {
  if (master_ < 0) return;
  for (const Emission& e : controller_.poll(now_ms())) write_out(e.bytes);
  if (controller_.vanished() && controller_.next_due() < 0) close();
}

void PtyServer::write_out(const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t n = ::write(master_, bytes.data() + done, bytes.size() - done);
    if (n > 0) {
      done += static_cast<std::size_t>(n);
    } else if (n < 0 && errno == EINTR) {
      continue;
    } else {
      return;  // nobody reads the line: the bytes are lost, as on a real wire
    }
  }
}

std::chrono::nanoseconds wait_until(double due_ms, double now_ms) {
  const double ns = std::ceil((due_ms - now_ms) * 1e6);
  constexpr double kLongest = 1e15;  // about 11 days, far inside the range of the count
  return std::chrono::nanoseconds(ns <= 0 ? 0 : static_cast<std::int64_t>(std::min(ns, kLongest)));
}

std::optional<std::chrono::nanoseconds> PtyServer::next_timeout() const {
  const double due = controller_.next_due();
  if (due < 0) return std::nullopt;
  return wait_until(due, now_ms());
}

int PtyServer::next_timeout_ms() const {
  const auto wait = next_timeout();
  if (!wait) return -1;
  const auto ms = std::chrono::ceil<std::chrono::milliseconds>(*wait).count();
  return ms >= INT_MAX ? INT_MAX : static_cast<int>(ms);
}

bool PtyServer::pump(int max_wait_ms) {
  if (master_ < 0) return false;
  auto wait = std::chrono::nanoseconds(std::chrono::milliseconds(max_wait_ms));
  if (const auto due = next_timeout(); due && *due < wait) wait = *due;
  // ppoll, not poll: a paced reply goes out when its last byte is due, not at the next whole
  // millisecond.
  const auto seconds = std::chrono::floor<std::chrono::seconds>(wait);
  const timespec timeout{static_cast<time_t>(seconds.count()),
                         static_cast<long>((wait - seconds).count())};
  pollfd pfd{master_, POLLIN, 0};
  const int ready = ::ppoll(&pfd, 1, &timeout, nullptr);
  if (ready > 0 && (pfd.revents & POLLIN)) {
    on_readable();
  } else {
    on_timer();
  }
  return master_ >= 0;
}

}  // namespace nerit::sim
