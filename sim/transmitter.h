#pragma once
// The controller's transmit line: turns outgoing bytes into emissions, each stamped with the
// time its last byte reaches the program. Paced, the line sends one byte after the other at
// the wire rate and a message starts only when the one before has gone out.
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace nerit::sim {

struct Emission {
  double at_ms = 0;
  std::string bytes;

  bool operator==(const Emission&) const = default;
};

class Transmitter {
 public:
  Transmitter(bool paced, std::size_t chunk_size);

  // Puts bytes on the line no earlier than start_ms, as one emission or, when `chunked` and a
  // chunk size is set, one emission a chunk. Returns when the last byte arrives.
  double send(double start_ms, std::string_view bytes, bool chunked);

  // Emissions arrived by now_ms, in order.
  std::vector<Emission> take_due(double now_ms);
  // Arrival time of the first pending emission, or -1.
  double next_due() const;
  // Forgets what has not arrived by t_ms.
  void cut_after(double t_ms);

 private:
  void add(Emission e);

  bool paced_;
  std::size_t chunk_size_;
  double line_free_ms_ = 0;
  std::deque<Emission> pending_;
};

}  // namespace nerit::sim
