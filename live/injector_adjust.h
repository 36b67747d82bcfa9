#pragma once
// The manual injector adjust slider: 128 is no change; each change goes to the controller
// with the injector settings (0x03) and into the log.
#include <string>

#include "link/wire.h"
#include "live/panel_controls.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

// The slider as the label shows it: value x 100 / 128 - 100, whole, then "%".
std::string adjust_percent_text(int slider);

class InjectorAdjust {
 public:
  InjectorAdjust(PanelControls& pc, Form1Controls& c, ProgramState& vars, Wire& wire)
      : pc_(pc), c_(c), vars_(vars), wire_(wire) {}

  // While the slider moves: the percentage label follows.
  void Slider1_Scroll();
  // A new value: injsizecorr recomputed, 0x03 sent when connected, three log lines.
  void Slider1_Change();

 private:
  PanelControls& pc_;
  Form1Controls& c_;
  ProgramState& vars_;
  Wire& wire_;
};

}  // namespace nerit
