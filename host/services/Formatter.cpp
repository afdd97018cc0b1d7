#include "host/services/Formatter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

#include "host/framework/AveragePrice.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

constexpr std::int32_t kMaximumDecimals = 15;
constexpr std::int32_t kMarginLevelDecimals = 2;

// The largest double has 309 digits before the point.
constexpr std::size_t kLongestText = 1 + 309 + 102 + 1 + kMaximumDecimals;

// A positive number 0.ddd * 10^FPoint; no digits for zero.
struct TDecimal {
  std::array<char, 24> FDigits;
  std::int32_t FCount = 0;
  std::int32_t FPoint = 0;

  char At(std::int32_t index) const {
    return index >= 0 && index < FCount ? FDigits[static_cast<std::size_t>(index)] : '0';
  }
};

// The shortest digits that read back as the same double. value: positive and finite.
TDecimal ShortestDigits(double value) {
  std::array<char, 32> text;
  const char* const end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific).ptr;
  TDecimal decimal;  // "d.ddde+xx" or "de+xx"
  const char* at = text.data();
  for (; *at != 'e'; ++at) {
    if (*at != '.') decimal.FDigits[static_cast<std::size_t>(decimal.FCount++)] = *at;
  }
  at += at[1] == '+' ? 2 : 1;
  std::from_chars(at, end, decimal.FPoint);
  ++decimal.FPoint;
  return decimal;
}

// Keeps at most so many digits after the point, half away from zero, and no trailing zeros.
void Round(TDecimal& decimal, std::int32_t decimals) {
  std::int32_t kept = decimal.FPoint + decimals;
  if (kept >= decimal.FCount) return;
  const bool up = kept >= 0 && decimal.At(kept) >= '5';
  kept = std::max(kept, 0);
  const char dropped = up ? '9' : '0';
  while (kept > 0 && decimal.At(kept - 1) == dropped) --kept;
  decimal.FCount = kept;
  if (up && kept > 0) {
    ++decimal.FDigits[static_cast<std::size_t>(kept - 1)];
  } else if (up) {
    decimal.FDigits[0] = '1';
    decimal.FCount = 1;
    ++decimal.FPoint;
  } else if (kept == 0) {
    decimal.FPoint = 0;
  }
}

}  // namespace

std::string FormatDecimal(double value, std::int32_t decimals, bool keepZeros, bool grouping) {
  if (!std::isfinite(value)) return {};
  decimals = std::clamp(decimals, 0, kMaximumDecimals);
  TDecimal decimal;
  if (value != 0) {
    decimal = ShortestDigits(std::fabs(value));
    Round(decimal, decimals);
  }
  if (!keepZeros) decimals = std::min(decimals, std::max(decimal.FCount - decimal.FPoint, 0));

  std::array<char, kLongestText> text;
  char* out = text.data();
  if (value < 0 && decimal.FCount != 0) *out++ = '-';
  const std::int32_t whole = decimal.FCount == 0 ? 0 : decimal.FPoint;  // digits before the point
  if (whole <= 0) *out++ = '0';
  for (std::int32_t i = 0; i < whole; ++i) {
    if (grouping && i != 0 && (whole - i) % 3 == 0) *out++ = ',';
    *out++ = decimal.At(i);
  }
  if (decimals > 0) *out++ = '.';
  for (std::int32_t i = 0; i < decimals; ++i) *out++ = decimal.At(whole + i);
  return std::string(text.data(), out);
}

// What a user may set for one kind of figure, and what holds until then.
struct TFormatter::TPreference {
  std::string_view FPrecisionKey;
  std::string_view FZerosKey;
  TStyle FDefault;
};

const std::array<TFormatter::TPreference, TFormatter::kStyleCount> TFormatter::kPreferences = {{
    {"AmountPrecision", "AmountDecimal", {2, true, false}},
    {"QtyPrecision", "QtyDecimal", {kMaximumPrecision, false, false}},
    {"DefaultPrecision", "DefaultDecimal", {kAveragePriceDecimals, true, false}},
    {"QuotedPricePrecision", "QuotedPriceDecimal", {3, true, false}},
    {"CurrencyPrecision", "CurrencyDecimal", {6, true, false}},
}};

TFormatter::TFormatter(TCustomConfigManager& config, TSymbolDecimals symbolDecimals)
    : FConfig(config), FSymbolDecimals(std::move(symbolDecimals)) {
  ConfigUpdate(nullptr, nullptr);
  FConfig.AddConfigUpdateHandler(MakeHandler<&TFormatter::ConfigUpdate>(this), this);
}

TFormatter::~TFormatter() { FConfig.RemoveConfigUpdateHandler(this); }

void TFormatter::ConfigUpdate(void* /*sender*/, void* /*data*/) {
  const std::string section = FConfig.GetUserSection();
  for (std::size_t i = 0; i < kStyleCount; ++i) {
    const TPreference& preference = kPreferences[i];
    TStyle style = preference.FDefault;
    std::int32_t precision = 0;
    if (TryTextToInteger(FConfig.ReadString(section, preference.FPrecisionKey), precision) &&
        precision >= 0 && precision <= kMaximumPrecision) {
      style = {precision, FConfig.ReadBool(section, preference.FZerosKey), true};
    }
    FStyles[i] = style;
  }
}

std::string TFormatter::FormatValue(double value, std::int32_t kind, TCode symbol, bool flag,
                                    const void* /*extra*/) const {
  const TStyle* style = &FStyles[kAmount];
  switch (kind) {
    case kFormatMarginLevel:
      return FormatDecimal(value, kMarginLevelDecimals, true, flag);
    case kFormatPrice:
      style = &FStyles[kPrice];
      if (!style->FConfigured && FSymbolDecimals && !symbol.IsEmpty()) {
        const std::int32_t decimals = FSymbolDecimals(symbol);
        if (decimals >= 0) return FormatDecimal(value, decimals, style->FKeepZeros, flag);
      }
      break;
    case kFormatQuantity:
      style = &FStyles[kQuantity];
      break;
    case kFormatRatio:
      style = &FStyles[kRatio];
      break;
    default:
      break;
  }
  return FormatDecimal(value, style->FDecimals, style->FKeepZeros, flag);
}

std::string TFormatter::FormatNumber(double value, std::int32_t decimals, bool flag) const {
  if (decimals >= 0) return FormatDecimal(value, decimals, true, flag);
  const TStyle& style = FStyles[kAverage];
  if (style.FConfigured) return FormatDecimal(value, style.FDecimals, style.FKeepZeros, flag);
  return FormatDecimal(value, kMaximumPrecision, false, flag);
}

std::string TFormatter::FormatAveragePrice(double value, bool flag) const {
  const TStyle& style = FStyles[kAverage];
  return FormatDecimal(value, style.FDecimals, style.FKeepZeros, flag);
}

}  // namespace margindesk
