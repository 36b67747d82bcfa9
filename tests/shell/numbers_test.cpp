#include "shell/numbers.h"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "shell/errors.h"

namespace nerit {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(NumbersRounding, RoundHalfEvenTiesAndNonTies) {
  struct Case {
    double in, out;
  };
  const Case cases[] = {
      {2.5, 2},
      {3.5, 4},
      {-2.5, -2},
      {-3.5, -4},
      {0.5, 0},
      {1.5, 2},
      {-1.5, -2},
      {2.4, 2},
      {2.6, 3},
      {-2.6, -3},
      {-2.4, -2},
      {7, 7},
      {0.49999999999999994, 0},  // where floor(x + 0.5) gives 1
      {254.5, 254},
      {255.5, 256},
      {4503599627370495.5, 4503599627370496},  // 2^52 - 0.5
      {4503599627370494.5, 4503599627370494},
      {4503599627370497.0, 4503599627370497},  // odd, beyond the fractional range
      {-4503599627370495.5, -4503599627370496},
      {1e300, 1e300},
  };
  for (const Case& c : cases) EXPECT_EQ(round_half_even(c.in), c.out) << c.in;

  EXPECT_EQ(round_half_even(-0.4), 0);
  EXPECT_TRUE(std::signbit(round_half_even(-0.4)));
  EXPECT_TRUE(std::isnan(round_half_even(kNaN)));
  EXPECT_EQ(round_half_even(-kInf), -kInf);
}

TEST(NumbersRounding, ByteWordLongConversions) {
  EXPECT_EQ(to_byte(255.4), 255);
  EXPECT_EQ(to_byte(254.5), 254);
  EXPECT_EQ(to_byte(253.5), 254);
  EXPECT_EQ(to_byte(-0.5), 0);
  EXPECT_EQ(to_byte(0), 0);
  EXPECT_EQ(to_byte(127.6), 128);
  EXPECT_THROW(to_byte(255.5), OverflowError);
  EXPECT_THROW(to_byte(256), OverflowError);
  EXPECT_THROW(to_byte(-0.6), OverflowError);
  EXPECT_THROW(to_byte(-1), OverflowError);

  EXPECT_EQ(to_int16(32767), 32767);
  EXPECT_EQ(to_int16(32766.5), 32766);
  EXPECT_EQ(to_int16(-32768.5), -32768);
  EXPECT_EQ(to_int16(-32768), -32768);
  EXPECT_EQ(to_int16(-1.5), -2);
  EXPECT_THROW(to_int16(32767.5), OverflowError);
  EXPECT_THROW(to_int16(-32769), OverflowError);
  EXPECT_THROW(to_int16(-32768.6), OverflowError);

  EXPECT_EQ(to_int32(2147483647), 2147483647);
  EXPECT_EQ(to_int32(2147483646.5), 2147483646);
  EXPECT_EQ(to_int32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(to_int32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(to_int32(100000.5), 100000);
  EXPECT_THROW(to_int32(2147483647.5), OverflowError);
  EXPECT_THROW(to_int32(2147483648.0), OverflowError);
  EXPECT_THROW(to_int32(-2147483649.0), OverflowError);
  EXPECT_THROW(to_int32(1e300), OverflowError);

  for (double bad : {kNaN, kInf, -kInf}) {
    EXPECT_THROW(to_byte(bad), OverflowError);
    EXPECT_THROW(to_int16(bad), OverflowError);
    EXPECT_THROW(to_int32(bad), OverflowError);
  }
  try {
    to_byte(300);
    FAIL() << "no exception";
  } catch (const OverflowError& e) {
    EXPECT_STREQ(e.what(), "Overflow");
  }
}

TEST(NumbersArithmetic, WholeFloorAndDivide) {
  EXPECT_EQ(whole_part(12.7), 12);
  EXPECT_EQ(whole_part(-12.7), -12);
  EXPECT_EQ(whole_part(5), 5);
  EXPECT_EQ(floor_part(12.7), 12);
  EXPECT_EQ(floor_part(-12.7), -13);
  EXPECT_EQ(floor_part(-12), -12);

  EXPECT_EQ(divide(1, 4), 0.25);
  EXPECT_EQ(divide(-3, 2), -1.5);
  EXPECT_EQ(divide(0, 5), 0);
  EXPECT_THROW(divide(1, 0), DivisionByZeroError);
  EXPECT_THROW(divide(0, 0), DivisionByZeroError);
  EXPECT_THROW(divide(1, -0.0), DivisionByZeroError);
  try {
    divide(3, 0);
    FAIL() << "no exception";
  } catch (const DivisionByZeroError& e) {
    EXPECT_STREQ(e.what(), "Division by zero");
  }
}

TEST(NumbersVal, LenientParse) {
  struct Case {
    const char* text;
    double value;
  };
  const Case cases[] = {
      {"12,5", 12},
      {"-", 0},
      {"", 0},
      {"1e3", 1},
      {"  -7.25x", -7.25},
      {".5", 0.5},
      {"1.2.3", 1.2},
      {"+5", 5},
      {"- 5", 0},
      {"abc", 0},
      {"007", 7},
      {"3.", 3},
      {"\t 42", 42},
      {"12 34", 12},
      {"-.5", -0.5},
      {".", 0},
      {"+", 0},
      {"--5", 0},
      {"0.1", 0.1},
      {"191.5", 191.5},
      {"  ", 0},
      {"x12", 0},
      {"1 .5", 1},
      {"\n5", 0},
      {"255", 255},
      {"0.30000000000000004", 0.30000000000000004},
  };
  for (const Case& c : cases) EXPECT_EQ(val(c.text), c.value) << '"' << c.text << '"';

  EXPECT_FALSE(std::signbit(val("-0")));
  EXPECT_FALSE(std::signbit(val("-")));
  EXPECT_EQ(val(std::string("0.") + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(val(std::string(30, '9')), 1e30);
  EXPECT_THROW(val("1" + std::string(400, '0')), OverflowError);
}

TEST(NumbersText, NumberTextAndRoundTrip) {
  struct Case {
    double value;
    const char* text;
  };
  const Case cases[] = {
      {12, "12"},
      {0.5, "0.5"},
      {-3, "-3"},
      {0.1 + 0.2, "0.3"},
      {1e20, "1E+20"},
      {-0.0, "0"},
      {0, "0"},
      {100, "100"},
      {-1234.5, "-1234.5"},
      {2.0 / 3, "0.666666666666667"},
      {999999999999999, "999999999999999"},
      {1e15, "1E+15"},
      {123456789012345678.0, "1.23456789012346E+17"},
      {0.0001, "0.0001"},
      {0.00001, "1E-05"},
      {-2.5e-7, "-2.5E-07"},
      {1e-100, "1E-100"},
      {50 * 1.27 + 128, "191.5"},
  };
  for (const Case& c : cases) EXPECT_EQ(number_text(c.value), c.text) << c.value;

  EXPECT_EQ(number_text(0.5, ','), "0,5");
  EXPECT_EQ(number_text(-1234.25, ','), "-1234,25");
  EXPECT_EQ(number_text(1.5e300, ','), "1,5E+300");
  EXPECT_EQ(number_text(7, ','), "7");

  EXPECT_EQ(through_text(50 * 1.27 + 128), 191.5);
  const double noisy = 49 * 1.27 + 128;
  EXPECT_NE(noisy, 190.23);  // the noise this removes
  EXPECT_EQ(through_text(noisy), 190.23);
  const double below_half = 330 * 2.55 + 128;  // 969.4999999999999
  EXPECT_EQ(round_half_even(below_half), 969);
  EXPECT_EQ(round_half_even(through_text(below_half)), 970);
  EXPECT_EQ(through_text(0.1 + 0.2), 0.3);
  EXPECT_EQ(through_text(1.0 / 3), 0.333333333333333);
  EXPECT_EQ(through_text(1e20), 1e20);
  EXPECT_EQ(through_text(123456789012345678.0), 1.23456789012346e17);
  EXPECT_EQ(through_text(-2.5e-7), -2.5e-7);
  EXPECT_EQ(through_text(-0.0), 0);

  for (double bad : {kNaN, kInf, -kInf}) {
    EXPECT_THROW(number_text(bad), OverflowError);
    EXPECT_THROW(through_text(bad), OverflowError);
  }
}

TEST(NumbersText, TwoDecimals) {
  struct Case {
    double value;
    const char* text;
  };
  const Case cases[] = {
      {4.1375, "4.14"},
      {2.345, "2.35"},  // the double lies just below 2.345
      {0, "0.00"},
      {-0.0, "0.00"},
      {5, "5.00"},
      {1.005, "1.01"},
      {-1.5, "-1.50"},
      {-0.004, "0.00"},
      {-0.005, "-0.01"},
      {0.005, "0.01"},
      {0.125, "0.13"},
      {-0.125, "-0.13"},
      {2.675, "2.68"},
      {0.995, "1.00"},
      {99.995, "100.00"},
      {-9.999, "-10.00"},
      {0.1 + 0.2, "0.30"},
      {1234567.891, "1234567.89"},
      {1e20, "100000000000000000000.00"},
      {123456789012345678.0, "123456789012346000.00"},
      {1e-20, "0.00"},
      {0.0449, "0.04"},
      {1.0049999999999999, "1.01"},  // 15 digits make it 1.005 first
  };
  for (const Case& c : cases) EXPECT_EQ(format_0_00(c.value, '.'), c.text) << c.value;

  EXPECT_EQ(format_0_00(4.1375, ','), "4,14");
  EXPECT_EQ(format_0_00(0, ','), "0,00");
  EXPECT_EQ(format_0_00(-0.001, ','), "0,00");
  EXPECT_EQ(format_0_00(-12.5, ','), "-12,50");
  EXPECT_THROW(format_0_00(kNaN, '.'), OverflowError);
  EXPECT_THROW(format_0_00(kInf, '.'), OverflowError);
}

TEST(NumbersText, Hex) {
  struct Case {
    double value;
    const char* text;
  };
  const Case cases[] = {
      {0, "0"},
      {255, "FF"},
      {0x250, "250"},
      {15, "F"},
      {4095.4, "FFF"},
      {254.5, "FE"},
      {255.5, "100"},
      {65535, "FFFF"},
      {65536, "10000"},
      {2147483647, "7FFFFFFF"},
      {-0.5, "0"},
      {-1, "FFFF"},
      {-2, "FFFE"},
      {-256, "FF00"},
      {-32768, "8000"},
      {-32768.5, "8000"},
      {-32769, "FFFF7FFF"},
      {-65536, "FFFF0000"},
      {-2147483648.0, "80000000"},
  };
  for (const Case& c : cases) EXPECT_EQ(hex_text(c.value), c.text) << c.value;

  EXPECT_THROW(hex_text(2147483647.5), OverflowError);
  EXPECT_THROW(hex_text(4294967295.0), OverflowError);
  EXPECT_THROW(hex_text(-2147483649.0), OverflowError);
  EXPECT_THROW(hex_text(kNaN), OverflowError);
}

}  // namespace
}  // namespace nerit
