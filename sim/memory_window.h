#pragma once
// A contiguous piece of the controller's address space. Reads outside it give 0 and writes
// outside it are ignored, as the controller answers every address the program names.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nerit::sim {

using Block = std::array<std::uint8_t, 16>;

class MemoryWindow {
 public:
  MemoryWindow(std::uint16_t first, std::size_t size);

  std::uint16_t first() const { return first_; }
  std::size_t size() const { return bytes_.size(); }
  bool contains(std::uint32_t address) const;

  std::uint8_t at(std::uint32_t address) const;
  void set(std::uint32_t address, std::uint8_t value);
  std::uint16_t word(std::uint32_t address) const;  // low byte first
  void set_word(std::uint32_t address, std::uint16_t value);
  Block block(std::uint32_t address) const;
  void set_block(std::uint32_t address, const Block& data);

  const std::vector<std::uint8_t>& bytes() const { return bytes_; }
  // False when the size differs.
  bool assign(const std::vector<std::uint8_t>& bytes);

  bool operator==(const MemoryWindow&) const = default;

 private:
  std::uint16_t first_;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace nerit::sim
