#include "host/engine/OrderCheck.h"

#include <algorithm>
#include <cmath>

#include "model/ResourceText.h"
#include "model/contract/Constdef.h"
#include "model/contract/Formatter.h"

namespace margindesk {

namespace {

constexpr std::int32_t kSuspended = 1024;
constexpr std::int32_t kSellOnly = 2048;
constexpr double kLargestAmount = 1e12;  // sums of larger ones are no longer right to the cent

// An order with what is known of its account and symbol, which the rules after the first ones find there.
struct TChecked {
  const THostData& FData;
  const TOrderFacts& FOrder;
  std::int32_t FAction;
  const TAccountRecord* FAccount;
  const TSymbolFacts* FFacts;

  const TProductFacts& Product() const { return FFacts->FProduct; }
  bool IsOTC(std::int32_t productType) const {
    return Product().FOverTheCounter && Product().FProductType == productType;
  }
  bool IsFund() const { return IsOTC(kProductTypeFund); }
  bool IsBuy() const { return FOrder.FSide == kSideBuy; }
};

bool IsPositive(double number) { return number > kZeroTolerance && std::isfinite(number); }

// Whether an amount is so many whole steps, within the tolerance.
bool IsWhole(double steps) { return std::abs(steps - std::round(steps)) <= kZeroTolerance; }

bool HasFlag(const TChecked& checked, std::int32_t flag) {
  return (checked.FAccount->GetStatusFlags() & flag) != 0;
}

bool IsUnknownAccount(const TChecked& checked) { return checked.FAccount == nullptr; }
bool IsUnknownSymbol(const TChecked& checked) { return checked.FFacts == nullptr; }
bool IsNotDealtIn(const TChecked& checked) { return checked.Product().FProductType == kProductTypeIndex; }
bool HasNoSide(const TChecked& checked) {
  return checked.FOrder.FSide != kSideBuy && checked.FOrder.FSide != kSideSell;
}
bool IsForOtherProducts(const TChecked& checked) {
  if (checked.FAction == kActionOTCFund) return !checked.IsFund();
  if (checked.FAction == kActionOTCBond) return !checked.IsOTC(kProductTypeBond);
  return checked.FAction != kActionOrder;
}
bool IsSuspended(const TChecked& checked) { return HasFlag(checked, kSuspended); }
bool MayOnlySell(const TChecked& checked) { return checked.IsBuy() && HasFlag(checked, kSellOnly); }
bool HasNoQuantity(const TChecked& checked) { return !IsPositive(checked.FOrder.FQuantity); }

// A fund purchase names its amount in the price.
bool HasNoAmount(const TChecked& checked) {
  return checked.IsFund() && checked.IsBuy() && !IsPositive(checked.FOrder.FPrice);
}
bool HasNoUnitOfAmount(const TChecked& checked) {
  return checked.IsFund() && checked.IsBuy() && checked.FOrder.FQuantity != 1;
}
bool IsBelowFundMinimum(const TChecked& checked) {
  return checked.IsFund() && checked.IsBuy() &&
         checked.FOrder.FPrice < checked.Product().FMinimum - kZeroTolerance;
}

// A fund is dealt in at its own price, whatever the order says.
bool HasNoPrice(const TChecked& checked) {
  return !checked.IsFund() && !checked.FOrder.FMarket && !IsPositive(checked.FOrder.FPrice);
}
bool HasWrongPrice(const TChecked& checked) {
  return !std::isfinite(checked.FOrder.FPrice) || checked.FOrder.FPrice < 0;
}
bool HasNoMarketPrice(const TChecked& checked) {
  return !(DealOf(*checked.FFacts, checked.FOrder).FPrice > 0);
}
bool BuysNothing(const TChecked& checked) {
  return !IsPositive(DealOf(*checked.FFacts, checked.FOrder).FQuantity);
}
bool IsTooLarge(const TChecked& checked) {
  const TDeal deal = DealOf(*checked.FFacts, checked.FOrder);
  const double amount = deal.FQuantity * deal.FPrice * checked.Product().FContractSize;
  return !(std::max({amount, deal.FQuantity, deal.FPrice}) <= kLargestAmount);
}

bool IsOffLot(const TChecked& checked) {
  if (checked.IsFund() && checked.IsBuy()) return false;
  const double lot = checked.Product().FLotSize;
  return lot > 0 && !IsWhole(checked.FOrder.FQuantity / lot);
}
bool BreaksBondAmounts(const TChecked& checked) {
  const TProductFacts& product = checked.Product();
  if (!checked.IsOTC(kProductTypeBond) || !(product.FMinimum > 0 && product.FIncrement > 0)) return false;
  const double above = checked.FOrder.FQuantity - product.FMinimum;
  return above < -kZeroTolerance || !IsWhole(above / product.FIncrement);
}
bool IsOffTick(const TChecked& checked) {
  if (checked.IsFund() || checked.FOrder.FMarket) return false;
  const TSpreadTableRecord* table = checked.FData.FindSpreadTable(checked.Product().FMarketCode);
  return table != nullptr && !table->IsOnTick(checked.FOrder.FPrice);
}
bool SellsMoreThanHeld(const TChecked& checked) {
  if (checked.IsBuy() || !IsCashProduct(checked.Product())) return false;
  const TLedger ledger(checked.FData, checked.FOrder.FAccount);
  return checked.FOrder.FQuantity > ledger.ReckonSellable(checked.FOrder.FSymbol) + kZeroTolerance;
}

TOrderNeed NeedOf(const TChecked& checked) {
  return TLedger(checked.FData, checked.FOrder.FAccount).ReckonNeed(checked.FOrder);
}
bool IsShortOfLimit(const TChecked& checked) {
  const TOrderNeed need = NeedOf(checked);
  return need.FRequired > 0 && need.FRequired > need.FAvailable + kZeroTolerance;
}

std::string Number(double number) { return TCustomFormatter::GetInstance().FormatNumber(number, -1, true); }
std::string Amount(double amount) {
  return TCustomFormatter::GetInstance().FormatValue(amount, kFormatAmount, TCode(), true);
}

// What fills the places of a rule's text; the codes that name nothing have none.
std::string TellNothing(std::string_view code, const TChecked& /*checked*/) { return GetErrorText(code); }
std::string TellAccount(std::string_view code, const TChecked& checked) {
  return GetErrorText(code, {checked.FOrder.FAccount.Text()});
}
std::string TellSymbol(std::string_view code, const TChecked& checked) {
  return GetErrorText(code, {checked.FOrder.FSymbol.Text()});
}
std::string TellLot(std::string_view code, const TChecked& checked) {
  return GetErrorText(code, {checked.FOrder.FSymbol.Text(), Number(checked.Product().FLotSize)});
}
std::string TellAmounts(std::string_view code, const TChecked& checked) {
  const TProductFacts& product = checked.Product();
  return GetErrorText(code, {Number(product.FMinimum), Number(product.FIncrement)});
}
std::string TellPrice(std::string_view code, const TChecked& checked) {
  return GetErrorText(code, {checked.FOrder.FSymbol.Text(), Number(checked.FOrder.FPrice)});
}
std::string TellHolding(std::string_view code, const TChecked& checked) {
  const TLedger ledger(checked.FData, checked.FOrder.FAccount);
  return GetErrorText(code,
                      {checked.FOrder.FSymbol.Text(), Number(ledger.ReckonSellable(checked.FOrder.FSymbol))});
}
std::string TellLimit(std::string_view code, const TChecked& checked) {
  const TOrderNeed need = NeedOf(checked);
  const TCode currency =
      need.FLimitCurrency.IsEmpty() ? checked.FData.GetBaseCurrency() : need.FLimitCurrency;
  return GetErrorText(code, {currency.Text(), Amount(need.FRequired), Amount(need.FAvailable)});
}

enum class TFor { kPlacing, kSimulating, kBoth };

struct TOrderRule {
  TFor FFor;
  bool (*FIsBroken)(const TChecked& checked);
  std::string_view FCode;
  std::string (*FTell)(std::string_view code, const TChecked& checked);
};

constexpr TOrderRule kOrderRules[] = {
    {TFor::kBoth, &IsUnknownAccount, "DCORDER001", &TellAccount},
    {TFor::kBoth, &IsUnknownSymbol, "DCORDER002", &TellSymbol},
    {TFor::kBoth, &IsNotDealtIn, "DCORDER003", &TellSymbol},
    {TFor::kBoth, &HasNoSide, "DCORDER004", &TellSymbol},
    {TFor::kPlacing, &IsForOtherProducts, "DCORDER005", &TellSymbol},
    {TFor::kPlacing, &IsSuspended, "DCORDER006", &TellAccount},
    {TFor::kPlacing, &MayOnlySell, "DCORDER007", &TellAccount},
    {TFor::kBoth, &HasNoQuantity, "DCORDER008", &TellSymbol},
    {TFor::kBoth, &HasWrongPrice, "DCORDER009", &TellSymbol},
    {TFor::kBoth, &HasNoAmount, "DCFUND003", &TellNothing},
    {TFor::kPlacing, &HasNoUnitOfAmount, "DCFUND004", &TellSymbol},
    {TFor::kPlacing, &IsBelowFundMinimum, "DCFUND005", &TellAmounts},
    {TFor::kPlacing, &HasNoPrice, "DCORDER009", &TellSymbol},
    {TFor::kBoth, &HasNoMarketPrice, "DCORDER010", &TellSymbol},
    {TFor::kBoth, &BuysNothing, "DCORDER008", &TellSymbol},
    {TFor::kBoth, &IsTooLarge, "DCORDER015", &TellSymbol},
    {TFor::kPlacing, &BreaksBondAmounts, "DCBOND003", &TellAmounts},
    {TFor::kPlacing, &IsOffLot, "DCORDER011", &TellLot},
    {TFor::kPlacing, &IsOffTick, "DCORDER012", &TellPrice},
    {TFor::kPlacing, &SellsMoreThanHeld, "DCORDER013", &TellHolding},
    {TFor::kPlacing, &IsShortOfLimit, "DCORDER014", &TellLimit},
};

}  // namespace

std::string FindOrderFault(const TOrderQuestion& question) {
  const TOrderFacts& order = question.FOrder;
  const TChecked checked{question.FData, order, question.FAction, question.FData.FindAccount(order.FAccount),
                         FindSymbolFacts(question.FData, order.FSymbol)};
  const TFor purpose = question.FAction == kActionSimulate ? TFor::kSimulating : TFor::kPlacing;
  for (const TOrderRule& rule : kOrderRules) {
    if (rule.FFor != TFor::kBoth && rule.FFor != purpose) continue;
    if (rule.FIsBroken(checked)) return rule.FTell(rule.FCode, checked);
  }
  return {};
}

std::string GetErrorText(std::string_view code, std::initializer_list<std::string_view> values) {
  return FillText(TCustomLanguageManager::GetInstance().GetLanguageText(Const_ErrorCodeTag, code), values);
}

}  // namespace margindesk
