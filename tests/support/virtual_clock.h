#pragma once
// Test time: events scheduled at virtual milliseconds run in time order (ties in the order
// they were scheduled), only when a wait asks for the next one.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <stdexcept>
#include <utility>

namespace nerit::testing {

class VirtualClock {
 public:
  using Id = std::uint64_t;

  long long now_ms() const { return now_; }
  Id schedule(long long delay_ms, std::function<void()> action) {
    if (delay_ms < 0) throw std::invalid_argument("negative delay");
    events_.emplace(std::make_pair(now_ + delay_ms, next_id_), std::move(action));
    return next_id_++;
  }
  void cancel(Id id) {
    std::erase_if(events_, [id](const auto& e) { return e.first.second == id; });
  }
  bool idle() const { return events_.empty(); }

  // Advances to the earliest event and runs it; false when nothing is scheduled.
  bool run_next() {
    if (events_.empty()) return false;
    auto node = events_.extract(events_.begin());
    now_ = node.key().first;
    node.mapped()();
    return true;
  }
  // Runs every event due within ms from now, then stands at now + ms.
  void advance(long long ms) {
    const long long until = now_ + ms;
    while (!events_.empty() && events_.begin()->first.first <= until) run_next();
    now_ = std::max(now_, until);
  }

 private:
  long long now_ = 0;
  Id next_id_ = 1;
  std::map<std::pair<long long, Id>, std::function<void()>> events_;
};

}  // namespace nerit::testing
