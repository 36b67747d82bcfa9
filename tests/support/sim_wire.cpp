#include "tests/support/sim_wire.h"

#include <cmath>

namespace nerit::testing {

SimWire::SimWire(FakeSerialPort& port, sim::Controller& controller, int port_number)
    : port_(port), controller_(controller), port_number_(port_number) {
  port_.present.insert(port_number);
  port_.on_output = [this](int number, const std::string& chars) {
    if (number != port_number_) return;
    controller_.receive(static_cast<double>(port_.clock().now_ms()), chars);
    schedule_next();
  };
  schedule_next();
}

void SimWire::schedule_next() {
  port_.clock().cancel(pending_);
  const double due = controller_.next_due();
  if (due < 0) return;
  const long long now = port_.clock().now_ms();
  pending_ =
      port_.clock().schedule(std::max(0LL, static_cast<long long>(std::ceil(due)) - now), [this] {
        for (const sim::Emission& e : controller_.poll(static_cast<double>(port_.clock().now_ms())))
          port_.arrive_after(0, e.bytes, SerialPort::kReceive, port_number_);
        schedule_next();
      });
}

}  // namespace nerit::testing
