#pragma once
// The main window's serial session: finding and connecting the controller, the debug port,
// the block-read sequences, handing the port to the firmware window, a port that closes by
// itself, and the link timers.
#include <functional>
#include <string>

#include "link/link_state.h"
#include "link/wire.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

inline constexpr const char* kLineSettings = "19200,N,8,1";

class SerialSession {
 public:
  SerialSession(Form1Controls& c, ProgramState& vars, LinkState& link, Platform& platform,
                Wire& wire)
      : c_(c), vars_(vars), link_(link), p_(platform), wire_(wire) {}

  void Command1_Click();        // Connect / disconnect; also the menu "Autoconnect"
  void autoconnect2();          // the second scan routine
  void Combo2_Click();          // debug port
  void Command12_Click();       // Read Data from Unit
  void Lesen_Click();           // menu Read Data
  void firmwareupdate_Click();  // menu Firmwareupdate
  void List1_Click();
  void Command11_Click() {}
  // The open port closed by itself (adapter unplugged): logged, and an online or debug link
  // goes offline as a disconnect would take it.
  void MSComm1_Closed(const std::string& why);

  void Timer1_Timer();
  void Timer2_Timer();
  void Timer3_Timer();
  void Timer5_Timer();

  // A read of the controller's tune into the window has ended.
  std::function<void()> read_done;

  void send_sram_read(int address);
  void send_block_request(int address);

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
  Wire& wire_;
};

}  // namespace nerit
