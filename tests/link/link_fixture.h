#pragma once
// A loaded main window on the fake platform with a scripted controller on the wire.
#include <gtest/gtest.h>

#include <map>

#include "app/form1.h"
#include "link/frames.h"
#include "tests/support/fake_platform.h"
#include "tests/support/reply_frames.h"
#include "tests/support/scripted_peer.h"

namespace nerit::testing {

class LinkFixture : public ::testing::Test {
 protected:
  LinkFixture() { f.Form_Load(); }

  // Port `port` open and the controller online, as after a successful connect.
  void go_online(int port = 1) {
    fp.comm.present.insert(port);
    fp.comm.set_comm_port(port);
    fp.comm.set_port_open(true);
    f.vars.connected = 1;
  }

  // Answers like the controller: reads from `memory`, writes into it, acknowledges the rest.
  void answer_like_controller() {
    peer.answer = [this](const ScriptedPeer::Frame& fr) -> std::optional<std::string> {
      const int address = fr.address();
      switch (fr.code()) {
        case kCmdConnect:
          return firmware_reply("Nerit TEST 1.00 ");
        case kCmdSramRead: {
          ReplyFrame reply(kReplySram);
          for (int i = 0; i < 16; ++i) reply.byte(4 + i, memory[address + i]);
          return reply.address(address);
        }
        case kCmdBlockRequest:
          return ReplyFrame(kReplyBlock).address(address);
        case kCmdSramWrite:
          for (int i = 0; i < 16; ++i)
            memory[address + i] = static_cast<std::uint8_t>(fr.bytes[4 + i]);
          return text_reply("Write SDram");
        case kCmdEepromWrite:
          return text_reply("Write EEProm");
        case kCmdMakePermanent:
          return text_reply("Permanent", 1);
      }
      return std::nullopt;
    };
  }

  std::string frame_text(std::size_t i) const { return peer.frames.at(i).bytes; }

  FakePlatform fp;
  TempFolder folder;
  Program program{fp.platform, folder.path()};
  Form1& f = program.form1;
  ScriptedPeer peer{fp.comm};
  std::map<int, std::uint8_t> memory;  // controller memory by address (missing = 0)
};

}  // namespace nerit::testing
