#include "model/contract/FormatSettings.h"

#include <array>
#include <charconv>

namespace margindesk {

namespace {

struct TMoment {
  int FYear = 0;
  int FMonth = 0;
  int FDay = 0;
  int FHour = 0;
  int FMinute = 0;
  int FSecond = 0;
};

struct TFormatPart {
  std::string_view FLetters;
  int TMoment::*FField;
};

// The longer year comes first, since the shorter one is a part of it.
constexpr std::array<TFormatPart, 7> kParts{{{"yyyy", &TMoment::FYear},
                                             {"yy", &TMoment::FYear},
                                             {"mm", &TMoment::FMonth},
                                             {"dd", &TMoment::FDay},
                                             {"hh", &TMoment::FHour},
                                             {"nn", &TMoment::FMinute},
                                             {"ss", &TMoment::FSecond}}};

const TFormatPart* FindPart(std::string_view format) {
  for (const TFormatPart& part : kParts) {
    if (format.starts_with(part.FLetters)) return &part;
  }
  return nullptr;
}

char SeparatorOf(char letter, const TFormatSettings& settings) {
  if (letter == '/') return settings.FDateSeparator;
  if (letter == ':') return settings.FTimeSeparator;
  return letter;
}

// Reads `text` as `format` from the front and takes what it read off it.
bool ReadFormat(std::string_view& text, std::string_view format, const TFormatSettings& settings,
                TMoment& moment) {
  while (!format.empty()) {
    const TFormatPart* part = FindPart(format);
    if (part == nullptr) {
      if (text.empty() || text.front() != SeparatorOf(format.front(), settings)) return false;
      text.remove_prefix(1);
      format.remove_prefix(1);
      continue;
    }
    const std::size_t length = part->FLetters.size();
    if (text.size() < length || text.front() < '0' || text.front() > '9') return false;
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + length, value);
    if (error != std::errc() || end != text.data() + length) return false;
    moment.*part->FField = part->FLetters == "yy" ? 2000 + value : value;
    text.remove_prefix(length);
    format.remove_prefix(length);
  }
  return true;
}

void AppendPadded(std::string& text, int value, std::size_t digits) {
  std::string written = std::to_string(value);
  if (written.size() < digits) written.insert(0, digits - written.size(), '0');
  text += std::string_view(written).substr(written.size() - digits);
}

}  // namespace

TFormatSettings& GetProcessFormatSettings() noexcept {
  static TFormatSettings settings;
  return settings;
}

bool TryTextToDateTime(std::string_view text, const TFormatSettings& settings,
                       std::chrono::year_month_day& date) {
  TMoment moment;
  if (!ReadFormat(text, settings.FShortDateFormat, settings, moment)) return false;
  if (text.empty() || text.front() != ' ') return false;
  text.remove_prefix(1);
  if (!ReadFormat(text, settings.FShortTimeFormat, settings, moment) || !text.empty()) return false;
  if (moment.FHour > 23 || moment.FMinute > 59 || moment.FSecond > 59) return false;
  const std::chrono::year_month_day read(std::chrono::year(moment.FYear),
                                         std::chrono::month(static_cast<unsigned>(moment.FMonth)),
                                         std::chrono::day(static_cast<unsigned>(moment.FDay)));
  if (!read.ok()) return false;
  date = read;
  return true;
}

std::string FormatDate(std::chrono::year_month_day date, std::string_view format,
                       const TFormatSettings& settings) {
  TMoment moment;
  moment.FYear = static_cast<int>(date.year());
  moment.FMonth = static_cast<int>(static_cast<unsigned>(date.month()));
  moment.FDay = static_cast<int>(static_cast<unsigned>(date.day()));
  std::string text;
  while (!format.empty()) {
    if (const TFormatPart* part = FindPart(format)) {
      AppendPadded(text, moment.*part->FField, part->FLetters.size());
      format.remove_prefix(part->FLetters.size());
    } else {
      text += SeparatorOf(format.front(), settings);
      format.remove_prefix(1);
    }
  }
  return text;
}

std::chrono::year_month_day AddMonths(std::chrono::year_month_day date, int months) noexcept {
  const std::chrono::year_month_day moved = date + std::chrono::months(months);
  if (moved.ok()) return moved;
  return moved.year() / moved.month() / std::chrono::last;
}

}  // namespace margindesk
