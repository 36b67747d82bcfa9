#pragma once
// The firmware window: loads an image and sends it to the controller's boot loader over a port
// of its own, block by block, each block acknowledged before the next.
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "firmware/form2_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

inline constexpr const char* kFirmwareLineSettings = "19200,N,8,1";
inline constexpr int kRecoveryPort = 14;

class Form2 {
 public:
  Form2(Platform& platform, ProgramState& vars);
  Form2(const Form2&) = delete;
  Form2& operator=(const Form2&) = delete;
  ~Form2();

  // Opens the port the main window handed over, or the one the user names.
  void Form_Load();
  // Ends a transfer under way, closes the port, then "Please restart Nerit".
  void Form_Unload();

  void Command1_Click();  // "Load File"
  void Command2_Click();  // "Update - Normal": start request, any reply, then the image
  void Command5_Click();  // "Update - Recovery": the image to a loader already waiting
  void Command4_Click();  // "Port Open": port 14 for a loader that waits
  void Command3_Click();  // "Close"
  void MSComm1_OnComm();

  Form2Controls c;
  Timer Timer1{5000};  // armed while waiting for the first reply; its tick does nothing

  // Runs before "Update - Normal" sends anything (the main window keeps a restore point).
  std::function<void()> before_update;

  SerialPort& port() { return *port_; }
  bool transferring() const { return transferring_; }
  const std::filesystem::path& file() const { return file_; }
  long file_length() const { return length_; }

 private:
  void open_port(int number);
  void transfer(bool normal);
  void send_image();
  // Serves events until `flag` is set; false when the transfer has to end instead.
  bool wait_for(const int& flag);
  void lock(bool running);
  void port_closed(const std::string& why);

  Platform& p_;
  ProgramState& vars_;
  std::unique_ptr<SerialPort> port_;
  std::filesystem::path file_;
  long length_ = 0;
  std::vector<std::uint8_t> image_;
  int received_ = 0;     // any bytes arrived
  int block_acked_ = 0;  // 0x06 arrived
  int timed_out_ = 0;    // nothing ever sets it: the wait for the first reply has no end
  bool transferring_ = false;
  bool abort_ = false;  // the window is going, or the port went
  long long started_ms_ = 0;
};

}  // namespace nerit
