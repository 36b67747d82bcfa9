#include "shell/numbers.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <system_error>

#include "shell/errors.h"

namespace nerit {

namespace {

// Every double from 2^52 upwards is a whole number.
constexpr double kAllWhole = 4503599627370496.0;

// The number in %.15g form, exponent still lower case; OverflowError for NaN and infinity.
std::string general_15(double x) {
  if (!std::isfinite(x)) throw OverflowError();
  if (x == 0) return "0";  // also for -0
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::general, 15);
  return std::string(buf, res.ptr);
}

double parse_plain(std::string_view text) {
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace

double round_half_even(double x) {
  if (!std::isfinite(x) || std::fabs(x) >= kAllWhole) return x;
  const double down = std::floor(x);
  const double fraction = x - down;  // exact below 2^52
  double result = down + 1;
  if (fraction < 0.5 || (fraction == 0.5 && std::fmod(down, 2.0) == 0)) result = down;
  return result == 0 ? std::copysign(0.0, x) : result;
}

std::uint8_t to_byte(double x) {
  const double r = round_half_even(x);
  if (!(r >= 0 && r <= 255)) throw OverflowError();
  return static_cast<std::uint8_t>(r);
}

std::int16_t to_int16(double x) {
  const double r = round_half_even(x);
  if (!(r >= -32768.0 && r <= 32767.0)) throw OverflowError();
  return static_cast<std::int16_t>(r);
}

std::int32_t to_int32(double x) {
  const double r = round_half_even(x);
  if (!(r >= -2147483648.0 && r <= 2147483647.0)) throw OverflowError();
  return static_cast<std::int32_t>(r);
}

double whole_part(double x) {
  return std::trunc(x);
}

double floor_part(double x) {
  return std::floor(x);
}

double divide(double a, double b) {
  if (b == 0) throw DivisionByZeroError();
  return a / b;
}

double val(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';

  std::string whole, fraction;
  bool point = false;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (c >= '0' && c <= '9') {
      (point ? fraction : whole) += c;
    } else if (c == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  if (whole.empty() && fraction.empty()) return 0;

  const std::string digits =
      (whole.empty() ? "0" : whole) + "." + (fraction.empty() ? "0" : fraction);
  double value = 0;
  const auto res = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (res.ec == std::errc::result_out_of_range) {
    // Too small is 0; too large does not fit a double.
    if (whole.find_first_not_of('0') != std::string::npos) throw OverflowError();
    return 0;
  }
  if (value == 0) return 0;
  return negative ? -value : value;
}

std::string number_text(double x, char decimal_separator) {
  std::string text = general_15(x);
  for (char& c : text) {
    if (c == 'e') c = 'E';
    if (c == '.') c = decimal_separator;
  }
  return text;
}

double through_text(double x) {
  return parse_plain(general_15(x));
}

std::string format_0_00(double x, char decimal_separator) {
  const double v = through_text(x);
  if (v == 0) return std::string("0") + decimal_separator + "00";

  // 15 significant digits as d.dddddddddddddde±X, then rounded in decimal so that 2.345
  // becomes 2.35 although the double lies just below it.
  char buf[64];
  const auto res =
      std::to_chars(buf, buf + sizeof buf, std::fabs(v), std::chars_format::scientific, 14);
  const std::string_view sci(buf, res.ptr - buf);
  const std::size_t e = sci.find('e');
  std::string digits;
  for (char c : sci.substr(0, e)) {
    if (c != '.') digits += c;
  }
  int exponent = 0;
  const std::string_view exp_text = sci.substr(e + 1);
  std::from_chars(exp_text.data() + (exp_text[0] == '+' ? 1 : 0), exp_text.data() + exp_text.size(),
                  exponent);

  // Place the point: integer digits = exponent + 1 (pad with zeros either side).
  const int int_digits = exponent + 1;
  if (int_digits <= 0) {
    digits.insert(0, static_cast<std::size_t>(1 - int_digits), '0');
  } else if (static_cast<std::size_t>(int_digits) > digits.size()) {
    digits.append(static_cast<std::size_t>(int_digits) - digits.size(), '0');
  }
  const std::size_t point = static_cast<std::size_t>(std::max(int_digits, 1));
  digits.append(3, '0');  // at least three decimals for the rounding digit

  std::string kept = digits.substr(0, point + 2);
  if (digits[point + 2] >= '5') {
    std::size_t k = kept.size();
    while (k > 0 && kept[k - 1] == '9') kept[--k] = '0';
    if (k == 0) {
      kept.insert(0, 1, '1');
    } else {
      ++kept[k - 1];
    }
  }
  const std::size_t int_len = kept.size() - 2;
  const bool zero = kept.find_first_not_of('0') == std::string::npos;

  std::string text;
  if (v < 0 && !zero) text += '-';
  text += kept.substr(0, int_len);
  text += decimal_separator;
  text += kept.substr(int_len);
  return text;
}

std::string hex_text(double x) {
  const std::int32_t v = to_int32(x);
  std::uint32_t bits = static_cast<std::uint32_t>(v);
  if (v < 0 && v >= -32768) bits &= 0xFFFFu;
  char buf[16];
  const auto res = std::to_chars(buf, buf + sizeof buf, bits, 16);
  std::string text(buf, res.ptr);
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace nerit
