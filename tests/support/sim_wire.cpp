#include "tests/support/sim_wire.h"

#include <cmath>

namespace nerit::testing {

SimWire::SimWire(FakeSerialPort& port, sim::Controller& controller, int port_number)
    : port_(port), controller_(controller), port_number_(port_number) {
  port_.present.insert(port_number);
  auto earlier = std::move(port_.on_output);
  port_.on_output = [this, earlier](int number, const std::string& chars) {
    if (earlier) earlier(number, chars);
    if (number != port_number_) return;
    controller_.receive(static_cast<double>(port_.clock().now_ms()), chars);
    schedule_next();
  };
  schedule_next();
}

void SimWire::deliver() {
  pending_ = 0;
  for (const sim::Emission& e : controller_.poll(static_cast<double>(port_.clock().now_ms())))
    port_.arrive_on(port_number_, 0, e.bytes);
  schedule_next();
}

void SimWire::schedule_next() {
  const double due = controller_.next_due();
  if (pending_ != 0) port_.clock().cancel(pending_);
  pending_ = 0;
  if (due < 0) return;
  const long long now = port_.clock().now_ms();
  const long long at = std::max(now, static_cast<long long>(std::ceil(due)));
  pending_ = port_.clock().schedule(at - now, [this] { deliver(); });
}

}  // namespace nerit::testing
