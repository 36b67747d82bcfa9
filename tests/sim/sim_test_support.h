#pragma once
// Frames as the program writes them, and small helpers to look at what the controller sent.
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "sim/controller.h"

namespace nerit::sim::test {

inline std::string bytes(std::initializer_list<int> values) {
  std::string out;
  for (int v : values) out.push_back(static_cast<char>(v));
  return out;
}

// 0x55, code, address high, address low, 16 data bytes, 0x00, 0x0D.
inline std::string command(std::uint8_t code, std::uint16_t address = 0, const Block& data = {}) {
  return bytes({0x55, code, address >> 8, address & 0xFF}) + std::string(data.begin(), data.end()) +
         bytes({0x00, 0x0D});
}

// The 20-byte connect frame of the program's second scan routine.
inline std::string short_connect() {
  return bytes({0x55, 0x05}) + std::string(17, '\0') + "\r";
}

inline std::string stream_on(std::uint8_t mode) {
  return command(0x80, 0, Block{mode});
}

// Sends one frame at now_ms and returns everything that arrives up to until_ms.
inline std::vector<Emission> exchange(Controller& c, double now_ms, const std::string& frame,
                                      double until_ms) {
  c.receive(now_ms, frame);
  return c.poll(until_ms);
}

// Options changed by `set`, e.g. with([](Options& o) { o.paced = true; }).
template <class Set>
Options with(Set set) {
  Options o;
  set(o);
  return o;
}

inline std::string joined(const std::vector<Emission>& emissions) {
  std::string out;
  for (const Emission& e : emissions) out += e.bytes;
  return out;
}

inline int byte_at(const std::string& s, std::size_t i) {
  return static_cast<std::uint8_t>(s.at(i));
}
inline int word_at(const std::string& s, std::size_t i) {
  return byte_at(s, i) | byte_at(s, i + 1) << 8;
}

}  // namespace nerit::sim::test
