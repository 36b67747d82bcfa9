#pragma once
// The base-settings window: its controls, its timer and the handlers of its frames.
#include "link/wire.h"
#include "setup/form3_controls.h"
#include "setup/injector_setup.h"
#include "setup/pressure_calibration.h"
#include "setup/sensor_wizard.h"
#include "setup/throttle_capture.h"
#include "shell/controls.h"
#include "shell/form1_shell.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

class Form3 {
 public:
  // `slider` is the main window's manual injector adjust, which the 0x03 frame carries.
  Form3(Platform& platform, ProgramState& vars, Form1Shell& shell, Wire& wire,
        const Slider& slider);
  Form3(const Form3&) = delete;
  Form3& operator=(const Form3&) = delete;

  // Fresh controls showing the program-wide values; Timer1 runs.
  void Form_Load();
  // Timer1 stops; the injector values are stored and sent once more as on Enter, without a box.
  void Form_Unload();
  // "Close": the reminder that only "Make Permanent" keeps the values, then the window goes.
  void Command3_Click();

  Form3Controls c;
  Timer Timer1{ThrottleCapture::kIntervalMs};  // refreshes the live throttle labels

  PressureCalibration pressure;
  SensorWizard wizard;
  ThrottleCapture throttle;
  InjectorSetup injectors;

 private:
  Platform& p_;
};

}  // namespace nerit
