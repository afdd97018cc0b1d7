// Profit and loss from prices, for the positions that store none, and the China Connect side of an account.
#include <algorithm>

#include "model/contract/AccountDataControl.h"
#include "model/contract/Constdef.h"
#include "model/contract/Icommon.h"
#include "model/contract/MarketAdapter.h"

namespace margindesk {

void TCustomAccountInfoDataControl::UpdateChinaConnectFlag() {
  static const TCode mainlandCurrency("CNY");
  FChinaConnect = IsChinaConnectOn() && FFilterCurrency == mainlandCurrency;
}

bool TCustomAccountInfoDataControl::GetAvgPrice(const TCustomPositionData& position, double& price) {
  const TVariant average = position.GetDataValue(kPositionAveragePrice);
  if (!average.IsNumber()) return false;
  price = average.AsFloat();
  return true;
}

double TCustomAccountInfoDataControl::GetPLPrice(const TCustomPositionData& position) {
  const TCustomSubItem* item = position.GetReferenceItem();
  if (item == nullptr) return 0;
  const double last = item->GetFieldFloat(kItemLast);
  const double bid = item->GetFieldFloat(kItemBid);
  const double ask = item->GetFieldFloat(kItemAsk);
  // While the market trades, a stray last trade outside the spread is worth no more than the spread's nearer
  // side.
  if (last > 0 && bid > 0 && ask > 0 && IsMarketOpen(item->GetFieldCode(kItemExchange))) {
    return GetMiddleOne(bid, last, ask);
  }
  return last > 0 ? last : item->GetFieldFloat(kItemPreviousClose);
}

double TCustomAccountInfoDataControl::GetPL(const TCustomPositionData& position) {
  double average = 0;
  const TCustomSubItem* item = position.GetReferenceItem();
  const double price = GetPLPrice(position);
  if (item == nullptr || price <= 0 || !GetAvgPrice(position, average)) return 0;
  return (price - average) * position.GetHoldingQuantity() * item->GetFieldFloat(kItemContractSize);
}

bool TCustomAccountInfoDataControl::IsMarketOpen(TCode exchange) {
  return TCustomMarketAdapter::GetInstance().IsExchangeOpen(exchange);
}

double TCustomAccountInfoDataControl::GetMiddleOne(double a, double b, double c) {
  return std::max(std::min(a, b), std::min(std::max(a, b), c));
}

}  // namespace margindesk
