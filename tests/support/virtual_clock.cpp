#include "tests/support/virtual_clock.h"

#include <algorithm>
#include <stdexcept>

namespace nerit::testing {

VirtualClock::Id VirtualClock::schedule(long long delay_ms, std::function<void()> action) {
  if (delay_ms < 0) throw std::invalid_argument("negative delay");
  events_.emplace(std::make_pair(now_ + delay_ms, next_id_), std::move(action));
  return next_id_++;
}

bool VirtualClock::run_next() {
  if (events_.empty()) return false;
  auto node = events_.extract(events_.begin());
  now_ = node.key().first;
  node.mapped()();
  return true;
}

void VirtualClock::advance(long long ms) {
  const long long until = now_ + ms;
  while (!events_.empty() && events_.begin()->first.first <= until) run_next();
  now_ = std::max(now_, until);
}

}  // namespace nerit::testing
