#include <gtest/gtest.h>

#include "model/contract/FormatSettings.h"

namespace margindesk {
namespace {

using namespace std::chrono_literals;

TEST(FormatSettings, ReadDatesThatExistAndNothingElse) {
  const TFormatSettings settings;
  std::chrono::year_month_day date = 1999y / 1 / 1;
  for (const char* text : {"2020-02-30 00:00:00", "2020-13-01 00:00:00", "2020-00-10 00:00:00", "2020-01-31",
                           "20a0-01-31 00:00:00", "2020-01-31 24:00:00", "2020-01-31 00:00:00 ",
                           "-020-01-31 00:00:00", "2020/01/31 00:00:00", " 2020-01-31 00:00:00", ""}) {
    EXPECT_FALSE(TryTextToDateTime(text, settings, date)) << text;
  }
  EXPECT_EQ(date, 1999y / 1 / 1);
  EXPECT_TRUE(TryTextToDateTime("2020-02-29 23:59:59", settings, date));
  EXPECT_EQ(date, 2020y / 2 / 29);
}

TEST(FormatSettings, WriteDatesWithTheSeparatorThatIsSet) {
  const TFormatSettings american{"mm/dd/yy", '/', "hh:nn:ss", ':'};
  EXPECT_EQ(FormatDate(2020y / 1 / 31, american.FShortDateFormat, american), "01/31/20");
  EXPECT_EQ(FormatDate(2009y / 12 / 5, "yyyy-mm-dd", american), "2009-12-05");
  const TFormatSettings dotted{"mm/dd/yy", '.', "hh:nn:ss", ':'};
  EXPECT_EQ(FormatDate(2020y / 1 / 31, dotted.FShortDateFormat, dotted), "01.31.20");
}

TEST(FormatSettings, MonthsLaterEndsOnTheLastDayOfAShorterMonth) {
  EXPECT_EQ(AddMonths(2020y / 2 / 29, 12), 2021y / 2 / 28);
  EXPECT_EQ(AddMonths(2020y / 12 / 31, 2), 2021y / 2 / 28);
  EXPECT_EQ(AddMonths(2020y / 1 / 31, 12), 2021y / 1 / 31);
}

}  // namespace
}  // namespace margindesk
