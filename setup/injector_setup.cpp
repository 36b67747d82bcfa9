#include "setup/injector_setup.h"

#include <cmath>

#include "link/frames.h"
#include "link/panel_frames.h"
#include "setup/field_number.h"
#include "shell/numbers.h"
#include "shell/quietly.h"

namespace nerit {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;
constexpr int kChannelEntries = 6;

constexpr std::array<const char*, 4> kText2Names{
    "Injectoroffset in / µs", "Injectoroffset out / µs", "Injectorsize old", "Injectorsize new"};

double channel_mask(int entry) {
  return std::pow(2.0, entry + 1) - 1;
}

}  // namespace

void InjectorSetup::load() {
  c_.Text2[kOffsetIn].text = number_text(vars_.injoffset_in);
  c_.Text2[kOffsetOut].text = number_text(vars_.injoffset_out);
  c_.Text2[kSizeOld].text = number_text(vars_.injalt);
  c_.Text2[kSizeNew].text = number_text(vars_.injneu);

  for (std::size_t i = 0; i < kCylinderChoices.size(); ++i)
    c_.Option1[i].value = vars_.zylinder == kCylinderChoices[i].zylinder;

  c_.Combo2.clear();
  for (int n = 1; n <= kChannelEntries; ++n) c_.Combo2.add_item("#" + std::to_string(n));
  c_.Combo2.text = kInjectorsText;
  for (int n = 0; n < kChannelEntries; ++n)
    if (vars_.injchannels == channel_mask(n)) c_.Combo2.select(n);

  c_.Combo3.clear();
  for (std::uint8_t d : kSeqDivisors) c_.Combo3.add_item("/" + std::to_string(d));
  for (std::size_t i = 0; i < kSeqDivisors.size(); ++i)
    if (vars_.seq_faktor == kSeqDivisors[i]) c_.Combo3.select(static_cast<int>(i));
}

void InjectorSetup::Option1_Click(int index) {
  const CylinderChoice& choice = kCylinderChoices.at(static_cast<std::size_t>(index));
  for (std::size_t i = 0; i < c_.Option1.size(); ++i)
    c_.Option1[i].value = static_cast<int>(i) == index;
  vars_.zylinder = choice.zylinder;
  vars_.rpmfaktor = choice.rpm_constant / 4;
  shell_.fill_rpm_points();
}

void InjectorSetup::Combo2_Click() {
  if (c_.Combo2.list_index >= 0) vars_.injchannels = channel_mask(c_.Combo2.list_index);
}

void InjectorSetup::Combo3_Click() {
  if (c_.Combo3.list_index >= 0)
    vars_.seq_faktor = kSeqDivisors.at(static_cast<std::size_t>(c_.Combo3.list_index));
}

int InjectorSetup::Text2_KeyPress(int, int key_ascii) {
  if ((key_ascii >= '0' && key_ascii <= '9') || key_ascii == kBackspace) return key_ascii;
  if (key_ascii == kEnter) apply(true);
  return 0;
}

void InjectorSetup::complain(bool tell, const std::string& text) const {
  if (tell) p_.dialogs.message_box(text, MsgButtons::Ok, MsgIcon::Exclamation, "Error");
}

void InjectorSetup::apply(bool tell) {
  std::array<double, 4> v{};
  for (std::size_t i = 0; i < v.size(); ++i) {
    const auto n = field_number(c_.Text2[i].text);
    if (!n || *n < 0)
      return complain(tell, std::string(kText2Names[i]) + ": \"" + c_.Text2[i].text +
                                "\" is no number of 0 or more.");
    v[i] = *n;
  }
  for (std::size_t i : {kOffsetIn, kOffsetOut}) {
    if (v[i] <= kMaxInjectorOffset) continue;
    v[i] = kMaxInjectorOffset;
    c_.Text2[i].text = number_text(kMaxInjectorOffset);
  }
  if (v[kSizeOld] == 0 || v[kSizeNew] == 0) return complain(tell, kInjectorSizeZeroText);
  const double corr = whole_part(v[kSizeOld] / v[kSizeNew] * 128);
  if (corr > 255)
    return complain(tell, "Injectorsize old / new: " + c_.Text2[kSizeOld].text + " / " +
                              c_.Text2[kSizeNew].text + " gives " + number_text(corr) +
                              "; the controller takes at most 255 (an old size below twice the "
                              "new one).");

  vars_.injoffset_in = v[kOffsetIn];
  vars_.injoffset_out = v[kOffsetOut];
  vars_.injalt = v[kSizeOld];
  vars_.injneu = v[kSizeNew];
  vars_.injsizecorr = corr;
  if (vars_.connected != 1) return;
  const auto send = [&] {
    wire_.send(
        command_frame(kCmdInjector, 0, 0,
                      injector_data({static_cast<double>(slider_.value), vars_.injoffset_in,
                                     vars_.injoffset_out, vars_.injsizecorr, vars_.injchannels})));
  };
  if (tell)
    send();
  else
    quietly(send);
}

}  // namespace nerit
