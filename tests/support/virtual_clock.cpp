#include "tests/support/virtual_clock.h"

#include <stdexcept>

namespace nerit::testing {

VirtualClock::Id VirtualClock::schedule(long long delay_ms, std::function<void()> action) {
  if (delay_ms < 0) throw std::invalid_argument("negative delay");
  const Id id = next_id_++;
  events_.emplace(std::make_pair(now_ + delay_ms, id), std::move(action));
  due_of_[id] = now_ + delay_ms;
  return id;
}

void VirtualClock::cancel(Id id) {
  auto it = due_of_.find(id);
  if (it == due_of_.end()) return;
  events_.erase({it->second, id});
  due_of_.erase(it);
}

bool VirtualClock::pending(Id id) const {
  return due_of_.count(id) != 0;
}

long long VirtualClock::next_due() const {
  return events_.empty() ? -1 : events_.begin()->first.first;
}

bool VirtualClock::run_next() {
  if (events_.empty()) return false;
  auto it = events_.begin();
  now_ = it->first.first;
  auto action = std::move(it->second);
  due_of_.erase(it->first.second);
  events_.erase(it);
  action();
  return true;
}

void VirtualClock::run_until(long long t_ms) {
  while (!events_.empty() && events_.begin()->first.first <= t_ms) run_next();
  if (t_ms > now_) now_ = t_ms;
}

}  // namespace nerit::testing
