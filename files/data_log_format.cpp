#include "files/data_log_format.h"

#include <cstdio>

#include "shell/numbers.h"

namespace nerit {

namespace {

std::string replaced(std::string_view text, std::string_view from, char to) {
  std::string out(text);
  for (char& ch : out)
    if (from.find(ch) != std::string_view::npos) ch = to;
  return out;
}

}  // namespace

std::string data_log_name(std::string_view date_text, std::string_view time_text) {
  return "DataLog_" + replaced(date_text, "./\\", '-') + "_" + replaced(time_text, ":", '-') +
         ".csv";
}

std::string data_log_row(const DataLogValues& values, char decimal_separator) {
  std::string row;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i) row += ';';
    row += number_text(values[i], decimal_separator);
  }
  return row;
}

std::string recording_status(std::string_view file_name, long long rows, long long elapsed_ms) {
  const long long s = elapsed_ms < 0 ? 0 : elapsed_ms / 1000;
  char clock[32];
  std::snprintf(clock, sizeof clock, "%lld:%02lld:%02lld", s / 3600, s / 60 % 60, s % 60);
  return std::string(file_name) + " · " + std::to_string(rows) + (rows == 1 ? " row" : " rows") +
         " · " + clock;
}

}  // namespace nerit
