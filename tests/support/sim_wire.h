#pragma once
// The virtual controller on a fake port, on the virtual clock: what the program writes reaches
// the controller at once; what the controller sends arrives when it is due.
#include "sim/controller.h"
#include "tests/support/fake_platform.h"

namespace nerit::testing {

class SimWire {
 public:
  SimWire(FakeSerialPort& port, sim::Controller& controller, int port_number = 1);
  SimWire(const SimWire&) = delete;
  SimWire& operator=(const SimWire&) = delete;

 private:
  void schedule_next();

  FakeSerialPort& port_;
  sim::Controller& controller_;
  int port_number_;
  VirtualClock::Id pending_ = 0;
};

}  // namespace nerit::testing
