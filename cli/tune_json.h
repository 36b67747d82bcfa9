#pragma once
// A tune as JSON for scripts: the settings by name, both axes as the file and the controller
// hold them, both maps as 16 rows of 16 numbers.
#include <string>

#include "files/tune.h"

namespace nerit::cli {

std::string tune_json(const Tune& tune);

}  // namespace nerit::cli
