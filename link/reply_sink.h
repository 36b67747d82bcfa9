#pragma once
// Where the link hands each decoded reply once it has done its own part (log line, wait flags,
// link labels). The program's parts each show their share of it.
#include "link/replies.h"

namespace nerit {

class ReplySink {
 public:
  virtual ~ReplySink() = default;
  virtual void firmware(const FirmwareReply&) {}
  // Failures in here are ignored: the next status frame comes soon.
  virtual void status(const StatusReply&) {}
  // Failures end the reply with the error's box; the request counts as answered all the same.
  virtual void memory_block(const MemoryBlockReply&) {}
  virtual void text(const TextReply&) {}
};

}  // namespace nerit
