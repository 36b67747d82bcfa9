#include "live/airflow_output.h"

#include <algorithm>
#include <system_error>

#include "link/panel_frames.h"
#include "live/airflow_clamp.h"
#include "live/tagged_value.h"
#include "shell/data_files.h"
#include "shell/errors.h"
#include "shell/numbers.h"

namespace nerit {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;

// Writes the bytes at the start of the file, keeping whatever follows them.
void overwrite_start(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
  std::vector<std::uint8_t> all = read_file_bytes(file).value_or(std::vector<std::uint8_t>{});
  if (all.size() < bytes.size()) all.resize(bytes.size());
  std::copy(bytes.begin(), bytes.end(), all.begin());
  write_file_bytes(file, all);
}

}  // namespace

void enable_voltage_fields(PanelControls& pc, bool on) {
  pc.Combo3.enabled = pc.Label1.enabled = pc.Text1.enabled = pc.clamp_label.enabled = on;
}

void show_airflow_output(PanelControls& pc, int airflowtype, int aoutmax) {
  const bool frequency = airflowtype == 0;
  pc.Frame1[kPanelAirflowOutput].caption =
      frequency ? kFrequencyOutputCaption : kVoltageOutputCaption;
  pc.OptionFrequency.value = frequency;
  pc.OptionAnalog.value = !frequency;
  if (frequency)
    pc.Combo3.select(0);
  else if (airflowtype < pc.Combo3.list_count())
    pc.Combo3.select(airflowtype);
  enable_voltage_fields(pc, !frequency);
  pc.Text1.text = clamp_text(aoutmax);
}

void AirflowOutput::airflowsettings_Click() {
  Frame& frame = pc_.Frame1[kPanelAirflowOutput];
  frame.visible = !frame.visible;
}

void AirflowOutput::read_voltage_settings() {
  double aoutmax = 0;
  try {
    aoutmax = aoutmax_from_clamp(val(pc_.Text1.text));
  } catch (const OverflowError&) {
    throw ProgramError("Clamp / mV: " + pc_.Text1.text + " lies outside 0-5000 mV.");
  }
  vars_.airflowtype = pc_.Combo3.list_index;
  vars_.aoutmax = aoutmax;
}

void AirflowOutput::OptionAnalog_Click() {
  enable_voltage_fields(pc_, true);
  pc_.Frame1[kPanelAirflowOutput].caption = kVoltageOutputCaption;
  read_voltage_settings();
}

void AirflowOutput::OptionFrequency_Click() {
  pc_.Combo3.select(0);
  enable_voltage_fields(pc_, false);
  vars_.airflowtype = 0;
  pc_.Frame1[kPanelAirflowOutput].caption = kFrequencyOutputCaption;
}

void AirflowOutput::Combo3_Click() {
  vars_.airflowtype = pc_.Combo3.list_index;
}

std::filesystem::path AirflowOutput::diagnostic_file() const {
#ifdef _WIN32
  std::error_code ec;
  if (std::filesystem::is_directory("d:\\", ec)) return "d:\\test.bin";
#endif
  return vars_.pfad / "test.bin";
}

int AirflowOutput::Text1_KeyPress(int key_ascii) {
  if ((key_ascii >= '0' && key_ascii <= '9') || key_ascii == '-' || key_ascii == kBackspace)
    return key_ascii;
  if (key_ascii == kEnter) overwrite_start(diagnostic_file(), tagged_double(val(pc_.Text1.text)));
  return 0;
}

void AirflowOutput::Command6_Click() {
  if (pc_.OptionAnalog.value) {
    if (pc_.Combo3.list_index < 0) throw ProgramError("Choose the airflow input first.");
    read_voltage_settings();
  }
  p_.dialogs.message_box(kMakePermanentReminder, MsgButtons::Ok, MsgIcon::None);
  if (vars_.connected != 1) return;
  wire_.send(
      command_frame(kCmdAirflow, 0, 0, airflow_output_data(vars_.airflowtype, vars_.aoutmax)));
}

}  // namespace nerit
