#include "live/tagged_value.h"

#include <bit>

namespace nerit {

std::vector<std::uint8_t> tagged_double(double value) {
  std::vector<std::uint8_t> out{kTagDouble & 0xFF, kTagDouble >> 8};
  const auto bits = std::bit_cast<std::uint64_t>(value);
  for (int i = 0; i < 8; ++i) out.push_back(static_cast<std::uint8_t>(bits >> (8 * i)));
  return out;
}

}  // namespace nerit
