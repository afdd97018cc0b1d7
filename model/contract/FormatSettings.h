#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace margindesk {

// How the process writes and reads dates and times. There is one for the whole process, and it is meant to be
// seen: a view that sets it changes what every other view of the terminal sees. A format is made of yyyy, yy,
// mm, dd, hh, nn and ss; "/" stands for the date separator and ":" for the time separator.
struct TFormatSettings {
  std::string FShortDateFormat = "yyyy-mm-dd";
  char FDateSeparator = '-';
  std::string FShortTimeFormat = "hh:nn:ss";
  char FTimeSeparator = ':';
};

TFormatSettings& GetProcessFormatSettings() noexcept;

// Reads a date and a time ("2020-01-31 00:00:00") written in the short formats. False leaves the date alone:
// a part is missing, is no number or no such day or time exists.
bool TryTextToDateTime(std::string_view text, const TFormatSettings& settings,
                       std::chrono::year_month_day& date);

// Writes a date in a format.
std::string FormatDate(std::chrono::year_month_day date, std::string_view format,
                       const TFormatSettings& settings);

// The same day so many months later, or the last day of that month where it is shorter.
std::chrono::year_month_day AddMonths(std::chrono::year_month_day date, int months) noexcept;

}  // namespace margindesk
