#pragma once
// Test time: events scheduled at virtual milliseconds run in time order (ties in the order
// they were scheduled), only when a wait asks for the next one.
#include <cstdint>
#include <functional>
#include <map>
#include <utility>

namespace nerit::testing {

class VirtualClock {
 public:
  using Id = std::uint64_t;

  long long now_ms() const { return now_; }
  Id schedule(long long delay_ms, std::function<void()> action);
  void cancel(Id id) {
    std::erase_if(events_, [id](const auto& e) { return e.first.second == id; });
  }
  bool idle() const { return events_.empty(); }
  long long next_due() const { return events_.empty() ? -1 : events_.begin()->first.first; }

  // Advances to the earliest event and runs it; false when nothing is scheduled.
  bool run_next();
  // Runs every event due within ms from now, then stands at now + ms.
  void advance(long long ms);

 private:
  long long now_ = 0;
  Id next_id_ = 1;
  std::map<std::pair<long long, Id>, std::function<void()>> events_;
};

}  // namespace nerit::testing
