#include "shell/clock_texts.h"

#include <gtest/gtest.h>

namespace nerit {
namespace {

const DateTime kEvening{2026, 11, 15, 23, 19, 28};
const DateTime kMorning{2026, 1, 5, 7, 3, 9};
const DateTime kMidnight{2026, 1, 5, 0, 0, 0};
const DateTime kNoon{2026, 1, 5, 12, 0, 0};

TEST(ClockTexts, GermanAndUsPatterns) {
  EXPECT_EQ(format_date_time(kEvening, "dd.MM.yyyy"), "15.11.2026");
  EXPECT_EQ(format_date_time(kEvening, "HH:mm:ss"), "23:19:28");
  EXPECT_EQ(format_date_time(kMorning, "dd.MM.yyyy"), "05.01.2026");
  EXPECT_EQ(format_date_time(kMorning, "HH:mm:ss"), "07:03:09");

  EXPECT_EQ(format_date_time(kMorning, "M/d/yyyy"), "1/5/2026");
  EXPECT_EQ(format_date_time(kEvening, "M/d/yyyy"), "11/15/2026");
  EXPECT_EQ(format_date_time(kMorning, "h:mm:ss AP"), "7:03:09 AM");
  EXPECT_EQ(format_date_time(kEvening, "h:mm:ss AP"), "11:19:28 PM");
  EXPECT_EQ(format_date_time(kMidnight, "h:mm:ss AP"), "12:00:00 AM");
  EXPECT_EQ(format_date_time(kNoon, "h:mm:ss AP"), "12:00:00 PM");
  EXPECT_EQ(format_date_time(DateTime{2026, 1, 5, 13, 5, 0}, "hh:mm ap"), "01:05 pm");
}

TEST(ClockTexts, SingleTokens) {
  struct Case {
    const DateTime& t;
    const char* pattern;
    const char* text;
  };
  const Case cases[] = {
      {kEvening, "yy", "26"},
      {kEvening, "yyyy", "2026"},
      {kEvening, "yyy", "2026"},
      {DateTime{2005, 1, 1, 0, 0, 0}, "yy", "05"},
      {DateTime{2005, 1, 1, 0, 0, 0}, "y", "5"},
      {DateTime{987, 1, 1, 0, 0, 0}, "yyyy", "0987"},
      {kMorning, "d", "5"},
      {kMorning, "dd", "05"},
      {kMorning, "M", "1"},
      {kMorning, "MM", "01"},
      {kMorning, "MMM", "01"},
      {kMorning, "H", "7"},
      {kMorning, "HH", "07"},
      {kMorning, "h", "7"},
      {kMorning, "hh", "07"},
      {kMidnight, "H", "0"},
      {kMidnight, "hh", "12"},
      {kEvening, "h", "11"},
      {kMorning, "m", "3"},
      {kMorning, "mm", "03"},
      {kMorning, "s", "9"},
      {kMorning, "ss", "09"},
      {kMorning, "AP", "AM"},
      {kMorning, "ap", "am"},
      {kEvening, "A", "PM"},
      {kEvening, "a", "pm"},
      {kEvening, "Ap", "PM"},
  };
  for (const Case& c : cases) EXPECT_EQ(format_date_time(c.t, c.pattern), c.text) << c.pattern;
}

TEST(ClockTexts, LiteralsAndQuotes) {
  EXPECT_EQ(format_date_time(kEvening, "'Uhr' HH"), "Uhr 23");
  EXPECT_EQ(format_date_time(kEvening, "HH 'Uhr'"), "23 Uhr");
  EXPECT_EQ(format_date_time(kEvening, "HH'h'mm"), "23h19");
  EXPECT_EQ(format_date_time(kEvening, "''HH''"), "'23'");
  EXPECT_EQ(format_date_time(kEvening, "'it''s' H"), "it's 23");
  EXPECT_EQ(format_date_time(kEvening, "'dd MM yyyy'"), "dd MM yyyy");
  EXPECT_EQ(format_date_time(kEvening, "HH 'open"), "23 open");
  EXPECT_EQ(format_date_time(kEvening, "yyyy-MM-dd, HH:mm"), "2026-11-15, 23:19");
  EXPECT_EQ(format_date_time(kEvening, "[d] x"), "[15] x");
  EXPECT_EQ(format_date_time(kEvening, ""), "");
}

}  // namespace
}  // namespace nerit
