#pragma once
// The "Pressuresensor" frame: sensor presets, the sensor line in Text1, the table it gives in
// List1 ("Calculate") and the two pressure tables written from it ("Save").
#include "setup/form3_controls.h"
#include "shell/form1_shell.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

// Writes a Text1 box as the program does: a new text disables "Save" until the next
// "Calculate", as typing into it does.
void set_sensor_field(Form3Controls& c, int index, std::string text);

class PressureCalibration {
 public:
  PressureCalibration(Form3Controls& c, ProgramState& vars, Platform& platform, Form1Shell& shell)
      : c_(c), vars_(vars), p_(platform), shell_(shell) {}

  // The presets at the stored sensor choice ("MAP-Sensor Type" when none), the list shown,
  // "Save" off.
  void load();
  // A preset writes its three values in the system's decimal form; "Manuell" writes nothing.
  void Combo1_Click();
  // Digits, ",", backspace and Enter pass; every other key is dropped (0).
  int Text1_KeyPress(int index, int key_ascii);
  // Any change of a sensor box: "Save" off.
  void Text1_Change(int index);
  // "Calculate": the list "kPa\tVoltage\tRAW", then one line a kPa up to max P; a voltage above
  // 5 V stops it with a box and leaves "Save" as it was, a complete run enables "Save".
  void Command1_Click();
  // "Save": both pressure tables written, the sensor choice stored, the main window's
  // pressure table rebuilt from them.
  void Command2_Click();

 private:
  struct SensorLine {
    double faktor, offset, max_p;
  };
  // The three boxes as numbers; ProgramError naming the box that holds none.
  SensorLine read_line() const;

  Form3Controls& c_;
  ProgramState& vars_;
  Platform& p_;
  Form1Shell& shell_;
};

}  // namespace nerit
