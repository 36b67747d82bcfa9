#include "link/serial_session.h"

#include "link/frames.h"
#include "link/memory_map.h"
#include "shell/errors.h"

namespace nerit {

void SerialSession::show_offline(const char* word) {
  c_.Label4[0].caption = word;
  c_.Label4[0].back_color = kRed;
}

void SerialSession::show_online() {
  c_.Label4[0].caption = "online";
  c_.Label4[0].back_color = kGreen;
  c_.Label4[1].caption = "Port: " + std::to_string(vars_.port);
  c_.Check1.enabled = true;
}

void SerialSession::close_link() {
  p_.comm.set_port_open(false);
  show_offline("offline");
  c_.Label4[1].caption = "Connection";
  c_.Label4[2].caption = "Closed";
  vars_.connected = 0;
}

bool SerialSession::try_open(int port_number) {
  // Each step is tried even when the one before failed; any failure skips the port.
  bool ok = true;
  auto attempt = [&ok](auto step) {
    try {
      step();
    } catch (const ProgramError&) {
      ok = false;
    }
  };
  attempt([&] { p_.comm.set_comm_port(port_number); });
  attempt([&] { p_.comm.set_settings(kLineSettings); });
  attempt([&] {
    try {
      p_.comm.set_port_open(true);
    } catch (const SerialPermissionError& e) {
      // A port the user may not open is worth a line: the scan would otherwise just end offline.
      wire_.log(" -> Port " + std::to_string(port_number) + ": " + e.what());
      throw;
    }
  });
  return ok;
}

void SerialSession::wait_for_connect() {
  c_.Timer2.set_enabled(true);
  link_.connect_timeout = 0;
  while (link_.connect_timeout != 1 && vars_.connected != 1) p_.pump.process_events();
}

void SerialSession::Command1_Click() {
  if (vars_.debugmode == 1) {
    close_link();
    vars_.debugmode = 0;
  }
  if (vars_.connected == 1) {
    close_link();
    c_.Combo2.enabled = true;
    return;
  }
  for (int round = 1; round <= 2 && vars_.connected != 1; ++round) {
    for (vars_.port = 1; vars_.port <= 25; ++vars_.port) {
      if (try_open(vars_.port)) {
        wire_.send(connect_frame());
        wait_for_connect();
      }
      if (vars_.connected == 1) break;
      p_.comm.set_port_open(false);
    }
  }
  if (vars_.connected != 1) {
    c_.Combo2.enabled = true;
    show_offline("offline");
    p_.dialogs.message_box("Verbindung fehlgeschlagen!", MsgButtons::Ok, MsgIcon::Critical,
                           "Error");
    p_.comm.set_port_open(false);
    return;
  }
  show_online();
  c_.Combo2.select(-1);
  c_.Combo2.enabled = false;
  if (p_.dialogs.message_box("Verbunden, Daten vom Controller laden?", MsgButtons::YesNo,
                             MsgIcon::None, "Online") == MsgAnswer::Yes)
    Command12_Click();
}

void SerialSession::autoconnect2() {
  // A port that opened without answering stays open, so the ports after it cannot be
  // selected any more; the routine has always behaved this way.
  for (vars_.port = 1; vars_.port <= 255; ++vars_.port) {
    if (try_open(vars_.port)) {
      wire_.send(short_connect_frame());
      wait_for_connect();
    }
    if (vars_.connected == 1) break;
  }
  if (vars_.connected == 1)
    show_online();
  else
    show_offline("offline");
}

void SerialSession::Combo2_Click() {
  const int index = c_.Combo2.list_index;
  if (index >= 1) {
    p_.comm.set_comm_port(index);
    p_.comm.set_settings(kLineSettings);
    p_.comm.set_port_open(true);
    vars_.debugmode = 1;
    c_.Label4[0].caption = "Debug";
    c_.Label4[0].back_color = kYellow;
  } else if (index == 0) {
    p_.comm.set_port_open(false);
    vars_.debugmode = 0;
    show_offline("Offline");
  }
}

void SerialSession::send_sram_read(int address) {
  if (vars_.connected == 0) return;
  wire_.send(address_frame(kCmdSramRead, address));
}

void SerialSession::send_block_request(int address) {
  if (vars_.connected == 0) return;
  wire_.send(address_frame(kCmdBlockRequest, address));
}

void SerialSession::Command12_Click() {
  // Offline nothing would answer, and the wait below has no end of its own.
  if (vars_.connected == 0) return;
  c_.Timer5.set_enabled(true);
  c_.Command12.back_color = kYellow;
  // However the read ends, the guard timer stops and the button shows it has ended.
  struct Finished {
    Form1Controls& c;
    ~Finished() {
      c.Command12.back_color = kButtonFace;
      c.Timer5.set_enabled(false);
    }
  } finished{c_};
  auto request = [this](int address) {
    send_sram_read(address);
    wire_.wait_for_reply();
  };
  for (int address : kSettingsReadOrder) request(address);
  for (int r = 1; r <= 16; ++r) request(correction_row_address(r));
  for (int r = 1; r <= 16; ++r)
    for (int half = 0; half < 2; ++half) request(airflow_row_address(r) + 16 * half);
  if (read_done) read_done();
}

void SerialSession::Lesen_Click() {
  if (vars_.connected == 0) return;
  for (int address : kEepromRequestOrder) {
    send_block_request(address);
    wire_.wait_for_reply();
  }
}

void SerialSession::firmwareupdate_Click() {
  if (vars_.connected == 1) {
    vars_.comport = p_.comm.comm_port();
    close_link();
  }
  p_.windows.show(FormId::Form2);
}

void SerialSession::List1_Click() {
  c_.List1.clear();
}

void SerialSession::Timer1_Timer() {
  wire_.send(stream_frame(0));
}

void SerialSession::Timer2_Timer() {
  link_.connect_timeout = 1;
  c_.Timer2.set_enabled(false);
}

void SerialSession::Timer3_Timer() {
  link_.reply_done = 1;
  c_.Timer3.set_enabled(false);
}

void SerialSession::Timer5_Timer() {
  wire_.log(" -> Communication Timeout");
  Command12_Click();
}

void SerialSession::MSComm1_Closed(const std::string& why) {
  const int number = p_.comm.comm_port();
  wire_.log(" -> Port " + std::to_string(number) + " (" + p_.comm.device_name(number) +
            ") closed: " + why);
  if (vars_.connected != 1 && vars_.debugmode != 1) return;
  close_link();
  vars_.debugmode = 0;
  c_.Combo2.enabled = true;
  for (Timer* t : {&c_.Timer1, &c_.Timer2, &c_.Timer3, &c_.Timer5}) t->set_enabled(false);
  // Whatever was under way has ended: no button goes on showing a transfer.
  for (CommandButton* b : {&c_.Command12, &c_.Command9, &c_.Command15, &c_.Command5})
    b->back_color = kButtonFace;
  for (CommandButton& b : c_.Command4) b.back_color = kButtonFace;
}

}  // namespace nerit
