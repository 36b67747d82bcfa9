#include "live/stream.h"

namespace nerit {

namespace {

constexpr int kBoostRow = 5;

}  // namespace

void LiveStream::Check1_Click() {
  if (vars_.connected == 0) return;
  const bool on = c_.Check1.value == 1;
  wire_.send(stream_frame(on ? 1 : 0));
  for (CommandButton& b : c_.Command4) b.enabled = !on;
  c_.Command2.enabled = !on;
  c_.menus.controller.enabled = !on;
  c_.menus.echtzeit.checked = on;
  if (!on) c_.menus.logging.checked = false;
  c_.menus.lstart.enabled = on;
  lc_.chart_freeze.enabled = on;
  if (!on) lc_.chart_freeze.checked = false;
  chart_.set_frozen(lc_.chart_freeze.checked);
  chart_.set_running(on);
}

void LiveStream::echtzeit_Click() {
  c_.Check1.value ^= 1;
  Check1_Click();  // the box's own click on the changed value
  Check1_Click();
}

void LiveStream::Check7_Click() {
  if (vars_.connected == 0) return;
  wire_.send(stream_frame(lc_.Check7.value == 1 ? 2 : 0));
}

void LiveStream::chart_freeze_Click() {
  if (!lc_.chart_freeze.enabled) return;
  lc_.chart_freeze.checked = !lc_.chart_freeze.checked;
  chart_.set_frozen(lc_.chart_freeze.checked);
}

void LiveStream::MSFlexGrid1_Click() {
  Grid& g = lc_.MSFlexGrid1;
  if (g.row != kBoostRow) return;
  lc_.boost_display = lc_.boost_display % 3 + 1;
  g.set_text(kBoostRow, 0, lc_.boost_captions[static_cast<std::size_t>(lc_.boost_display - 1)]);
}

}  // namespace nerit
