#pragma once
// The virtual controller on a fake port, on the virtual clock: what the program writes reaches
// the controller at once; what the controller sends arrives when it is due.
#include <cmath>

#include "sim/controller.h"
#include "tests/support/fake_platform.h"

namespace nerit::testing {

class SimWire {
 public:
  SimWire(FakeSerialPort& port, sim::Controller& controller, int port_number = 1)
      : port_(port), controller_(controller), port_number_(port_number) {
    port_.present.insert(port_number);
    port_.on_output = [this](int number, const std::string& chars) {
      if (number != port_number_) return;
      controller_.receive(static_cast<double>(port_.clock().now_ms()), chars);
      schedule_next();
    };
    schedule_next();
  }
  SimWire(const SimWire&) = delete;
  SimWire& operator=(const SimWire&) = delete;

  // Sees every piece the controller sends, as it goes on the wire.
  std::function<void(const std::string& bytes)> on_emit;

 private:
  void schedule_next() {
    VirtualClock& clock = port_.clock();
    clock.cancel(pending_);
    const double due = controller_.next_due();
    if (due < 0) return;
    const long long wait = static_cast<long long>(std::ceil(due)) - clock.now_ms();
    pending_ = clock.schedule(std::max(0LL, wait), [this] {
      for (const sim::Emission& e : controller_.poll(static_cast<double>(port_.clock().now_ms()))) {
        if (on_emit) on_emit(e.bytes);
        port_.arrive_after(0, e.bytes, SerialPort::kReceive, port_number_);
      }
      schedule_next();
    });
  }

  FakeSerialPort& port_;
  sim::Controller& controller_;
  int port_number_;
  VirtualClock::Id pending_ = 0;
};

}  // namespace nerit::testing
