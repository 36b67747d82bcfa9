#pragma once
// The data log's text: file name, header and rows. Pure; DataLog writes them.
#include <array>
#include <string>
#include <string_view>

namespace nerit {

// Engine speed, injector in and out (µs), adjust (%), boost (kPa), throttle (%), airflow out (Hz).
using DataLogValues = std::array<double, 7>;

// The header names the columns with blanks although the rows use ";": the format has it so.
inline constexpr const char* kDataLogHeader = "Drehzahl  Inj_in  Inj_out Inj_adj MAP TPS Airflow";
inline constexpr const char* kDataLogLineEnd = "\r\n";

// "DataLog_" date "_" time ".csv" from the system's short date and time texts: every "." and
// "/" of the date and every ":" of the time become "-", so the name holds no separator a
// folder could take.
std::string data_log_name(std::string_view date_text, std::string_view time_text);

// The seven values joined by ";", each in the system's decimal form; no line end.
std::string data_log_row(const DataLogValues& values, char decimal_separator);

// "DataLog_....csv · 1234 rows · 0:01:05" for the status bar while a log records.
std::string recording_status(std::string_view file_name, long long rows, long long elapsed_ms);

}  // namespace nerit
