#pragma once
// The main window's link state: wait flags, the block being written and the receive buffer.
#include <string>

namespace nerit {

struct LinkState {
  int reply_done = 0;       // 0 while a request waits for its answer
  int connect_timeout = 0;  // 1 once the connect wait has run out
  int write_addr = 0;       // address of the block last written

  std::string rxbuffer;  // received, not yet framed
};

}  // namespace nerit
