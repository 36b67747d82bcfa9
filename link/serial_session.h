#pragma once
// The main window's serial session: finding and connecting the controller, the debug port,
// the block-read sequences, handing the port to the firmware window, and the link timers.
#include <string>

#include "link/link_state.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

inline constexpr const char* kLineSettings = "19200,N,8,1";

class SerialSession {
 public:
  SerialSession(Form1Controls& c, ProgramState& vars, LinkState& link, Platform& platform)
      : c_(c), vars_(vars), link_(link), p_(platform) {}

  void Command1_Click();        // Connect / disconnect; also the menu "Autoconnect"
  void autoconnect2();          // the second scan routine
  void Combo2_Click();          // debug port
  void Command12_Click();       // Read Data from Unit
  void Lesen_Click();           // menu Read Data
  void firmwareupdate_Click();  // menu Firmwareupdate
  void List1_Click();
  void Command11_Click() {}

  void Timer1_Timer();
  void Timer2_Timer();
  void Timer3_Timer();
  void Timer5_Timer();

  void send_sram_read(int address);
  void send_block_request(int address);

  // Writes a whole frame, one character per output call.
  void send_frame(const std::string& frame);
  // reply_done = 0, then lets events run until the dispatcher (or Timer3) sets it to 1.
  void wait_for_reply();
  // A log line: the current time, then the text (which starts with " -> ").
  void log(const std::string& text);

 private:
  bool try_open(int port_number);
  void wait_for_connect();
  void show_online();  // labels online with the port, Check1 enabled
  void show_offline(const char* word);
  void close_link();  // port closed, labels offline, connected = 0

  Form1Controls& c_;
  ProgramState& vars_;
  LinkState& link_;
  Platform& p_;
};

}  // namespace nerit
