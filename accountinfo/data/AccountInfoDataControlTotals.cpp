// Totals over positions, and totals of one field over an account's currencies.
#include <cmath>

#include "accountinfo/data/AccountFieldSets.h"
#include "accountinfo/data/AccountInfoDataControl.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/Formatter.h"
#include "model/contract/Icommon.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/PositionAdapter.h"

namespace margindesk {

// Apart from IsMyCurrency, which runs for every position of every total and hardly ever comes here.
[[gnu::noinline]] TCode TAccountInfoDataControl::GetReferenceCurrency(const TCustomPositionData& position) {
  const TCustomSubItem* item = position.GetReferenceItem();
  return item != nullptr && item->GetStatus() == kItemReady ? item->GetFieldCode(kItemCurrency) : TCode();
}

// Sums `amount` over the positions of the list that count. This is the hot path of every repaint: nothing
// here may allocate, copy a text or look one up.
template <class TAmount>
double TAccountInfoDataControl::SumPositionList(TCode currency, TAmount amount) {
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  double sum = 0;
  if (IsChinaConnectOn()) {
    // The currency does not select here, the side of the exchange link does; the sum is always converted.
    for (const TCustomPositionData* position : FPositionList.GetPositions()) {
      const TCustomSubItem* item = position->GetReferenceItem();
      if (item == nullptr || IsChinaConnectExchange(item->GetFieldCode(kItemExchange)) != FChinaConnect)
        continue;
      sum += amount(*position) * currencies.GetCurrencyRatio(item->GetFieldCode(kItemCurrency));
    }
    return sum;
  }
  const bool convert = currency.IsEmpty();
  TCode positionCurrency;
  for (const TCustomPositionData* position : FPositionList.GetPositions()) {
    if (!IsMyCurrency(*position, currency, positionCurrency)) continue;
    const double value = amount(*position);
    sum += convert ? value * currencies.GetCurrencyRatio(positionCurrency) : value;
  }
  return sum;
}

template <class TAmount>
double TAccountInfoDataControl::SumPositions(TCode currency, TAmount amount) {
  const auto& positions = TCustomPositionAdapter::GetInstance();
  FPositionList.Clear();
  if (!FAccount.IsEmpty()) positions.GetPositionList(FAccount, FPositionList);
  double sum = SumPositionList(currency, amount);
  if (!FAggregate) return sum;
  for (const auto& [identifier, subAccount] : FSubAccounts) {
    if (subAccount == nullptr) continue;
    FPositionList.Clear();
    positions.GetPositionList(subAccount->GetAccountID(), FPositionList);
    sum += SumPositionList(currency, amount);
  }
  return sum;
}

double TAccountInfoDataControl::GetTotalCompBuy(TCode currency) {
  return SumPositions(currency, [](const TCustomPositionData& p) { return p.GetCompletedBuyAmount(); });
}

double TAccountInfoDataControl::GetTotalCompSell(TCode currency) {
  return SumPositions(currency, [](const TCustomPositionData& p) { return p.GetCompletedSellAmount(); });
}

double TAccountInfoDataControl::GetTotalMarketValue(TCode currency) {
  const auto& positions = TCustomPositionAdapter::GetInstance();
  return SumPositions(currency, [&positions](const TCustomPositionData& p) {
    double value = 0;
    positions.GetPositionMarketValue(p.GetSymbol(), p.GetHoldingQuantity() - p.GetExcludedQuantity(), value);
    return value;
  });
}

double TAccountInfoDataControl::GetTotalPL(TCode currency) {
  return SumPositions(currency, [this](const TCustomPositionData& p) {
    return p.IsPriceBasedPL() ? GetPL(p) : p.GetPLFirstPart() + p.GetPLSecondPart();
  });
}

double TAccountInfoDataControl::GetTotalRelizePL(TCode currency) {
  return SumPositions(currency, [](const TCustomPositionData& p) { return p.GetRealizedPL(); });
}

double TAccountInfoDataControl::GetTotalUnrelizePL(TCode currency) {
  // Never from prices, not even where the profit and loss is: wanted.
  return SumPositions(currency, [](const TCustomPositionData& p) {
    return p.GetPLFirstPart() + p.GetPLSecondPart() - p.GetRealizedPL();
  });
}

// Fields whose account total is their value in the total row.
bool TAccountInfoDataControl::IsAccountTotalField(std::int32_t field) const {
  if (field == kFieldMarginLevel) return false;
  return Contains(kAccountLevelFields, field) || field == kFieldCurrency || IsPeriodField(field) ||
         IsTextCustomField(field);
}

TVariant TAccountInfoDataControl::GetTotalOverCurrencies(const TCustomAccount& account, std::int32_t field) {
  const TCustomAccountData* total = account.GetCurrencyData(TCode());
  if (total == nullptr) return {};
  const auto valueOf = [this, field](const TCustomAccountData* data) {
    return FAggregate ? GetAggregatedAccountCurrencyData(data, field) : GetAccountCurrencyData(data, field);
  };
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  TVariant sum = valueOf(total);
  if (IsAccountTotalField(field)) return sum;
  if (field == kFieldFxRatio) {
    sum = currencies.IsMultiCurrency() ? TVariant::Integer(0)
                                       : TVariant::Float(currencies.GetCurrencyRatio(total->GetCurrency()));
  }
  const std::int32_t count = account.GetAccountCurrencyCount();
  for (std::int32_t i = 0; i < count; ++i) {
    const TCode currency = account.GetAccountCurrency(i);
    const TCustomAccountData* data = currency.IsEmpty() ? nullptr : account.GetCurrencyData(currency);
    if (data == nullptr || !data->IsSeparateCurrencyRow()) continue;
    const double converted = valueOf(data).AsFloatOr(0) * currencies.GetCurrencyRatio(data->GetCurrency());
    sum = TVariant::Float(sum.AsFloatOr(0) + converted);
  }
  return sum;
}

TVariant TAccountInfoDataControl::GetTotalMarginLevel(const TCustomAccount& account) {
  const auto total = [this, &account](std::int32_t field) {
    return GetTotalOverCurrencies(account, field).AsFloatOr(0);
  };
  double numerator = 0;
  if (FIsNetEquityMargin) {
    numerator = total(kFieldEquity);
  } else if (FMarginLevelMode != 1) {
    numerator = total(kFieldPL) + total(kFieldBODCashBalance);
  } else {
    numerator = total(kFieldCashBalance);
  }
  const double denominator = total(kFieldInitialMargin);
  if (!(std::abs(denominator) > kZeroTolerance)) return TVariant::Null();
  return TVariant::Float(numerator / denominator * 100);
}

const TCustomAccountData* TAccountInfoDataControl::GetLinkedTotalRow(const TCustomAccount& account) const {
  const TCustomAccount* linked =
      TCustomAccountAdapter::GetInstance().GetAccount(GetChinaConnectAccount(account.GetAccountID()));
  return linked == nullptr ? nullptr : linked->GetCurrencyData(TCode());
}

TVariant TAccountInfoDataControl::GetAccountTotalDataValue(const TCustomAccount* account,
                                                           std::int32_t field) {
  const bool text = field == kFieldMarginLevel || (IsAccountTotalField(field) && !IsTextCustomField(field));
  TVariant initial = text ? TVariant::EmptyText() : TVariant::Integer(0);
  if (account == nullptr) return initial;
  const bool chinaConnect = IsChinaConnectOn();
  if (!chinaConnect && !FFilterCurrency.IsEmpty()) {
    // Not the aggregated figure, not even while aggregated: wanted.
    const TCustomAccountData* data = account->GetCurrencyData(FFilterCurrency);
    return data == nullptr ? initial : GetAccountCurrencyData(data, field);
  }
  if (chinaConnect && FChinaConnect) {
    const TCustomAccountData* total = account->GetCurrencyData(TCode());
    if (total == nullptr || GetLinkedTotalRow(*account) == nullptr) return initial;
    return GetAccountCurrencyData(total, field);
  }
  return field == kFieldMarginLevel ? GetTotalMarginLevel(*account) : GetTotalOverCurrencies(*account, field);
}

std::string TAccountInfoDataControl::GetAccountTotalDataDisplayValue(const TCustomAccount* account,
                                                                     std::int32_t field) {
  if (account == nullptr) return {};
  const bool chinaConnect = IsChinaConnectOn();
  if (!chinaConnect && !FFilterCurrency.IsEmpty()) {
    const TCustomAccountData* data = account->GetCurrencyData(FFilterCurrency);
    return data == nullptr ? std::string() : GetAccountCurrencyDisplayData(data, field, true);
  }
  const TCustomAccountData* total = account->GetCurrencyData(TCode());
  if (total == nullptr) return {};
  if (chinaConnect && FChinaConnect) {
    if (GetLinkedTotalRow(*account) == nullptr) return {};
    return GetAccountCurrencyDisplayData(total, field, true);
  }
  if (IsAccountTotalField(field)) return GetAccountTotalDataValue(account, field).AsText();
  const auto& formatter = TCustomFormatter::GetInstance();
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  if (field == kFieldMarginLevel) {
    // The text is the total row's level, the value that of the totals; the two may differ: wanted.
    double level = 0;
    if (!GetMarginLevel(total, level)) return GetMissingMarginLevelText();
    return formatter.FormatValue(level, kFormatMarginLevel, TCode(), true) + "%";
  }
  if (field == kFieldFxRatio && currencies.IsMultiCurrency()) return {};
  double figure = field == kFieldFxRatio ? currencies.GetCurrencyRatio(total->GetCurrency())
                                         : GetAccountTotalDataValue(account, field).AsFloatOr(0);
  const double ratio = FConvertCurrency.IsEmpty() ? 0 : currencies.GetCurrencyRatio(FConvertCurrency);
  if (ratio != 0) figure /= ratio;
  if (field == kFieldFxRatio) return formatter.FormatValue(figure, kFormatRatio, TCode(), true);
  const bool dayTradeLimit = field == kFieldDTL || field == kFieldBODDTL;
  if (dayTradeLimit && std::abs(figure) < kZeroTolerance) return GetNotAvailableText();
  return formatter.FormatValue(figure, kFormatAmount, TCode(), true);
}

}  // namespace margindesk
