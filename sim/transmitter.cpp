#include "sim/transmitter.h"

#include <algorithm>

#include "sim/options.h"

namespace nerit::sim {

Transmitter::Transmitter(bool paced, std::size_t chunk_size)
    : paced_(paced), chunk_size_(chunk_size) {}

double Transmitter::send(double start_ms, std::string_view bytes, bool chunked) {
  const std::size_t piece = chunked && chunk_size_ > 0 ? chunk_size_ : bytes.size();
  const double start = paced_ ? std::max(start_ms, line_free_ms_) : start_ms;
  double at = start;
  for (std::size_t sent = 0; sent < bytes.size(); sent += piece) {
    const std::string_view part = bytes.substr(sent, piece);
    if (paced_) at = start + static_cast<double>(sent + part.size()) * kByteMs;
    add({at, std::string(part)});
  }
  if (paced_) line_free_ms_ = at;
  return at;
}

void Transmitter::add(Emission e) {
  // Kept in arrival order, whatever order the sends come in.
  auto pos = std::upper_bound(pending_.begin(), pending_.end(), e.at_ms,
                              [](double t, const Emission& x) { return t < x.at_ms; });
  pending_.insert(pos, std::move(e));
}

std::vector<Emission> Transmitter::take_due(double now_ms) {
  std::vector<Emission> due;
  while (!pending_.empty() && pending_.front().at_ms <= now_ms) {
    due.push_back(std::move(pending_.front()));
    pending_.pop_front();
  }
  return due;
}

double Transmitter::next_due() const {
  return pending_.empty() ? -1 : pending_.front().at_ms;
}

void Transmitter::cut_after(double t_ms) {
  while (!pending_.empty() && pending_.back().at_ms > t_ms) pending_.pop_back();
}

}  // namespace nerit::sim
