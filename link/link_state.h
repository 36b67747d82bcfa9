#pragma once
// The main window's link state: wait flags, the block being written, the receive buffer and
// the words of the latest status frame.
#include <array>
#include <string>

namespace nerit {

struct LinkState {
  int reply_done = 0;       // 0 while a request waits for its answer
  int connect_timeout = 0;  // 1 once the connect wait has run out
  int write_addr = 0;       // address of the block last written

  std::string rxbuffer;           // received, not yet framed
  std::string rxframe;            // the last frame cut from it
  std::array<int, 21> rxbytes{};  // codes of rxframe's first 21 characters

  // Words of the latest status frame (W1..W7 16-bit, W8 32-bit), index 1..8.
  std::array<long, 9> W{};
  double map_raw = 0;      // b5 of the latest status frame
  int previous_cell = -1;  // operating-cell index of the previous status frame
  int cell_row = 0, cell_col = 0;
};

}  // namespace nerit
