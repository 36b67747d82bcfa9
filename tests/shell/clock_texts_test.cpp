// Date and time texts after the locale's patterns.
#include "shell/clock_texts.h"

#include <gtest/gtest.h>

namespace nerit {
namespace {

TEST(ClockTexts, PatternsTokensLiteralsAndQuotes) {
  const DateTime evening{2026, 11, 15, 23, 19, 28}, morning{2026, 1, 5, 7, 3, 9};
  const DateTime midnight{2026, 1, 5, 0, 0, 0}, noon{2026, 1, 5, 12, 0, 0};
  const DateTime y2005{2005, 1, 1, 13, 5, 0}, y987{987, 1, 1, 0, 0, 0};
  const struct {
    const DateTime& t;
    const char* pattern;
    const char* text;
  } cases[] = {
      {evening, "dd.MM.yyyy", "15.11.2026"},
      {evening, "HH:mm:ss", "23:19:28"},
      {morning, "dd.MM.yyyy", "05.01.2026"},
      {morning, "HH:mm:ss", "07:03:09"},
      {morning, "M/d/yyyy", "1/5/2026"},
      {evening, "M/d/yyyy", "11/15/2026"},
      {morning, "h:mm:ss AP", "7:03:09 AM"},
      {evening, "h:mm:ss AP", "11:19:28 PM"},
      {midnight, "h:mm:ss AP", "12:00:00 AM"},
      {noon, "h:mm:ss AP", "12:00:00 PM"},
      {y2005, "hh:mm ap", "01:05 pm"},
      {evening, "yy", "26"},
      {evening, "yyy", "2026"},
      {y2005, "yy", "05"},
      {y2005, "y", "5"},
      {y987, "yyyy", "0987"},
      {morning, "MMM", "01"},
      {midnight, "H", "0"},
      {midnight, "hh", "12"},
      {morning, "ap", "am"},
      {evening, "A", "PM"},
      {evening, "a", "pm"},
      {evening, "Ap", "PM"},
      {evening, "'Uhr' HH", "Uhr 23"},
      {evening, "HH'h'mm", "23h19"},
      {evening, "''HH''", "'23'"},
      {evening, "'it''s' H", "it's 23"},
      {evening, "'dd MM yyyy'", "dd MM yyyy"},
      {evening, "HH 'open", "23 open"},
      {evening, "[d] x", "[15] x"},
      {evening, "", ""},
      {morning, "H m s", "7 3 9"},
  };
  for (const auto& c : cases) EXPECT_EQ(format_date_time(c.t, c.pattern), c.text) << c.pattern;
}

}  // namespace
}  // namespace nerit
