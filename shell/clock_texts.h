#pragma once
// Date and time texts in the system's formats. The platform supplies the current time and
// the system's patterns; the texts themselves are made here so they can be tested.
#include <string>
#include <string_view>

namespace nerit {

struct DateTime {
  int year = 2000, month = 1, day = 1;
  int hour = 0, minute = 0, second = 0;
};

// Formats with a date/time pattern: d dd M MM yy yyyy (date), H HH h hh m mm s ss (time),
// AP/ap for AM/PM (and a/A), text in single quotes taken literally ('' is one quote);
// any other character stands for itself.
std::string format_date_time(const DateTime& t, std::string_view pattern);

}  // namespace nerit
