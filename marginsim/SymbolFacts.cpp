#include "marginsim/SymbolFacts.h"

#include <string>

#include "marginsim/OrderRules.h"
#include "model/contract/Constdef.h"
#include "model/contract/MarketAdapter.h"

namespace margindesk {

namespace {

// "" where nobody knows the fact.
template <class TFact>
const std::string& GetFact(TCode symbol, TFact fact, std::int32_t field) {
  if (symbol.IsEmpty()) return symbol.Text();
  if (const TCustomProduct* product = TCustomMarketAdapter::GetInstance().GetProduct(symbol)) {
    const std::string& text = (product->*fact)();
    if (!text.empty()) return text;
  }
  const TCustomSubItem* item = FindReferenceItem(symbol);
  return item == nullptr ? kEmptyCodeEntry.FText : item->GetFieldText(field);
}

}  // namespace

double GetLotSize(TCode symbol) {
  return ParseLotSize(GetFact(symbol, &TCustomProduct::GetLotSize, kItemLotSize));
}

TCode GetExchange(TCode symbol) {
  return TCode(GetFact(symbol, &TCustomProduct::GetExchange, kItemExchange));
}

bool IsOTCBond(TCode symbol) {
  const TCustomSubItem* item = FindReferenceItem(symbol);
  if (item == nullptr) return false;
  const std::string& type = GetFact(symbol, &TCustomProduct::GetProductType, kItemProductType);
  return ClassifyProduct(type, item->GetFieldText(kItemOTC)) == TProductType::ptOTCBond;
}

const TCustomSpreadTable* FindSpreadTable(TCode symbol) {
  const TCode market(GetFact(symbol, &TCustomProduct::GetMarketCode, kItemMarketCode));
  return market.IsEmpty() ? nullptr : TCustomMarketAdapter::GetInstance().GetSpreadTable(market);
}

}  // namespace margindesk
