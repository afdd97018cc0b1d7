// Prices, values and margins of single positions, and the totals of the rows that are shown.
#include <algorithm>
#include <cmath>

#include "host/framework/AveragePrice.h"
#include "host/framework/PositionFigures.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/Positionviewdatacontrol.h"

namespace margindesk {

bool TPositionViewDataControl::GetAvgPrice(const TCustomPositionData& position, double& price) {
  double average = 0;
  if (!ReadAveragePrice(position, average)) return false;
  price = FAveragePrices->Round(average, position.GetHoldingQuantity() >= 0);
  return true;
}

double TPositionViewDataControl::GetPLPrice(const TCustomPositionData& position) {
  return ReckonPLPrice(*this, position);
}

// From the average in full, so that the rows add up to the account's total whatever the user's rounding is.
double TPositionViewDataControl::GetPL(const TCustomPositionData& position) {
  double average = 0;
  return ReadAveragePrice(position, average) ? ReckonPL(position, GetPLPrice(position), average) : 0;
}

bool TPositionViewDataControl::IsMarketOpen(TCode exchange) {
  return TCustomMarketAdapter::GetInstance().IsExchangeOpen(exchange);
}

double TPositionViewDataControl::GetMiddleOne(double a, double b, double c) { return MiddleOfThree(a, b, c); }

double TPositionViewDataControl::GetLastQty(const TCustomPositionData& position) {
  return position.GetHoldingQuantity();
}

double TPositionViewDataControl::GetConstractSize(const TCustomPositionData& position) {
  const TCustomSubItem* item = position.GetReferenceItem();
  return item != nullptr && item->HasField(kItemContractSize) ? item->GetFieldFloat(kItemContractSize) : 1;
}

// Only what is held can be lent against.
bool TPositionViewDataControl::GetAcceptValue(const TCustomPositionData& position, TCode currency,
                                              double& value) {
  const TCustomSubItem* item = position.GetReferenceItem();
  double marketValue = 0;
  if (item == nullptr || !item->HasField(kItemAcceptRatio) || !ReckonMarketValue(position, marketValue)) {
    return false;
  }
  value = ConvertAmount(std::max(marketValue, 0.0) * item->GetFieldFloat(kItemAcceptRatio),
                        GetPositionCurrency(position), currency);
  return true;
}

bool TPositionViewDataControl::GetProductMargin(const TCustomPositionData& position, double& value) {
  const TCustomSubItem* item = position.GetReferenceItem();
  double marketValue = 0;
  if (item == nullptr || !item->HasField(kItemMarginRatio) || !ReckonMarketValue(position, marketValue)) {
    return false;
  }
  value = std::abs(marketValue) * item->GetFieldFloat(kItemMarginRatio);
  return true;
}

// Sums an amount in the conversion currency. As in the account's totals, excluded currencies and positions of
// unknown currency are left out.
template <class TAmount>
double TPositionViewDataControl::SumRows(TAmount amount) {
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  double sum = 0;
  for (const TCustomPositionData* position : FRowPositions) {
    const TCode currency = GetPositionCurrency(*position);
    if (!currency.IsEmpty() && !currencies.IsCurrencyExcluded(currency)) sum += amount(*position, currency);
  }
  return sum;
}

double TPositionViewDataControl::GetTotalMarketValue() {
  return SumRows([this](const TCustomPositionData& position, TCode currency) {
    double value = 0;
    return ReckonMarketValue(position, value) ? ConvertAmount(value, currency, FConvertCurrency) : 0;
  });
}

double TPositionViewDataControl::GetTotalAcceptValue() {
  return SumRows([this](const TCustomPositionData& position, TCode /*currency*/) {
    double value = 0;
    return GetAcceptValue(position, FConvertCurrency, value) ? value : 0;
  });
}

}  // namespace margindesk
