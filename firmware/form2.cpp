#include "firmware/form2.h"

#include <string>

#include "shell/colors.h"
#include "shell/data_files.h"
#include "shell/errors.h"

namespace nerit {

namespace {

// A port number as typed: digits only, 1..255; 0 for anything else.
int port_number(const std::string& text) {
  if (text.empty() || text.size() > 3) return 0;
  int n = 0;
  for (char ch : text) {
    if (ch < '0' || ch > '9') return 0;
    n = 10 * n + (ch - '0');
  }
  return n <= 255 ? n : 0;
}

}  // namespace

Form2::Form2(Platform& platform, ProgramState& vars)
    : p_(platform), vars_(vars), port_(platform.ports.make_port()) {
  port_->on_comm = [this] { MSComm1_OnComm(); };
  port_->on_closed = [this](const std::string& why) { port_closed(why); };
  Timer1.attach(&platform.timers);
}

Form2::~Form2() {
  port_->on_comm = nullptr;
  port_->on_closed = nullptr;
}

void Form2::Form_Load() {
  c = Form2Controls{};
  abort_ = false;
  int number = vars_.comport > 0 ? static_cast<int>(vars_.comport) : 0;
  if (number == 0) {
    const std::string typed = p_.dialogs.input_box("Comport:", "Hinweis", "");
    number = port_number(typed);
    if (number == 0) {
      c.Label1.caption = typed.empty() ? "No port chosen: use \"Port Open\" for port " +
                                             std::to_string(kRecoveryPort) + "."
                                       : "\"" + typed + "\" is no port number (1-255).";
      return;
    }
  }
  open_port(number);
}

void Form2::open_port(int number) {
  if (port_->port_open()) port_->set_port_open(false);
  port_->set_comm_port(number);
  port_->set_settings(kFirmwareLineSettings);
  try {
    port_->set_port_open(true);
  } catch (const SerialError& e) {
    c.Label1.caption = "Port " + std::to_string(number) + " cannot be opened: " + e.what();
    return;
  }
  c.caption = "Firmwareupdate Com:" + std::to_string(number);
}

void Form2::Command1_Click() {
  const auto chosen = p_.dialogs.file_dialog(
      {FileDialogRequest::Kind::Open, "Open", vars_.pfad, "Binary Files (*.bin)|*.bin"});
  if (chosen.empty()) return;
  auto bytes = read_file_bytes(chosen);
  if (!bytes) throw FileError("The file " + chosen.string() + " does not exist.");
  file_ = chosen;
  length_ = static_cast<long>(bytes->size());
  image_ = std::move(*bytes);
  c.file_label.caption = file_.filename().string() + ", " + std::to_string(length_) + " bytes";
  if (length_ > kMaxImageBytes)
    p_.dialogs.message_box("Datei zu groß!", MsgButtons::Ok, MsgIcon::Critical, "Error");
  c.Command2.enabled = c.Command5.enabled = true;
}

void Form2::Command2_Click() {
  transfer(true);
}

void Form2::Command5_Click() {
  transfer(false);
}

void Form2::Command4_Click() {
  if (transferring_) return;
  if (port_->port_open()) port_->set_port_open(false);
  port_->set_comm_port(kRecoveryPort);
  port_->set_port_open(true);
  c.caption = "Firmwareupdate Com:" + std::to_string(kRecoveryPort);
  c.Command2.enabled = c.Command5.enabled = true;
  c.Label1.caption = "Warte....";
}

void Form2::Command3_Click() {
  p_.windows.unload(FormId::Form2);
}

void Form2::Form_Unload() {
  abort_ = true;  // a transfer waiting further down the stack ends
  Timer1.set_enabled(false);
  if (port_->port_open()) port_->set_port_open(false);
  p_.dialogs.message_box("Please restart Nerit", MsgButtons::Ok, MsgIcon::None, "Hinweis");
}

void Form2::MSComm1_OnComm() {
  if (port_->comm_event() != SerialPort::kReceive || !port_->port_open()) return;
  const std::string chunk = port_->input();
  received_ = 1;
  // Byte by byte: an acknowledgement and the end of programming may arrive together.
  for (char ch : chunk) {
    switch (static_cast<std::uint8_t>(ch)) {
      case kLoaderReady:
        c.Label1.caption = "Bereit.";
        break;
      case kBlockReceived:
        c.Label1.caption = "Übertragen.";
        block_acked_ = 1;
        break;
      case kProgrammingDone:
        c.Label1.caption = "Fertig.";
        c.Label1.back_color = kGreen;
        port_->set_port_open(false);
        return;
      default:
        break;
    }
  }
}

void Form2::port_closed(const std::string& why) {
  c.Label1.caption = "Port closed: " + why;
  abort_ = true;
}

void Form2::lock(bool running) {
  transferring_ = running;
  c.Command1.enabled = c.Command4.enabled = !running;
  c.Command2.enabled = c.Command5.enabled = !running;
}

bool Form2::wait_for(const int& flag) {
  while (!flag) {
    if (abort_) return false;
    p_.pump.process_events();
  }
  return !abort_;
}

void Form2::transfer(bool normal) {
  if (transferring_) return;
  if (file_.empty())
    throw ProgramError("Load the firmware file (\"Load File\") before the update.");
  if (!port_->port_open())
    throw ProgramError("No port is open: the window needs a port for the update.");
  abort_ = false;
  lock(true);
  struct Unlock {
    Form2& f;
    ~Unlock() { f.lock(false); }
  } unlock{*this};
  received_ = 0;
  if (normal) {
    if (before_update) before_update();
    for (char ch : boot_loader_request()) port_->output(std::string(1, ch));
    Timer1.set_enabled(true);
    if (!wait_for(received_) && !timed_out_) return;
    Timer1.set_enabled(false);
  }
  send_image();
}

void Form2::send_image() {
  started_ms_ = p_.clock.milliseconds();
  long sent = 0;
  for (long block = 0; block < kBlocks; ++block) {
    for (long i = 0; i < kBlockBytes; ++i) {
      port_->output(std::string(1, static_cast<char>(transfer_byte(image_, sent + 1))));
      ++sent;
      c.ProgressBar1.value = static_cast<int>(sent);
      c.Label2.caption = progress_text(sent);
    }
    c.Label3.caption = transfer_time_text(sent, p_.clock.milliseconds() - started_ms_);
    block_acked_ = 0;
    if (!wait_for(block_acked_)) return;
  }
  if (c.Label1.caption != "Fertig.") c.Label1.caption = "Fertig";
  c.Label1.back_color = kGreen;
}

}  // namespace nerit
