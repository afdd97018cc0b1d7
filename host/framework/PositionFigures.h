#pragma once

#include "model/contract/BasePositionData.h"
#include "model/contract/Code.h"
#include "model/contract/Constdef.h"

namespace margindesk {

// What the account tree and the position grid reckon alike from a position, so that the rows of the one and
// the totals of the other agree.

// The currency of the position's product, else what its reference item says; empty when neither knows.
TCode GetPositionCurrency(const TCustomPositionData& position);

// The market value of what counts, in the product's currency. False leaves `value` alone: no price.
bool ReckonMarketValue(const TCustomPositionData& position, double& value);

// An amount of `from` (empty: of the base currency) in `to` (empty: in the base currency). A ratio of `to`
// that is 0 leaves the amount in the base currency.
double ConvertAmount(double amount, TCode from, TCode to);

// Whether a view of that currency shows the side of the exchange link: CNY, while China Connect is on.
bool IsChinaConnectSide(TCode currency);

// The position's own average price, in full. False leaves `price` alone: it has none.
bool ReadAveragePrice(const TCustomPositionData& position, double& price);

double MiddleOfThree(double a, double b, double c);  // neither the largest nor the smallest

// Profit and loss at a price, in the product's currency; 0 without a price or a reference item.
double ReckonPL(const TCustomPositionData& position, double price, double average);

// The price of a profit and loss as the control sees its market: the middle one of bid, last and ask while
// the exchange trades, else the last price, else the previous close; 0 for none.
template <class TControl>
double ReckonPLPrice(TControl& control, const TCustomPositionData& position) {
  const TCustomSubItem* item = position.GetReferenceItem();
  if (item == nullptr) return 0;
  const double last = item->GetFieldFloat(kItemLast);
  const double bid = item->GetFieldFloat(kItemBid);
  const double ask = item->GetFieldFloat(kItemAsk);
  // While the market trades, a stray last trade outside the spread is worth no more than the spread's nearer
  // side.
  if (last > 0 && bid > 0 && ask > 0 && control.IsMarketOpen(item->GetFieldCode(kItemExchange))) {
    return control.GetMiddleOne(bid, last, ask);
  }
  return last > 0 ? last : item->GetFieldFloat(kItemPreviousClose);
}

}  // namespace margindesk
