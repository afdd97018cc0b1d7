// The simulated figures, and the totals that completed simulated orders add to.
#include <optional>

#include "marginsim/MarginSimulatorDataControl.h"
#include "marginsim/OrderRules.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/Icommon.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/PositionAdapter.h"

namespace margindesk {

namespace {

// What a product says of itself, else what the symbol's reference item says.
TCode ReadProductCode(TCode symbol, TCode (TCustomProduct::*read)() const, std::int32_t itemField) {
  const TCustomProduct* product = TCustomMarketAdapter::GetInstance().GetProduct(symbol);
  const TCode code = product == nullptr ? TCode() : (product->*read)();
  if (!code.IsEmpty()) return code;
  const TCustomSubItem* item = FindReferenceItem(symbol);
  return item == nullptr ? TCode() : item->GetFieldCode(itemField);
}

TCode GetOrderCurrency(TCode symbol) {
  return ReadProductCode(symbol, &TCustomProduct::GetCurrency, kItemCurrency);
}

double GetOrderAmount(const TMarginSimulateOrder& order) { return order.FPrice * order.FQty; }

}  // namespace

const TCustomAccountData* TMarginSimulatorDataControl::GetSimulateData(TCode currency) {
  if (FAccountInfoMode != TAccountInfoMode::aimSimulate) return nullptr;
  const TCustomAccount* account = TCustomAccountAdapter::GetInstance().GetAccount(FAccount);
  return account == nullptr ? nullptr : account->GetSimulatedAccountData(FCurrentGUID, currency);
}

TVariant TMarginSimulatorDataControl::GetAccountCurrencyData(const TCustomAccountData* data,
                                                             std::int32_t field) {
  const TCustomAccountData* simulated = data == nullptr ? nullptr : GetSimulateData(data->GetCurrency());
  return TAccountInfoDataControl::GetAccountCurrencyData(simulated != nullptr ? simulated : data, field);
}

std::string TMarginSimulatorDataControl::GetAccountCurrencyDisplayData(const TCustomAccountData* data,
                                                                       std::int32_t field, bool flag) {
  const TCustomAccountData* simulated = data == nullptr ? nullptr : GetSimulateData(data->GetCurrency());
  if (simulated == nullptr) return TAccountInfoDataControl::GetAccountCurrencyDisplayData(data, field, flag);
  // Simulated figures of one currency are never shown converted: wanted.
  return TAccountInfoDataControl::GetAccountCurrencyDisplayData(simulated, field, false);
}

bool TMarginSimulatorDataControl::IsMyCurrencyOrder(TCode symbol, TCode currency, TCode& orderCurrency) {
  orderCurrency = GetOrderCurrency(symbol);
  return IsCalculateCurrency(currency, orderCurrency);
}

bool TMarginSimulatorDataControl::IsMySideOrder(TCode symbol, TCode& orderCurrency) const {
  orderCurrency = GetOrderCurrency(symbol);
  return IsChinaConnectExchange(ReadProductCode(symbol, &TCustomProduct::GetExchange, kItemExchange)) ==
         FChinaConnect;
}

// The amounts of the completed simulated orders that count, with a side for the orders of that side alone.
template <class TAmount>
double TMarginSimulatorDataControl::SumCompletedOrders(TCode currency, std::optional<std::int32_t> side,
                                                       TAmount amount) {
  if (FAccountInfoMode != TAccountInfoMode::aimSimulate || FSimulateOrderList.empty()) return 0;
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  const bool chinaConnect = IsChinaConnectOn();
  double sum = 0;
  for (const auto& order : FSimulateOrderList) {
    if (order->FStatus != kStatusCompleted || (side && order->FSide != *side)) continue;
    TCode orderCurrency;
    const bool counts = chinaConnect ? IsMySideOrder(order->FSymbol, orderCurrency)
                                     : IsMyCurrencyOrder(order->FSymbol, currency, orderCurrency);
    if (!counts) continue;
    const double value = amount(*order);
    sum += chinaConnect || currency.IsEmpty() ? value * currencies.GetCurrencyRatio(orderCurrency) : value;
  }
  return sum;
}

double TMarginSimulatorDataControl::GetTotalCompBuy(TCode currency) {
  const double real = TAccountInfoDataControl::GetTotalCompBuy(currency);
  return real + SumCompletedOrders(currency, kSideBuy, GetOrderAmount);
}

double TMarginSimulatorDataControl::GetTotalCompSell(TCode currency) {
  const double real = TAccountInfoDataControl::GetTotalCompSell(currency);
  return real + SumCompletedOrders(currency, kSideSell, GetOrderAmount);
}

double TMarginSimulatorDataControl::GetTotalMarketValue(TCode currency) {
  const double real = TAccountInfoDataControl::GetTotalMarketValue(currency);
  // What is sold adds as much as what is bought: wanted.
  return real + SumCompletedOrders(currency, std::nullopt, [](const TMarginSimulateOrder& order) {
           double value = 0;
           TCustomPositionAdapter::GetInstance().GetPositionMarketValue(order.FSymbol, order.FQty, value);
           return value;
         });
}

// 0 rather than the real figure where there is no simulated one yet: wanted.
double TMarginSimulatorDataControl::ReadSimulatedFigure(TCode currency, TFigureRead read) const {
  const auto& accounts = TCustomAccountAdapter::GetInstance();
  const TCustomAccount* account = accounts.GetAccount(FAccount);
  if (account != nullptr && FChinaConnect && IsChinaConnectOn())
    account = accounts.GetAccount(GetChinaConnectAccount(account->GetAccountID()), true);
  const TCustomAccountData* data =
      account == nullptr ? nullptr : account->GetSimulatedAccountData(FCurrentGUID, currency);
  return data == nullptr ? 0 : (data->*read)();
}

double TMarginSimulatorDataControl::GetTotalPL(TCode currency) {
  if (FAccountInfoMode == TAccountInfoMode::aimNormal) return TAccountInfoDataControl::GetTotalPL(currency);
  return ReadSimulatedFigure(currency, &TCustomAccountData::GetOwnTotalPL);
}

double TMarginSimulatorDataControl::GetTotalUnrelizePL(TCode currency) {
  if (FAccountInfoMode == TAccountInfoMode::aimNormal)
    return TAccountInfoDataControl::GetTotalUnrelizePL(currency);
  return ReadSimulatedFigure(currency, &TCustomAccountData::GetOwnUnrealizedPL);
}

}  // namespace margindesk
