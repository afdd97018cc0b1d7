#include "accountinfo/data/RpqText.h"

#include <chrono>

#include "model/contract/AccountAdapter.h"
#include "model/contract/BaseAccountData.h"
#include "model/contract/Constdef.h"
#include "model/contract/FormatSettings.h"
#include "model/contract/LanguageManager.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

constexpr std::string_view kTable = "oms_CustomAccountInfo";
constexpr int kMonthsValid = 12;

void SetProcessDateFormat(std::string_view dateFormat, char separator) {
  TFormatSettings& settings = GetProcessFormatSettings();
  settings.FShortDateFormat = dateFormat;
  settings.FDateSeparator = separator;
  settings.FShortTimeFormat = "hh:nn:ss";
  settings.FTimeSeparator = ':';
}

// The byte at which the character of an index (0-based) starts in a UTF-8 text, or the text's size.
std::size_t CharacterOffset(std::string_view text, std::size_t index) {
  std::size_t offset = 0;
  for (; offset < text.size(); ++offset) {
    const bool starts = (static_cast<unsigned char>(text[offset]) & 0xC0U) != 0x80U;
    if (starts && index-- == 0) break;
  }
  return offset;
}

// "yyyy-mm-dd" of eight characters, whatever they are; empty for a text of another length.
std::string RebuildDate(std::string_view text) {
  const std::size_t month = CharacterOffset(text, 4);
  const std::size_t day = CharacterOffset(text, 6);
  if (CharacterOffset(text, 7) == text.size() || CharacterOffset(text, 8) != text.size()) return {};
  return std::string(text.substr(0, month))
      .append(1, '-')
      .append(text.substr(month, day - month))
      .append(1, '-')
      .append(text.substr(day));
}

}  // namespace

std::string GetRpqText(const TCustomAccount& account) {
  const auto& accounts = TCustomAccountAdapter::GetInstance();
  const auto& languages = TCustomLanguageManager::GetInstance();
  std::int32_t level = 0;
  const std::string& levelText = account.GetCustomValue(accounts.GetCustomFieldKey(kTable, "RPQLevel"));
  if (!TryTextToInteger(TrimText(levelText), level)) {
    return languages.GetLanguageText(Const_ResourceStringTag, "Res_undefined");
  }
  const std::string levelNumber = IntegerToText(level);
  std::string text = languages.GetLanguageText("RPQLevel", levelNumber);
  if (text.empty()) text = levelNumber;

  const std::string& dateKey = accounts.GetCustomFieldKey(kTable, "RPQDate");
  if (dateKey.empty()) return text;
  std::string from = RebuildDate(TrimText(account.GetCustomValue(dateKey)));
  if (from.empty()) return text;
  std::string to;
  std::chrono::year_month_day date;
  SetProcessDateFormat("yyyy-mm-dd", '-');
  if (TryTextToDateTime(from + " 00:00:00", GetProcessFormatSettings(), date)) {
    SetProcessDateFormat("mm/dd/yy", '/');
    const TFormatSettings& settings = GetProcessFormatSettings();
    from = FormatDate(date, settings.FShortDateFormat, settings);
    to = FormatDate(AddMonths(date, kMonthsValid), settings.FShortDateFormat, settings);
  }
  return text.append(" (").append(from).append(1, '~').append(to).append(1, ')');
}

}  // namespace margindesk
