#pragma once
// Everything the controller sends arrives here: the receive event's filter, framing, debug
// text lines, then the reply decoded and the link's own part done (log lines, reply_done,
// connected, the firmware label, the Make Permanent button) before the sink gets it.
#include "link/link_state.h"
#include "link/reply_sink.h"
#include "link/wire.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

class ReplyDispatcher {
 public:
  ReplyDispatcher(Form1Controls& c, ProgramState& vars, LinkState& link, Platform& platform,
                  Wire& wire)
      : c_(c), vars_(vars), link_(link), p_(platform), wire_(wire) {}

  void MSComm1_OnComm();
  ReplySink* sink = nullptr;

 private:
  void dispatch(const Reply& reply);

  Form1Controls& c_;
  ProgramState& vars_;
  LinkState& link_;
  Platform& p_;
  Wire& wire_;
};

}  // namespace nerit
