#pragma once
// Everything the controller sends arrives here: framing of the receive buffer, then the
// firmware, status, memory-block, 0x02 and text replies decoded into the window.
#include <functional>

#include "link/link_state.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

// The values of one status frame, in the order the data log writes them.
struct LiveRow {
  double drehzahl = 0;
  double inj_in_us = 0;
  double inj_out_us = 0;
  double adjust_percent = 0;
  double boost_kpa = 0;
  double tps_in = 0;
  double airflow_out_hz = 0;
};

// Reached by the dispatcher, filled in by the parts that own them.
struct DispatcherHooks {
  std::function<void(double speed, double load, double value)> automap;
  std::function<void(int grid_row, int grid_col)> highlight;  // the operating cell moved
  std::function<void(const LiveRow& row)> log_row;            // every status frame
  std::function<void()> load_type_changed;  // the controller's load type was selected
};

class ReplyDispatcher {
 public:
  ReplyDispatcher(Form1Controls& c, ProgramState& vars, LinkState& link, Platform& platform)
      : c_(c), vars_(vars), link_(link), p_(platform) {}

  void MSComm1_OnComm();
  DispatcherHooks hooks;

 private:
  void dispatch();
  void firmware_reply();
  void status_reply();
  void sram_reply();
  void text_reply();
  void settings_block_1();
  void settings_block_2();
  void show_live_values(const LiveRow& row, double analog_volts, double airflow_in_hz, char sep);
  void log(const std::string& text);
  int b(int i) const { return link_.rxbytes[static_cast<std::size_t>(i)]; }

  Form1Controls& c_;
  ProgramState& vars_;
  LinkState& link_;
  Platform& p_;
};

}  // namespace nerit
