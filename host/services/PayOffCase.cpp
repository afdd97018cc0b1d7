#include "host/services/PayOffCase.h"

namespace margindesk {

namespace {

constexpr std::int32_t kProductTypeOption = 3;

TPayOffLeg MakeLeg(const TPositionFacts& position, const TProductFacts& product, double years) {
  return {position.FHoldingQuantity, product.FContractSize, position.FAveragePrice,
          product.FOptionRight,      product.FStrike,       years};
}

// Whether a position counts beside an option: it moves with the same underlying and has no life of its own
// after the option's last day.
bool BelongsTo(const TProductFacts& option, const TProductFacts& other) {
  if (other.FCurrency != option.FCurrency) return false;
  if (other.FSymbol == option.FUnderlying) return true;
  if (other.FUnderlying != option.FUnderlying) return false;
  return other.FOptionRight == 0 || (IsPayOffOption(other) && other.FExpiry == option.FExpiry);
}

}  // namespace

bool IsPayOffOption(const TProductFacts& product) noexcept {
  return product.FProductType == kProductTypeOption && product.FOptionRight != 0 && product.FStrike > 0;
}

TPayOffCase MakePayOffCase(THostData& data, TCode account, std::string_view key, bool combined,
                           std::chrono::sys_days today) {
  TPayOffCase result;
  const TAccountRecord* record = data.FindAccount(account);
  if (record == nullptr || !record->FPositions) return result;
  const TPositionFacts* position = record->FPositions->Find(key);
  const TSymbolFacts* facts = position == nullptr ? nullptr : data.GetItem(position->FSymbol).GetFacts();
  if (facts == nullptr || !IsPayOffOption(facts->FProduct)) return result;
  const TProductFacts& option = facts->FProduct;
  const double years = ReckonYears(option.FExpiry, today).value_or(0);

  result.FUnderlying = option.FUnderlying;
  result.FCurrency = option.FCurrency;
  result.FExpiry = option.FExpiry;
  if (const TSymbolFacts* spot = data.GetItem(option.FUnderlying).GetFacts()) result.FSpot = spot->GetPrice();
  result.FLegs.push_back(MakeLeg(*position, option, years));
  if (combined) {
    for (const TPositionFacts& other : record->FPositions->GetFacts()) {
      const TSymbolFacts* others = data.GetItem(other.FSymbol).GetFacts();
      if (&other == position || others == nullptr || !BelongsTo(option, others->FProduct)) continue;
      result.FLegs.push_back(MakeLeg(other, others->FProduct, years));
    }
  }
  const auto implied =
      FindVolatility(option.FOptionRight, facts->GetPrice(), result.FSpot, option.FStrike, years);
  result.FImplied = implied.has_value();
  result.FVolatility = implied.value_or(TPayOffCase::kAssumedVolatility);
  return result;
}

}  // namespace margindesk
