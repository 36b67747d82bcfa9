#pragma once
// "Compare with file…": what differs between the window's tune and a chosen .inj, shown
// without changing the window.
#include <filesystem>
#include <functional>

#include "files/tune.h"
#include "files/tune_compare.h"
#include "shell/controls.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

struct Comparison {
  std::filesystem::path file;
  Tune ours;    // the window
  Tune theirs;  // the file
  TuneComparison diff;
};

class CompareFile {
 public:
  CompareFile(Form1Controls& c, ProgramState& vars, Platform& platform)
      : c_(c), vars_(vars), p_(platform) {}

  // The open dialog, then the comparison for `show`. A file that is no tune is an error box.
  void compare_Click();

  MenuItem compare{"Compare with file…"};
  // Puts the comparison on screen.
  std::function<void(const Comparison&)> show;

 private:
  Form1Controls& c_;
  ProgramState& vars_;
  Platform& p_;
};

}  // namespace nerit
