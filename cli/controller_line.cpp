#include "cli/controller_line.h"

#include <ostream>
#include <sstream>
#include <variant>

#include "cli/command.h"
#include "link/memory_map.h"

namespace nerit::cli {

namespace {

std::string hex(int address) {
  std::ostringstream s;
  s << "0x" << std::hex << std::uppercase << address;
  return s.str();
}

}  // namespace

ControllerLine::ControllerLine(const std::string& port, int timeout_ms, std::ostream& err)
    : port_(port), timeout_ms_(timeout_ms), err_(err) {
  if (!line_.open(port)) throw CliFailure(kNoController, line_.error());
}

std::optional<Reply> ControllerLine::next_reply() {
  // Frames that decode to nothing (a wrong start byte) are skipped like the window skips them.
  while (auto frame = line_.next_frame(timeout_ms_))
    if (auto reply = decode_reply(*frame)) return reply;
  return std::nullopt;
}

void ControllerLine::timed_out(const std::string& what) const {
  throw CliFailure(kTimeOut, "the controller on " + port_ + " did not answer " + what + " within " +
                                 std::to_string(timeout_ms_) + " ms, " + std::to_string(kAttempts) +
                                 " times");
}

std::string ControllerLine::connect() {
  line_.write(connect_frame());
  // The stream may still be on: status frames go by until the firmware's text comes.
  while (auto reply = next_reply()) {
    if (const auto* fw = std::get_if<FirmwareReply>(&*reply)) {
      std::string text = fw->text;
      text.erase(text.find_last_not_of(' ') + 1);
      return text;
    }
  }
  throw CliFailure(kNoController, "no controller answered on " + port_ + " within " +
                                      std::to_string(timeout_ms_) + " ms");
}

FrameData ControllerLine::read_block(int address) {
  for (int attempt = 1; attempt <= kAttempts; ++attempt) {
    if (attempt > 1)
      err_ << "no answer for block " << hex(address) << ", asking again (" << attempt << " of "
           << kAttempts << ")\n";
    line_.write(address_frame(kCmdSramRead, address));
    while (auto reply = next_reply()) {
      const auto* block = std::get_if<MemoryBlockReply>(&*reply);
      if (block && block->address == address) return block->data;  // late answers go by
    }
  }
  timed_out("the read of block " + hex(address));
}

void ControllerLine::write_block(std::uint8_t code, int address, const FrameData& data) {
  for (int attempt = 1; attempt <= kAttempts; ++attempt) {
    if (attempt > 1)
      err_ << "no acknowledgement for block " << hex(address) << ", sending it again (" << attempt
           << " of " << kAttempts << ")\n";
    line_.write(address_frame(code, address, data));
    while (auto reply = next_reply())
      if (std::holds_alternative<TextReply>(*reply)) return;
  }
  timed_out("the write of block " + hex(address));
}

MemoryImage read_memory(ControllerLine& line) {
  MemoryImage m{};
  auto read = [&](int address) {
    m[static_cast<std::size_t>((address - kSettingsBlockA) / 16)] = line.read_block(address);
  };
  for (int address : kSettingsReadOrder) read(address);
  for (int r = 1; r <= 16; ++r) read(correction_row_address(r));
  for (int r = 1; r <= 16; ++r)
    for (int half = 0; half < 2; ++half) read(airflow_row_address(r) + 16 * half);
  return m;
}

void write_memory(ControllerLine& line, const MemoryImage& memory) {
  for (int i = 0; i < kMemoryBlocks; ++i)
    line.write_block(kCmdSramWrite, memory_block_address(i), memory[static_cast<std::size_t>(i)]);
}

void write_eeprom(ControllerLine& line, const EepromImage& eeprom) {
  for (std::size_t i : {3u, 4u, 5u, 6u, 7u, 8u, 1u, 2u, 0u})
    line.write_block(kCmdEepromWrite, kEepromRequestOrder[i], eeprom[i]);
  line.send(command_frame(kCmdReloadEeprom, 0, 0));
}

void make_permanent(ControllerLine& line) {
  line.send(command_frame(kCmdMakePermanent, 0, 0));
  std::optional<std::string> other;  // a text without the flag, perhaps the reload's
  while (auto reply = line.next_reply()) {
    const auto* text = std::get_if<TextReply>(&*reply);
    if (text && text->flag == 1) return;
    if (text) other = text->text;
  }
  if (other)
    throw CliFailure(kRefused, "the controller answered Make Permanent with \"" + *other +
                                   "\" but not with its confirmation");
  throw CliFailure(kTimeOut, "the controller on " + line.port() +
                                 " did not confirm Make Permanent within " +
                                 std::to_string(line.timeout_ms()) + " ms");
}

}  // namespace nerit::cli
