#include "sim/memory_window.h"

namespace nerit::sim {

MemoryWindow::MemoryWindow(std::uint16_t first, std::size_t size) : first_(first), bytes_(size) {}

bool MemoryWindow::contains(std::uint32_t address) const {
  return address >= first_ && address - first_ < bytes_.size();
}

std::uint8_t MemoryWindow::at(std::uint32_t address) const {
  return contains(address) ? bytes_[address - first_] : 0;
}

void MemoryWindow::set(std::uint32_t address, std::uint8_t value) {
  if (contains(address)) bytes_[address - first_] = value;
}

std::uint16_t MemoryWindow::word(std::uint32_t address) const {
  return static_cast<std::uint16_t>(at(address) | at(address + 1) << 8);
}

void MemoryWindow::set_word(std::uint32_t address, std::uint16_t value) {
  set(address, static_cast<std::uint8_t>(value & 0xFF));
  set(address + 1, static_cast<std::uint8_t>(value >> 8));
}

Block MemoryWindow::block(std::uint32_t address) const {
  Block out{};
  for (std::size_t i = 0; i < out.size(); ++i) out[i] = at(address + i);
  return out;
}

void MemoryWindow::set_block(std::uint32_t address, const Block& data) {
  for (std::size_t i = 0; i < data.size(); ++i) set(address + i, data[i]);
}

bool MemoryWindow::assign(const std::vector<std::uint8_t>& bytes) {
  if (bytes.size() != bytes_.size()) return false;
  bytes_ = bytes;
  return true;
}

}  // namespace nerit::sim
