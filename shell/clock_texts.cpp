#include "shell/clock_texts.h"

#include <cstddef>

namespace nerit {

namespace {

void append_number(std::string& out, int value, int min_digits) {
  std::string digits = std::to_string(value < 0 ? -value : value);
  if (static_cast<int>(digits.size()) < min_digits) {
    digits.insert(0, static_cast<std::size_t>(min_digits) - digits.size(), '0');
  }
  if (value < 0) out += '-';
  out += digits;
}

}  // namespace

std::string format_date_time(const DateTime& t, std::string_view pattern) {
  std::string out;
  std::size_t i = 0;
  while (i < pattern.size()) {
    const char c = pattern[i];

    if (c == '\'') {
      ++i;
      if (i < pattern.size() && pattern[i] == '\'') {  // '' outside quotes
        out += '\'';
        ++i;
        continue;
      }
      // Quoted text up to the closing quote (or the end); '' inside is one quote.
      while (i < pattern.size()) {
        if (pattern[i] == '\'') {
          if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {
            out += '\'';
            i += 2;
            continue;
          }
          ++i;
          break;
        }
        out += pattern[i++];
      }
      continue;
    }

    if (c == 'A' || c == 'a') {
      const bool upper = c == 'A';
      out += t.hour < 12 ? (upper ? "AM" : "am") : (upper ? "PM" : "pm");
      ++i;
      if (i < pattern.size() && (pattern[i] == 'P' || pattern[i] == 'p')) ++i;
      continue;
    }

    std::size_t run = 1;
    while (i + run < pattern.size() && pattern[i + run] == c) ++run;
    const int width = run >= 2 ? 2 : 1;
    switch (c) {
      case 'd':
        append_number(out, t.day, width);
        break;
      case 'M':
        append_number(out, t.month, width);
        break;
      case 'y':
        if (run >= 3) {
          append_number(out, t.year, 4);
        } else {
          append_number(out, ((t.year % 100) + 100) % 100, width);
        }
        break;
      case 'H':
        append_number(out, t.hour, width);
        break;
      case 'h': {
        const int h12 = t.hour % 12 == 0 ? 12 : t.hour % 12;
        append_number(out, h12, width);
        break;
      }
      case 'm':
        append_number(out, t.minute, width);
        break;
      case 's':
        append_number(out, t.second, width);
        break;
      default:
        out.append(run, c);
        break;
    }
    i += run;
  }
  return out;
}

}  // namespace nerit
