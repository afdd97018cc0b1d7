#include "host/services/ProductRecord.h"

#include "model/contract/Variant.h"

namespace margindesk {

namespace {

const TProductFacts kBlankFacts;
const TPriceFacts kBlankPrices;

}  // namespace

const std::string& TProductRecord::GetLotSize() const {
  return FDetails ? FDetails->FLotSizeText : TCode().Text();
}

const std::string& TProductRecord::GetProductType() const {
  return FDetails ? FDetails->FTypeText : TCode().Text();
}

TCode TProductRecord::GetMarketCode() const { return GetFacts().FMarketCode; }

double TProductRecord::GetPrice() const noexcept {
  const TPriceFacts& prices = GetPrices();
  return prices.FLast != 0 ? prices.FLast : prices.FPreviousClose;
}

const TProductFacts& TProductRecord::GetFacts() const noexcept {
  return FDetails ? FDetails->FFacts : kBlankFacts;
}

const TPriceFacts& TProductRecord::GetPrices() const noexcept {
  return FDetails ? FDetails->FPrices : kBlankPrices;
}

void TProductRecord::SetFacts(const TProductFacts& facts) {
  if (!FDetails) FDetails = std::make_unique<TDetails>();
  FDetails->FFacts = facts;
  FDetails->FLotSizeText = FloatToText(facts.FLotSize);
  FDetails->FTypeText = IntegerToText(facts.FProductType);
  FCurrency = facts.FCurrency;
  FExchange = facts.FExchange;
  FListed = facts.FListed;
  Value();
}

void TProductRecord::SetPrices(const TPriceFacts& prices) {
  FDetails->FPrices = prices;
  Value();
}

void TProductRecord::Clear() { *this = TProductRecord(); }

void TProductRecord::Value() noexcept {
  const double price = GetPrice();
  FHasPrice = price != 0;
  FUnitValue = price * FDetails->FFacts.FContractSize;
}

}  // namespace margindesk
