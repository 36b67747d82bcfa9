// The number rules: rounding, conversions with their overflow, parsing and the texts; date and
// time texts after the locale's patterns.
#include "shell/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "shell/clock_texts.h"
#include "shell/errors.h"

namespace nerit {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// 0.49999999999999994 is where floor(x + 0.5) gives 1; 4503599627370495.5 is 2^52 - 0.5.
TEST(Numbers, RoundHalfEvenAndConversionsOverflowOutsideTheirRange) {
  const std::pair<double, double> rounded[] = {
      {2.5, 2}, {3.5, 4}, {-2.5, -2}, {-3.5, -4}, {0.5, 0}, {2.6, 3}, {-2.6, -3}, {1e300, 1e300},
  };
  for (auto [in, out] : rounded) EXPECT_EQ(round_half_even(in), out) << in;
  EXPECT_EQ(round_half_even(0.49999999999999994), 0);
  EXPECT_EQ(round_half_even(4503599627370495.5), 4503599627370496);
  EXPECT_EQ(round_half_even(4503599627370494.5), 4503599627370494);
  EXPECT_TRUE(std::signbit(round_half_even(-0.4)));
  EXPECT_TRUE(std::isnan(round_half_even(kNaN)));

  for (auto [in, out] : {std::pair{255.4, 255}, {254.5, 254}, {253.5, 254}, {-0.5, 0}})
    EXPECT_EQ(to_byte(in), out) << in;
  for (auto [in, out] : {std::pair{32766.5, 32766}, {-32768.5, -32768}, {-1.5, -2}})
    EXPECT_EQ(to_int16(in), out) << in;
  for (auto [in, out] : {std::pair{2147483646.5, 2147483646}, {-2147483648.5, INT32_MIN}})
    EXPECT_EQ(to_int32(in), out) << in;
  for (double bad : {255.5, 256.0, -0.6, kNaN}) EXPECT_THROW(to_byte(bad), OverflowError) << bad;
  for (double bad : {32767.5, 32768.0, -32768.6, -kInf})
    EXPECT_THROW(to_int16(bad), OverflowError) << bad;
  for (double bad : {2147483647.5, 2147483648.0, -2147483649.0, kNaN})
    EXPECT_THROW(to_int32(bad), OverflowError) << bad;
  EXPECT_EQ(whole_part(-12.7), -12);
  EXPECT_EQ(floor_part(-12.7), -13);
  EXPECT_EQ(divide(-3, 2), -1.5);
  for (double zero : {0.0, -0.0}) EXPECT_THROW(divide(0, zero), DivisionByZeroError);
}

TEST(Numbers, ValReadsTheLeadingNumberOnly) {
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"12,5", 12},  {"-", 0},       {"", 0},    {"1e3", 1},       {"  -7.25x", -7.25},
      {".5", 0.5},   {"1.2.3", 1.2}, {"+5", 5},  {"- 5", 0},       {"\t 42", 42},
      {"-.5", -0.5}, {"--5", 0},     {"\n5", 0}, {"191.5", 191.5},
  };
  for (const auto& c : cases) EXPECT_EQ(val(c.text), c.value) << '"' << c.text << '"';
  EXPECT_EQ(val("0.30000000000000004"), 0.30000000000000004);
  EXPECT_FALSE(std::signbit(val("-0")));
  EXPECT_EQ(val(std::string("0.") + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(val(std::string(30, '9')), 1e30);
  EXPECT_THROW(val("1" + std::string(400, '0')), OverflowError);
}

TEST(Numbers, NumberTextTwoDecimalsAndHex) {
  const std::pair<double, const char*> texts[] = {
      {12, "12"},           {0.5, "0.5"},       {1e15, "1E+15"},       {-0.0, "0"},
      {-1234.5, "-1234.5"}, {0.0001, "0.0001"}, {-2.5e-7, "-2.5E-07"}, {0.1 + 0.2, "0.3"},
  };
  for (auto [value, text] : texts) EXPECT_EQ(number_text(value), text) << value;
  EXPECT_EQ(number_text(2.0 / 3), "0.666666666666667");
  EXPECT_EQ(number_text(999999999999999), "999999999999999");
  EXPECT_EQ(number_text(123456789012345678.0), "1.23456789012346E+17");
  EXPECT_EQ(number_text(-1234.25, ','), "-1234,25");  // the locale's decimal comma
  EXPECT_EQ(number_text(1.5e300, ','), "1,5E+300");
  const double noisy = 49 * 1.27 + 128, below_half = 330 * 2.55 + 128;  // 969.4999999999999
  EXPECT_NE(noisy, 190.23);                                             // the noise this removes
  EXPECT_EQ(through_text(noisy), 190.23);
  EXPECT_EQ(round_half_even(below_half), 969);
  EXPECT_EQ(round_half_even(through_text(below_half)), 970);
  for (double bad : {kNaN, kInf}) {
    EXPECT_THROW(number_text(bad), OverflowError);
    EXPECT_THROW(through_text(bad), OverflowError);
  }

  // The double of 2.345 lies just below it; 15 digits make 1.0049999999999999 1.005 first.
  const std::pair<double, const char*> two_decimals[] = {
      {2.345, "2.35"}, {0, "0.00"},        {-0.004, "0.00"}, {-0.005, "-0.01"},
      {0.125, "0.13"}, {99.995, "100.00"}, {0.0449, "0.04"},
  };
  for (auto [value, text] : two_decimals) EXPECT_EQ(format_0_00(value, '.'), text) << value;
  EXPECT_EQ(format_0_00(1.0049999999999999, '.'), "1.01");
  EXPECT_EQ(format_0_00(1e20, '.'), "100000000000000000000.00");
  EXPECT_EQ(format_0_00(123456789012345678.0, '.'), "123456789012346000.00");
  EXPECT_EQ(format_0_00(-12.5, ','), "-12,50");
  EXPECT_THROW(format_0_00(kNaN, '.'), OverflowError);

  const std::pair<double, const char*> hex[] = {
      {0, "0"},     {255, "FF"},        {254.5, "FE"},        {255.5, "100"},
      {-1, "FFFF"}, {-32768.5, "8000"}, {-32769, "FFFF7FFF"},
  };
  for (auto [value, text] : hex) EXPECT_EQ(hex_text(value), text) << value;
  EXPECT_EQ(hex_text(-2147483648.0), "80000000");
  EXPECT_EQ(hex_text(2147483647), "7FFFFFFF");
  for (double bad : {2147483647.5, -2147483649.0, kNaN})
    EXPECT_THROW(hex_text(bad), OverflowError) << bad;
}

TEST(ClockTexts, PatternsTokensLiteralsAndQuotes) {
  auto check = [](const DateTime& t, std::initializer_list<std::string> cases) {
    for (const std::string& c : cases) {  // "pattern|text"
      const auto bar = c.find('|');
      EXPECT_EQ(format_date_time(t, c.substr(0, bar)), c.substr(bar + 1)) << c;
    }
  };
  check({2026, 11, 15, 23, 19, 28},
        {"dd.MM.yyyy|15.11.2026", "HH:mm:ss|23:19:28", "h:mm:ss AP|11:19:28 PM", "yy|26", "a|pm",
         "'Uhr' HH|Uhr 23", "''HH''|'23'", "'it''s' H|it's 23", "HH 'open|23 open", "[d] x|[15] x",
         "|"});
  check({2026, 1, 5, 7, 3, 9},
        {"dd.MM.yyyy|05.01.2026", "M/d/yyyy|1/5/2026", "h:mm:ss AP|7:03:09 AM", "H m s|7 3 9"});
  check({2026, 1, 5, 0, 0, 0}, {"h:mm:ss AP|12:00:00 AM", "H|0"});
  check({2026, 1, 5, 12, 0, 0}, {"h:mm:ss AP|12:00:00 PM"});
  check({987, 1, 1, 13, 5, 0}, {"yyyy|0987", "y|87", "hh:mm ap|01:05 pm"});
}

}  // namespace
}  // namespace nerit
