#pragma once
// The program's number rules, used wherever a number becomes a byte, a word, a cell text or
// a log text. Conversions round to nearest with ties to even and fail with OverflowError
// when the result does not fit; nothing is clamped here.
#include <cstdint>
#include <string>
#include <string_view>

namespace nerit {

// Round to the nearest whole number, ties to even (2.5 -> 2, 3.5 -> 4, -2.5 -> -2).
double round_half_even(double x);

// Ties-to-even conversions; OverflowError when the rounded value does not fit (or is NaN).
std::uint8_t to_byte(double x);   // 0..255
std::int16_t to_int16(double x);  // -32768..32767
std::int32_t to_int32(double x);  // -2^31..2^31-1

// Whole part by truncation towards zero (12.7 -> 12, -12.7 -> -12).
double whole_part(double x);
// Whole part rounding down (-12.7 -> -13), where a text asks for floor.
double floor_part(double x);

// a / b, failing with DivisionByZeroError when b is 0.
double divide(double a, double b);

// Lenient parse of a text into a number: leading blanks and tabs skipped, an optional sign,
// digits with at most one decimal point. Any other character (",", "e", a blank...) ends the
// number. Empty or non-numeric text is 0. "12,5" -> 12, "1e3" -> 1, "-" -> 0. Digits too
// large for a double fail with OverflowError; digits too small for one give 0.
double val(std::string_view text);

// The number as plain decimal text, as cells and log lines show it: up to 15 significant
// digits, no trailing zeros, "." unless another separator is given ("12", "0.5", "-3").
// Very large or small magnitudes take an exponent ("1E+20", "1E-05"). NaN and infinity
// fail with OverflowError here and in the two functions below.
std::string number_text(double x, char decimal_separator = '.');

// The value after a round trip through its decimal text (15 significant digits); removes the
// binary noise of products like 50 * 1.27 before they are rounded.
double through_text(double x);

// "0.00" format: two decimals, halves away from zero, with the given decimal separator.
std::string format_0_00(double x, char decimal_separator);

// Upper-case hexadecimal without leading zeros ("FF", "0"). The value is first rounded to a
// 32-bit integer; negative values of the 16-bit range show as 16-bit two's complement
// ("FFFF" for -1), other negatives as 32-bit.
std::string hex_text(double x);

}  // namespace nerit
