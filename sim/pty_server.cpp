#include "sim/pty_server.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cmath>
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

int PtyServer::next_timeout_ms() const {
  const double due = controller_.next_due();
  if (due < 0) return -1;
  const double wait = std::ceil(due - now_ms());
  return wait <= 0 ? 0 : wait >= INT_MAX ? INT_MAX : static_cast<int>(wait);
}

bool PtyServer::pump(int max_wait_ms) {
  if (master_ < 0) return false;
  int wait = next_timeout_ms();
  if (wait < 0 || wait > max_wait_ms) wait = max_wait_ms;
  pollfd pfd{master_, POLLIN, 0};
  const int ready = ::poll(&pfd, 1, wait);
  if (ready > 0 && (pfd.revents & POLLIN)) {
    on_readable();
  } else {
    on_timer();
  }
  return master_ >= 0;
}

}  // namespace nerit::sim
