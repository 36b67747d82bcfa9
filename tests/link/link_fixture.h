#pragma once
// A loaded main window on the fake platform with a scripted controller on the wire.
#include <gtest/gtest.h>

#include <map>

#include "app/form1.h"
#include "link/frames.h"
#include "tests/support/fake_platform.h"
#include "tests/support/scripted_peer.h"

namespace nerit::testing {

class LinkFixture : public ::testing::Test {
 protected:
  LinkFixture() : program(fp.platform, folder.path()), f(program.form1), peer(fp.comm) {
    f.shell.Form_Load();
  }

  // Port 1 open and the controller online, as after a successful connect.
  void go_online(int port = 1) {
    fp.comm.present.insert(port);
    fp.comm.set_comm_port(port);
    fp.comm.set_port_open(true);
    f.vars.connected = 1;
  }

  // Answers 0x0C reads from `memory` and acknowledges writes like the controller.
  void answer_like_controller() {
    peer.answer = [this](const ScriptedPeer::Frame& fr) -> std::optional<std::string> {
      const auto code = static_cast<std::uint8_t>(fr.bytes[1]);
      const auto hi = static_cast<std::uint8_t>(fr.bytes[2]);
      const auto lo = static_cast<std::uint8_t>(fr.bytes[3]);
      const int address =
          static_cast<std::uint8_t>(fr.bytes[2]) * 256 + static_cast<std::uint8_t>(fr.bytes[3]);
      if (code == kCmdConnect) return firmware_reply("Nerit TEST 1.00 ");
      if (code == kCmdSramRead) {
        std::vector<std::uint8_t> data{hi, lo};
        for (int i = 0; i < 16; ++i) data.push_back(memory[address + i]);
        return reply_frame(kReplySram, data);
      }
      if (code == kCmdBlockRequest) return reply_frame(kReplyBlock, {hi, lo});
      if (code == kCmdSramWrite) {
        for (int i = 0; i < 16; ++i)
          memory[address + i] = static_cast<std::uint8_t>(fr.bytes[4 + i]);
        return text_reply("Write SDram");
      }
      if (code == kCmdEepromWrite) return text_reply("Write EEProm");
      if (code == kCmdMakePermanent) return text_reply("Permanent", 1);
      return std::nullopt;
    };
  }

  // The button's colour each time the controller received a frame.
  std::vector<Color>& record_colour(const CommandButton& button) {
    auto inner = peer.answer;
    peer.answer = [this, inner, &button](const ScriptedPeer::Frame& fr) {
      colours.push_back(button.back_color);
      return inner ? inner(fr) : std::nullopt;
    };
    return colours;
  }

  std::string frame_text(std::size_t i) const { return peer.frames.at(i).bytes; }

  FakePlatform fp;
  TempFolder folder;
  Program program;
  Form1& f;
  ScriptedPeer peer;
  std::map<int, std::uint8_t> memory;
  std::vector<Color> colours;  // controller memory by address (missing = 0)
};

inline std::string bytes(std::initializer_list<int> list) {
  std::string s;
  for (int b : list) s += static_cast<char>(b);
  return s;
}

}  // namespace nerit::testing
