#include "host/services/ProductRecord.h"

namespace margindesk {

void TProductRecord::Follow(const TSymbolFacts* facts) noexcept {
  *this = TProductRecord();
  if (facts == nullptr) return;
  FFacts = facts;
  FCurrency = facts->FProduct.FCurrency;
  const double price = facts->GetPrice();
  if (price != 0) FUnitValue = price * facts->FProduct.FContractSize;
}

}  // namespace margindesk
