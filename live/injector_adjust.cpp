#include "live/injector_adjust.h"

#include <cmath>

#include "link/panel_frames.h"
#include "shell/numbers.h"
#include "shell/quietly.h"

namespace nerit {

std::string adjust_percent_text(int slider) {
  // Whole percent, halves away from zero; 0 never shows as "-0".
  const double percent = std::round(through_text(slider * 100.0 / 128 - 100));
  return number_text(percent == 0 ? 0 : percent) + "%";
}

void InjectorAdjust::Slider1_Scroll() {
  pc_.Label6.caption = adjust_percent_text(pc_.Slider1.value);
}

void InjectorAdjust::Slider1_Change() {
  Slider1_Scroll();  // keys and clicks move the slider without a scroll
  // Without a new injector size there is no ratio: injsizecorr stays as it was.
  quietly([&] { vars_.injsizecorr = floor_part(divide(vars_.injalt * 128, vars_.injneu)); });
  if (vars_.connected == 1) {
    const FrameData data =
        injector_data({static_cast<double>(pc_.Slider1.value), vars_.injoffset_in,
                       vars_.injoffset_out, vars_.injsizecorr, vars_.injchannels});
    wire_.send(command_frame(kCmdInjector, 0, 0, data));
  }
  c_.List1.add_item("Injoffset in / out: " + number_text(vars_.injoffset_in) + " / " +
                    number_text(vars_.injoffset_out));
  c_.List1.add_item("Injsize alt / neu: " + number_text(vars_.injalt) + " / " +
                    number_text(vars_.injneu));
  c_.List1.add_item("Adjust: " + pc_.Label6.caption);
}

}  // namespace nerit
