#pragma once
// Status frames go on past a step that fails: the step is skipped, the next one still runs.
#include <stdexcept>

#include "shell/errors.h"

namespace nerit {

template <class Step>
void quietly(Step step) {
  try {
    step();
  } catch (const ProgramError&) {
  } catch (const std::out_of_range&) {
  }
}

}  // namespace nerit
