#include "setup/field_number.h"

#include <charconv>

#include "shell/errors.h"

namespace nerit {

std::optional<double> field_number(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return std::nullopt;
  text = text.substr(first, text.find_last_not_of(" \t") - first + 1);

  std::string plain;
  bool mark = false, digit = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char ch = text[i];
    if (ch >= '0' && ch <= '9') {
      digit = true;
      plain += ch;
    } else if ((ch == ',' || ch == '.') && !mark) {
      mark = true;
      plain += '.';
    } else if (ch == '-' && i == 0) {
      plain += ch;
    } else {
      return std::nullopt;
    }
  }
  if (!digit) return std::nullopt;
  double value = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (error != std::errc() || end != plain.data() + plain.size()) return std::nullopt;
  return value == 0 ? 0.0 : value;  // "-0" is 0
}

double field_number_or_throw(std::string_view text, const std::string& box_name) {
  if (const auto value = field_number(text)) return *value;
  throw ProgramError(box_name + ": \"" + std::string(text) + "\" is not a number.");
}

}  // namespace nerit
