#include "link/reply_dispatcher.h"

#include <algorithm>
#include <stdexcept>

#include "link/cell_codec.h"
#include "link/frames.h"
#include "link/map_rows.h"
#include "shell/errors.h"
#include "shell/numbers.h"

namespace nerit {

namespace {

constexpr const char* kFrequencyCaption = "Airflow Out: Karman Vortex 20-3000 Hz";
constexpr const char* kVoltageCaption = "Airflow Out: Voltage 0-5000 mV";

// Status frames go on past a bad value: the statement is skipped, the rest still runs.
template <class Statement>
void quietly(Statement statement) {
  try {
    statement();
  } catch (const ProgramError&) {
  } catch (const std::out_of_range&) {
  }
}

// The frequency of a vortex period in 4 us ticks; no period, no frequency.
double vortex_hz(long period) {
  return period == 0 ? 0 : whole_part(250000.0 / static_cast<double>(period));
}

}  // namespace

void ReplyDispatcher::log(const std::string& text) {
  c_.List1.add_item(p_.time_text() + text);
}

void ReplyDispatcher::MSComm1_OnComm() {
  const int event = p_.comm.comm_event();
  if (event != SerialPort::kReceive) return;  // overrun, overflow and the rest

  const std::string chunk = p_.comm.input();
  link_.rxbuffer += chunk;

  // In debug mode the controller writes text lines; a CR on its own ends one.
  if (vars_.debugmode == 1 && chunk == "\r") {
    std::string line = link_.rxbuffer;
    line.pop_back();
    c_.List1.add_item(line);
    link_.rxbuffer.clear();
  }

  // A frame is recognised only when a chunk ends exactly on its CR LF; anything before the
  // last 22 characters goes with it.
  const std::string& buf = link_.rxbuffer;
  if (buf.size() < kFrameLength || buf.compare(buf.size() - 2, 2, "\r\n") != 0) return;
  link_.rxframe.assign(buf, buf.size() - kFrameLength, kFrameLength);
  link_.rxbuffer.clear();
  for (std::size_t i = 0; i < 21; ++i)
    link_.rxbytes[i] = static_cast<std::uint8_t>(link_.rxframe[i]);
  if (b(0) == kFrameStart) dispatch();
}

void ReplyDispatcher::dispatch() {
  switch (b(1)) {
    case kReplyFirmware:
      firmware_reply();
      break;
    case kReplyStatus:
      status_reply();
      break;
    case kReplySram:
      sram_reply();
      break;
    case kReplyBlock:
      link_.reply_done = 1;
      break;
    case kReplyText:
      text_reply();
      break;
    default:
      break;
  }
}

void ReplyDispatcher::firmware_reply() {
  std::string text;
  for (int i = 4; i <= 19; ++i) text += static_cast<char>(b(i));
  log("->  online Firmware: " + text);
  c_.Label4[2].caption = text;
  vars_.connected = 1;
}

void ReplyDispatcher::text_reply() {
  std::string text;
  for (int i = 4; i <= 19 && b(i) != 0; ++i) text += static_cast<char>(b(i));
  if (text == "Write SDram")
    log(" -> " + text + " @ 0x" + hex_text(link_.write_addr));
  else
    log(" -> " + text);
  link_.reply_done = 1;
  if (b(3) == 1) c_.Command5.back_color = kButtonFace;
}

void ReplyDispatcher::status_reply() {
  std::string line = " -> Status: ";
  for (int i = 4; i <= 19; ++i) line += " " + hex_text(b(i));
  log(line);

  auto& W = link_.W;
  for (int k = 1; k <= 8; ++k) W[static_cast<std::size_t>(k)] = b(2 * k + 3) * 256L + b(2 * k + 2);

  quietly([&] {
    const double speed = whole_part(divide(vars_.rpmfaktor, static_cast<double>(W[4])));
    if (speed < 9000) vars_.drehzahl = speed;  // spikes are noise, not engine speed
  });

  LiveRow row;
  row.drehzahl = vars_.drehzahl;
  row.inj_in_us = 4.0 * static_cast<double>(W[2]);
  row.inj_out_us = 4.0 * static_cast<double>(W[3]);
  row.adjust_percent = round_half_even(b(12) * 100.0 / 128 - 100);

  const char sep = p_.decimal_separator();
  row.boost_kpa = c_.pressure_table[static_cast<std::size_t>(b(5))] - 100;
  vars_.map_volt = format_0_00(b(5) * 5.0 / 255, sep);
  link_.map_raw = b(5);

  vars_.tps_raw = b(4);
  vars_.tps_in_volt = format_0_00(b(4) * 5.0 / 255, sep);
  quietly([&] {
    vars_.tps_in = whole_part((b(4) - vars_.tps_min) * divide(100, vars_.tps_max - vars_.tps_min));
  });
  if (vars_.tps_in < 0) vars_.tps_in = 0;
  if (vars_.tps_in > 100) vars_.tps_in = 100;
  row.tps_in = vars_.tps_in;

  const double analog_volts = b(16) * 5.0 / 255;
  row.airflow_out_hz = vortex_hz(W[6]);
  const double airflow_in_hz = vortex_hz(W[8]);

  if (c_.Check5.value == 1 && hooks.automap) {
    double load = 0;
    switch (c_.Combo1.list_index) {
      case 0:
        load = vars_.tps_in;
        break;
      case 1:
        load = row.boost_kpa + 100;
        break;  // absolute pressure
      case 2:
        load = whole_part(b(16) * 5000.0 / 255);
        break;  // mV, as the load axis counts
      case 3:
        load = airflow_in_hz;
        break;
      default:
        break;
    }
    quietly([&] { hooks.automap(vars_.drehzahl, load, airflow_in_hz); });
  }

  show_live_values(row, analog_volts, airflow_in_hz, sep);

  const int cell = b(13);
  if (vars_.fokus != 1) {
    link_.cell_row = cell / 16;
    link_.cell_col = std::max(cell & 15, 1);
  }
  if (c_.Check2.value == 1 && cell != link_.previous_cell && hooks.highlight)
    quietly([&] { hooks.highlight(link_.cell_row + 1, link_.cell_col); });
  link_.previous_cell = cell;

  if (hooks.log_row) quietly([&] { hooks.log_row(row); });
}

void ReplyDispatcher::show_live_values(const LiveRow& row, double analog_volts,
                                       double airflow_in_hz, char sep) {
  Grid& g = c_.MSFlexGrid1;
  auto put = [&g](int r, std::string text) {
    g.set_current(r, 1);
    g.set_text(r, 1, std::move(text));
  };
  put(1, number_text(row.drehzahl));
  put(2, number_text(row.inj_in_us));
  put(3, number_text(row.inj_out_us));
  put(4, number_text(row.adjust_percent));
  switch (c_.boost_display) {
    case 2:
      put(5, vars_.map_volt);
      break;
    case 3:
      put(5, number_text(link_.map_raw));
      break;
    default:
      put(5, number_text(row.boost_kpa));
      break;
  }
  put(6, number_text(row.tps_in));
  put(7, number_text(row.airflow_out_hz));
  put(8, c_.Combo1.list_index == 2 ? format_0_00(analog_volts, sep) : "--");
  put(9, number_text(airflow_in_hz));
}

void ReplyDispatcher::sram_reply() {
  const int address = b(2) * 256 + b(3);
  log(" -> Read SRam @ 0x" + hex_text(address));
  // The block is answered even when it cannot be shown, so a read goes on to the next block
  // instead of repeating this one forever.
  struct Answered {
    int& flag;
    ~Answered() { flag = 1; }
  } answered{link_.reply_done};

  if (address == 0x240) {
    settings_block_1();
  } else if (address == 0x250) {
    settings_block_2();
  } else if (address == 0x260 || address == 0x270) {
    const int first = address == 0x260 ? 1 : 9;
    for (int k = 0; k < 8; ++k)
      c_.load_points[static_cast<std::size_t>(first + k)] =
          to_int16(b(5 + 2 * k) * 256 + b(4 + 2 * k));
  } else if (address == 0x280 || address == 0x290) {
    const int first = address == 0x280 ? 1 : 9;
    for (int k = 0; k < 8; ++k)
      c_.rpm_points[static_cast<std::size_t>(first + k)] = b(5 + 2 * k) * 256 + b(4 + 2 * k);
    for (int k = 0; k < 8; ++k) {
      const int col = first + k;
      const int period = c_.rpm_points[static_cast<std::size_t>(col)];
      if (period == 0) continue;  // an unset point has no speed to show
      const double rpm = vars_.rpmfaktor / period;
      const std::string heading = number_text(round_half_even(rpm / 100) * 100);
      c_.MSFlexGrid2.set_text(0, col, heading);
      c_.MSFlexGrid3.set_text(0, col, heading);
    }
  } else if (address >= kCorrectionMapAddress && address < kAirflowMapAddress) {
    const int row = (address - kCorrectionMapAddress) / 16 + 1;
    for (int i = 1; i <= 16; ++i)
      c_.MSFlexGrid2.set_text(row, i, correction_cell_text(static_cast<std::uint8_t>(b(3 + i))));
  } else if (address >= kAirflowMapAddress && address < kAirflowMapAddress + 16 * 32) {
    const int row = (address - kAirflowMapAddress) / 32 + 1;
    const int first_col = (address / 16) % 2 == 0 ? 1 : 9;
    for (int j = 0; j < 8; ++j)
      c_.MSFlexGrid3.set_text(
          row, first_col + j,
          airflow_cell_text(static_cast<std::uint8_t>(b(4 + 2 * j)),
                            static_cast<std::uint8_t>(b(5 + 2 * j)), vars_.airflowtype));
  }
}

void ReplyDispatcher::settings_block_1() {
  c_.Combo1.select(b(4));
  if (hooks.load_type_changed) hooks.load_type_changed();
  vars_.drucksensor = b(5);
  vars_.tps_min = b(6);
  vars_.tps_max = b(7);
  vars_.injoffset_in = b(9) * 256 + b(8);
  vars_.injoffset_out = b(11) * 256 + b(10);
  vars_.injalt = b(13) * 256 + b(12);
  vars_.injneu = b(15) * 256 + b(14);
  vars_.injsizecorr = b(16);
  vars_.airflowtype = b(17);
  vars_.aoutmax = b(18);

  const bool frequency = vars_.airflowtype == 0;
  c_.Frame1[kPanelAirflowOutput].caption = frequency ? kFrequencyCaption : kVoltageCaption;
  c_.OptionFrequency.value = frequency;
  c_.OptionAnalog.value = !frequency;
  if (frequency)
    c_.Combo3.select(0);
  else if (vars_.airflowtype < c_.Combo3.list_count())
    c_.Combo3.select(static_cast<int>(vars_.airflowtype));
  c_.Combo3.enabled = c_.Label1.enabled = c_.Text1.enabled = !frequency;
  c_.Text1.text = number_text(floor_part(vars_.aoutmax * 5000 / 255));

  const bool boost = b(19) == 1;
  c_.Check3.value = boost ? 1 : 0;
  c_.boost_enable = c_.Check3.value;
  c_.Frame1[kPanelBoostcontrol].enabled = boost;
}

void ReplyDispatcher::settings_block_2() {
  c_.boost_start = b(4);
  c_.boost_set = b(5);
  vars_.zylinder = b(6);
  if (b(6) == 4) vars_.rpmfaktor = 30000000;
  if (b(6) == 6) vars_.rpmfaktor = 20000000;
  if (b(6) == 8) vars_.rpmfaktor = 15000000;
  vars_.injchannels = b(7);
  c_.Check6.value = b(8) & 1;
  c_.Check4.value = (b(8) >> 1) & 1;
  // Acceleration fuel: frame bytes 9..13 are parameters 0, 1, 3, 4, 5 (2 never leaves the PC).
  const int params[5] = {0, 1, 3, 4, 5};
  for (int k = 0; k < 5; ++k) {
    const auto i = static_cast<std::size_t>(params[k]);
    c_.accel_param[i] = b(9 + k);
    ScrollBar& bar = c_.HScroll1[i];
    bar.value = std::clamp(b(9 + k), bar.min, bar.max);
    c_.Label8[i].caption = std::to_string(b(9 + k));
  }
}

}  // namespace nerit
