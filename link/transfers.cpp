#include "link/transfers.h"

#include "link/cell_codec.h"
#include "link/frames.h"
#include "link/map_rows.h"
#include "link/memory_map.h"
#include "link/settings_blocks.h"
#include "shell/numbers.h"

namespace nerit {

namespace {

// Paints a button for the length of a transfer; a failed transfer does not leave it painted.
class Painted {
 public:
  Painted(CommandButton& button, Color color) : button_(button) { button_.back_color = color; }
  ~Painted() { button_.back_color = kButtonFace; }
  Painted(const Painted&) = delete;
  Painted& operator=(const Painted&) = delete;

 private:
  CommandButton& button_;
};

FrameData axis_block(const std::array<std::int16_t, 17>& points, int first, int count) {
  FrameData d{};
  for (int k = 0; k < count; ++k) {
    const auto w = word_bytes(points[static_cast<std::size_t>(first + k)]);
    d[static_cast<std::size_t>(2 * k)] = w[0];
    d[static_cast<std::size_t>(2 * k + 1)] = w[1];
  }
  return d;
}

}  // namespace

bool load_type_chosen(const Form1Controls& c, Dialogs& dialogs) {
  if (c.Combo1.list_index != -1) return true;
  dialogs.message_box(Transfers::kNoLoadType, MsgButtons::Ok, MsgIcon::Information, "Fehler");
  return false;
}

void Transfers::write_settings() {
  wire_.write_block(kCmdSramWrite, kSettingsBlockA, settings_block_a(c_, vars_));
  wire_.write_block(kCmdSramWrite, kSettingsBlockB, settings_block_b(c_, vars_));
}

void Transfers::write_axes() {
  wire_.write_block(kCmdSramWrite, kLoadAxisLow, axis_block(c_.load_points, 1, 8));
  wire_.write_block(kCmdSramWrite, kLoadAxisHigh, axis_block(c_.load_points, 9, 8));
  for (int first : {1, 9}) {
    FrameData d{};
    for (int k = 0; k < 8; ++k) {
      // Speed periods go as their low 16 bits.
      const std::int32_t period = c_.rpm_points[static_cast<std::size_t>(first + k)];
      d[static_cast<std::size_t>(2 * k)] = static_cast<std::uint8_t>(period & 255);
      d[static_cast<std::size_t>(2 * k + 1)] = static_cast<std::uint8_t>((period >> 8) & 255);
    }
    wire_.write_block(kCmdSramWrite, first == 1 ? kRpmAxisLow : kRpmAxisHigh, d);
  }
}

void Transfers::write_maps() {
  for (int r = 1; r <= 16; ++r)
    wire_.write_block(kCmdSramWrite, correction_row_address(r),
                      correction_row_data(c_.MSFlexGrid2, r));
  for (int r = 1; r <= 16; ++r)
    for (int half = 0; half < 2; ++half)
      wire_.write_block(kCmdSramWrite, airflow_row_address(r) + 16 * half,
                        airflow_half_row_data(c_.MSFlexGrid3, r, half, vars_.airflowtype));
}

void Transfers::Command9_Click() {
  if (!load_type_chosen(c_, p_.dialogs) || vars_.connected == 0) return;
  if (before_write) before_write(c_.Command9.caption);
  Painted busy(c_.Command9, kYellow);
  write_settings();
  write_axes();
  write_maps();
}

void Transfers::Command15_Click() {
  if (!load_type_chosen(c_, p_.dialogs) || vars_.connected == 0) return;
  Painted busy(c_.Command15, kYellow);
  write_settings();
}

void Transfers::Command4_Click(int index) {
  if (!load_type_chosen(c_, p_.dialogs) || vars_.connected == 0) return;
  if (before_write) before_write(c_.Command4.at(static_cast<std::size_t>(index)).caption);
  {
    Painted busy(c_.Command4.at(static_cast<std::size_t>(index)), kRed);
    // Map first, then the load axis, the settings last: the controller relies on this order.
    Grid& g = c_.MSFlexGrid2;
    for (int frame = 0; frame < 6; ++frame) {
      FrameData d{};
      for (int k = 0; k < 2; ++k) {
        for (int col = 1; col <= 8; ++col) {
          g.set_current(2 * frame + k + 1, col);
          d[static_cast<std::size_t>(8 * k + col - 1)] = correction_byte(val(g.text(g.row, g.col)));
        }
      }
      wire_.write_block(kCmdEepromWrite, kEepromMap + 0x10 * frame, d);
    }
    wire_.write_block(kCmdEepromWrite, kEepromLoadAxisLow, axis_block(c_.load_points, 1, 8));
    wire_.write_block(kCmdEepromWrite, kEepromLoadAxisHigh, axis_block(c_.load_points, 9, 4));
    FrameData a = settings_block_a(c_, vars_);
    a[15] = 0;
    wire_.write_block(kCmdEepromWrite, kEepromSettings, a);
  }
  Command2_Click();
}

void Transfers::Command2_Click() {
  if (vars_.connected == 0) return;
  wire_.send(command_frame(kCmdReloadEeprom, 0, 0));
}

void Transfers::Command5_Click() {
  if (vars_.connected != 1) return;
  // Stays red until the controller confirms (its text reply with byte 3 = 1).
  c_.Command5.back_color = kRed;
  wire_.send(command_frame(kCmdMakePermanent, 0, 0));
}

void Transfers::Schreiben_Click() {
  Command4_Click(0);
  Command2_Click();
}

}  // namespace nerit
