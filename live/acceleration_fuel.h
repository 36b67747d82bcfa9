#pragma once
// The acceleration-fuel panel: six bars whose values the controller takes in settings block B.
#include <cstddef>

#include "link/wire.h"
#include "live/panel_controls.h"
#include "shell/form1_controls.h"
#include "shell/program_state.h"

namespace nerit {

class AccelerationFuel {
 public:
  AccelerationFuel(PanelControls& pc, Form1Controls& c, ProgramState& vars, Wire& wire)
      : pc_(pc), c_(c), vars_(vars), wire_(wire) {}

  // While bar i is dragged: its label follows and every parameter is re-read from the labels.
  void HScroll1_Scroll(std::size_t i);
  // Bar i has a new value: as a drag, then block B goes to the controller when connected,
  // without waiting for the acknowledgement.
  void HScroll1_Change(std::size_t i);

 private:
  PanelControls& pc_;
  Form1Controls& c_;
  ProgramState& vars_;
  Wire& wire_;
};

}  // namespace nerit
