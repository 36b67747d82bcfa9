#include "maps/form5.h"

namespace nerit {

void Form5::read_map() {
  surface = surface_from_grid(map_);
  ++revision_;
}

void Form5::Form_Load() {
  Command1_Click();
}

void Form5::Command1_Click() {
  read_map();
  ++camera_resets_;
}

void Form5::Command2_Click() {
  read_map();
}

}  // namespace nerit
