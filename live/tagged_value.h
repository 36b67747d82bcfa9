#pragma once
// A number as a tagged binary record: a 2-byte little-endian type tag, then the value.
// Doubles carry tag 5 and 8 bytes IEEE-754, little-endian.
#include <cstdint>
#include <vector>

namespace nerit {

inline constexpr std::uint16_t kTagDouble = 5;

std::vector<std::uint8_t> tagged_double(double value);

}  // namespace nerit
