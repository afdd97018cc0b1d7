#include "marginsim/OrderRules.h"

#include <cmath>
#include <cstdint>

#include "model/contract/Constdef.h"
#include "model/contract/SubscribeAdapter.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

constexpr std::size_t kSymbolDigits = 5;
constexpr std::int32_t kTableOfBands = 1;
constexpr std::string_view kOverTheCounter = "1";

bool IsAbove(double a, double b) { return a - b > kZeroTolerance; }

}  // namespace

const TCustomSubItem* FindReferenceItem(TCode symbol) {
  if (symbol.IsEmpty()) return nullptr;
  return TCustomSubscribeAdapter::GetInstance().GetSubItem(symbol, kReferenceService);
}

std::optional<double> GetPriceMultiplier(TCode symbol) {
  const TCustomSubItem* item = FindReferenceItem(symbol);
  if (item == nullptr || !item->HasField(kItemPriceMultiplier)) return std::nullopt;
  return item->GetFieldFloat(kItemPriceMultiplier);
}

TProductType ClassifyProduct(std::string_view typeCode, std::string_view otcFlag) {
  if (TrimText(otcFlag) != kOverTheCounter) return TProductType::ptNormal;
  std::int32_t code = 0;
  TryTextToInteger(typeCode, code);
  if (code == kProductTypeFund) return TProductType::ptOTCFund;
  return code == kProductTypeBond ? TProductType::ptOTCBond : TProductType::ptNormal;
}

TProductType ClassifyProduct(TCode symbol) {
  const TCustomSubItem* item = FindReferenceItem(symbol);
  if (item == nullptr) return TProductType::ptNormal;
  return ClassifyProduct(item->GetFieldText(kItemProductType), item->GetFieldText(kItemOTC));
}

double ToRealPrice(double displayPrice, std::optional<double> multiplier) {
  if (!multiplier || !(std::abs(*multiplier) > kZeroTolerance)) return displayPrice;
  return displayPrice / *multiplier;
}

double ToDisplayPrice(double realPrice, std::optional<double> multiplier) {
  return multiplier ? realPrice * *multiplier : realPrice;
}

std::string PadSymbol(std::string_view typed) {
  std::string symbol = UpperCaseText(TrimText(typed));
  std::int32_t number = 0;
  if (symbol.size() < kSymbolDigits && TryTextToInteger(symbol, number))
    symbol.insert(0, kSymbolDigits - symbol.size(), '0');
  return symbol;
}

double ParseLotSize(std::string_view text) {
  double lot = 1;
  TryTextToFloat(text, lot);
  return lot;
}

std::optional<double> SnapToLot(double quantity, double lot) {
  if (std::abs(lot) < kZeroTolerance) lot = 1;
  const double lots = quantity / lot;
  if (!(std::abs(lots - std::round(lots)) > kZeroTolerance)) return std::nullopt;
  return lot * std::trunc(lots);
}

bool IsBondAmount(double quantity, double minimum, double increment) {
  if (!(minimum > 0 && increment > 0)) return true;
  const double above = quantity - minimum;
  const double steps = above / increment;
  // Measured from the whole number toward zero alone: wanted.
  return !(above < -kZeroTolerance || std::abs(steps - std::trunc(steps)) > kZeroTolerance);
}

TPriceStep StepPrice(double price, std::optional<double> lastPrice, const std::optional<TBandLimits>& limits,
                     bool snap, const TCustomSpreadTable* table) {
  TPriceStep step{price, false, std::nullopt};
  const bool above = limits && IsAbove(price, limits->FUpper);
  const bool below = limits && IsAbove(limits->FLower, price);
  if (!above && !below && !snap) return step;
  if (table == nullptr || table->GetKind() != kTableOfBands) return step;

  step.FSnapped = snap;
  if (above || below) {
    if (snap) step.FPrice = above ? table->StepUp(limits->FUpper) : table->StepDown(limits->FLower);
    TSpreadBand band;
    const bool found =
        above ? table->LookUpUpward(step.FPrice, band) : table->LookUpDownward(step.FPrice, band);
    if (found) step.FBand = band;
  } else if (lastPrice && IsAbove(price, *lastPrice)) {
    step.FPrice = table->StepUp(*lastPrice);
  } else if (lastPrice && IsAbove(*lastPrice, price)) {
    step.FPrice = table->StepDown(*lastPrice);
  }
  return step;
}

}  // namespace margindesk
