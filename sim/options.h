#pragma once
// How a virtual controller behaves: its timing, its permanent state and the faults it shows.
#include <cstddef>
#include <optional>
#include <set>
#include <string>

#include "sim/default_tune.h"

namespace nerit::sim {

// Replies are numbered from 1 in the order the controller produces them; status frames and
// debug lines are not replies. Each byte of the boot loader is one reply: the 0x05 that
// answers the start request, each block's 0x06 and the closing 0x07, which comes after the
// last block's 0x06. A loader started waiting sends no 0x05, so its first 0x06 is reply 1.
// Garbage and chunks touch reply frames only, never the loader's bytes.
struct Faults {
  std::set<int> drop_replies;            // these replies are never sent
  std::string garbage;                   // bytes sent just before a reply frame
  std::set<int> garbage_replies;         // which replies get the garbage; empty: every reply frame
  std::size_t chunk_size = 0;            // frames go out in pieces of this many bytes; 0: whole
  std::optional<double> silent_from_ms;  // nothing is sent that is due from then on
  std::optional<int> silent_after_replies;  // nothing is sent after this many replies
  std::optional<double> vanish_at_ms;       // the line goes away at this time
  std::optional<int> vanish_after_replies;  // ... or once this reply has been sent
  bool forget_ram_writes = false;           // 0x0B writes are acknowledged but not stored
};

struct Options {
  bool paced = false;         // 19200 baud, 10 bits a byte, one byte after the other
  double reply_delay_ms = 0;  // time the controller takes before it answers
  double stream_interval_ms = 50;
  double debug_interval_ms = 250;
  double debug_cr_gap_ms = 5;     // the CR of a debug line follows its text after this pause
  double frame_timeout_ms = 100;  // a partial command frame is given up after this silence
  std::optional<double> hold_engine_at_ms;  // the engine stays where it is at that time
  std::string firmware = kDefaultFirmware;
  std::string state_file;             // keeps the permanent state across runs; empty: none
  bool demo_tune = false;             // starts from demo_tune() unless the state file holds a tune
  bool start_in_boot_loader = false;  // waits for an image and sends nothing until bytes come
  double block_programming_ms = 5;    // from a block's last byte to its 0x06
  std::string flash_image_file;       // each image received in full goes here; empty: none
  Faults faults;
};

// 10 bits of 1/19200 s.
inline constexpr double kByteMs = 10000.0 / 19200.0;

}  // namespace nerit::sim
