#include "host/framework/AveragePrice.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "model/contract/ConfigManager.h"
#include "model/contract/Formatter.h"
#include "model/contract/Variant.h"

namespace margindesk {

double RoundTowards(double value, std::int32_t decimals, bool up) {
  if (!std::isfinite(value)) return value;
  std::array<char, 400> text;  // the longest: 309 digits before the point, or 341 characters behind "0."
  text[0] = '0';               // for a carry
  char* const end =
      std::to_chars(text.data() + 1, text.data() + text.size(), std::fabs(value), std::chars_format::fixed)
          .ptr;
  char* const point = std::find(text.data(), end, '.');
  if (point == end || end - point - 1 <= decimals) return value;
  // The shortest digits end in one that is not 0, so something is cut off.
  char* const cut = decimals == 0 ? point : point + decimals + 1;
  const bool awayFromZero = up == (value > 0);
  for (char* at = cut; awayFromZero && at != text.data();) {
    --at;
    if (*at == '.') continue;
    if (*at != '9') {
      ++*at;
      break;
    }
    *at = '0';
  }
  double rounded = 0;
  std::from_chars(text.data(), cut, rounded);
  return value < 0 ? -rounded : rounded;
}

TAveragePriceStyle TAveragePriceStyle::Read() {
  const auto& config = TCustomConfigManager::GetInstance();
  const std::string section = config.GetUserSection();
  TAveragePriceStyle style;
  const std::string mode = config.ReadString(section, "AvgPriceMode");
  style.FBuysUp = mode == "1" || mode == "3";
  style.FSellsDown = mode == "2" || mode == "3";
  std::int32_t decimals = 0;
  if (TryTextToInteger(config.ReadString(section, "DefaultPrecision"), decimals) && decimals >= 0 &&
      decimals <= kMaximumPrecision) {
    style.FDecimals = decimals;
    style.FKeepZeros = config.ReadBool(section, "DefaultDecimal");
  }
  return style;
}

double TAveragePriceStyle::Round(double price, bool buy) const {
  return (buy ? FBuysUp : FSellsDown) ? RoundTowards(price, FDecimals, buy) : price;
}

std::string TAveragePriceStyle::Format(double price) const {
  std::string text = TCustomFormatter::GetInstance().FormatNumber(price, FDecimals, true);
  if (FKeepZeros || text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

}  // namespace margindesk
