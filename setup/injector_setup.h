#pragma once
// The cylinders, injector channels, sequential divisor, injector sizes and offsets: each
// choice goes into the program-wide values at once; the injector values also go to a connected
// controller (0x03) on Enter and when the window closes.
#include <array>
#include <cstdint>
#include <string>

#include "link/wire.h"
#include "setup/form3_controls.h"
#include "shell/controls.h"
#include "shell/form1_shell.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

// Option1 by index: zylinder and the per-option constant that rpmfaktor is a quarter of.
struct CylinderChoice {
  int zylinder;
  double rpm_constant;
};
inline constexpr std::array<CylinderChoice, 3> kCylinderChoices{{
    {4, 30000000},
    {6, 20000000},
    {8, 15000000},
}};
// Combo3 by index: "/1".."/6", "/8".
inline constexpr std::array<std::uint8_t, 7> kSeqDivisors{1, 2, 3, 4, 5, 6, 8};
inline constexpr double kMaxInjectorOffset = 2000;  // µs
inline constexpr const char* kInjectorSizeZeroText =
    "Injectorsize old / new: a size of 0 gives no ratio. Enter both sizes, e.g. 440 / 550.";

class InjectorSetup {
 public:
  // `slider` is the manual injector adjust, sent along in the 0x03 frame.
  InjectorSetup(Form3Controls& c, ProgramState& vars, Platform& platform, Form1Shell& shell,
                Wire& wire, const Slider& slider)
      : c_(c), vars_(vars), p_(platform), shell_(shell), wire_(wire), slider_(slider) {}

  // The boxes and lists at the program-wide values; nothing is stored or sent.
  void load();
  // zylinder and rpmfaktor of the option, then the RPM axis in controller units again.
  void Option1_Click(int index);
  // injchannels = 2^(n+1) - 1 for entry n.
  void Combo2_Click();
  // seq_faktor of the entry.
  void Combo3_Click();
  // Digits and backspace pass; Enter stores (and sends) the injector values; every other key
  // is dropped. Returns the key to insert, 0 for none.
  int Text2_KeyPress(int index, int key_ascii);

  // Offsets above 2000 µs become 2000 (and their box "2000"), injsizecorr = whole part of
  // old / new x 128, all stored, then 0x03 when connected. A box without a number or a ratio
  // the controller cannot take stops it before anything is stored: with a box when `tell`,
  // silently otherwise.
  void apply(bool tell);

 private:
  void complain(bool tell, const std::string& text) const;

  Form3Controls& c_;
  ProgramState& vars_;
  Platform& p_;
  Form1Shell& shell_;
  Wire& wire_;
  const Slider& slider_;
};

}  // namespace nerit
