#pragma once
// Recording the live values to a CSV file: the Logging menu's "Start" and "Stop", one row per
// status frame while it records, and the file closed when the program ends.
#include <filesystem>
#include <fstream>
#include <string>

#include "files/data_log_format.h"
#include "shell/form1_controls.h"
#include "shell/platform.h"
#include "shell/program_state.h"

namespace nerit {

class DataLog {
 public:
  DataLog(Form1Controls& c, ProgramState& vars, Platform& platform)
      : c_(c), vars_(vars), p_(platform) {}

  // Creates pfad\DataLog_<date>_<time>.csv (a file of that name is overwritten) with its
  // header; only then the menu and the logging flag change. A file that cannot be created is a
  // FileError and logging stays off.
  void lstart_Click();
  // "Start" usable again, "Stop" not, the flag off, the file closed.
  void lstop_Click();
  // One row, while the flag is 1. Each row reaches the disk whole, so a crash loses no row. A
  // row that cannot be written stops the recording with a box that stops nothing else.
  void write_row(const DataLogValues& values);
  // The program ends: an open file is closed.
  void close();

  bool recording() const { return file_.is_open(); }
  const std::filesystem::path& file() const { return path_; }
  long long rows() const { return rows_; }
  // The status bar's text while recording, "" otherwise.
  std::string status_text() const;

 private:
  Form1Controls& c_;
  ProgramState& vars_;
  Platform& p_;
  std::ofstream file_;
  std::filesystem::path path_;
  long long rows_ = 0;
  long long started_ms_ = 0;
};

}  // namespace nerit
