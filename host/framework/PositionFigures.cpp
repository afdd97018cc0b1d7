#include "host/framework/PositionFigures.h"

#include <algorithm>

#include "model/contract/CurrencyAdapter.h"
#include "model/contract/Icommon.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/PositionAdapter.h"

namespace margindesk {

TCode GetPositionCurrency(const TCustomPositionData& position) {
  const TCustomProduct* product = TCustomMarketAdapter::GetInstance().GetProduct(position.GetSymbol());
  if (product != nullptr && !product->GetCurrency().IsEmpty()) return product->GetCurrency();
  const TCustomSubItem* item = position.GetReferenceItem();
  return item == nullptr ? TCode() : item->GetFieldCode(kItemCurrency);
}

bool ReckonMarketValue(const TCustomPositionData& position, double& value) {
  return TCustomPositionAdapter::GetInstance().GetPositionMarketValue(
      position.GetSymbol(), position.GetHoldingQuantity() - position.GetExcludedQuantity(), value);
}

double ConvertAmount(double amount, TCode from, TCode to) {
  if (from == to) return amount;
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  if (!from.IsEmpty()) amount *= currencies.GetCurrencyRatio(from);
  if (to.IsEmpty()) return amount;
  const double ratio = currencies.GetCurrencyRatio(to);
  return ratio == 0 ? amount : amount / ratio;
}

bool IsChinaConnectSide(TCode currency) {
  static const TCode mainlandCurrency("CNY");
  return currency == mainlandCurrency && IsChinaConnectOn();
}

bool ReadAveragePrice(const TCustomPositionData& position, double& price) {
  const TVariant average = position.GetDataValue(kPositionAveragePrice);
  if (!average.IsNumber()) return false;
  price = average.AsFloat();
  return true;
}

double MiddleOfThree(double a, double b, double c) {
  return std::max(std::min(a, b), std::min(std::max(a, b), c));
}

double ReckonPL(const TCustomPositionData& position, double price, double average) {
  const TCustomSubItem* item = position.GetReferenceItem();
  if (item == nullptr || price <= 0) return 0;
  return (price - average) * position.GetHoldingQuantity() * item->GetFieldFloat(kItemContractSize);
}

}  // namespace margindesk
