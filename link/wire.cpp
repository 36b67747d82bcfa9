#include "link/wire.h"

#include "shell/errors.h"

namespace nerit {

void Wire::send(const std::string& frame) {
  for (char ch : frame) p_.comm.output(std::string(1, ch));
}

void Wire::wait_for_reply() {
  link_.reply_done = 0;
  while (link_.reply_done != 1) {
    if (!p_.comm.port_open()) throw LinkLost{};
    p_.pump.process_events();
  }
}

void Wire::send_block(std::uint8_t code, int address, const FrameData& data) {
  const std::string frame = address_frame(code, address, data);
  link_.write_addr = address;
  send(frame);
}

void Wire::write_block(std::uint8_t code, int address, const FrameData& data, Timer* guard) {
  send_block(code, address, data);
  if (guard) guard->set_enabled(true);
  wait_for_reply();
}

void Wire::log(const std::string& text) {
  log_list_.add_item(p_.time_text() + text);
}

}  // namespace nerit
