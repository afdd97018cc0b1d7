#include "host/services/SubItemRecord.h"

#include <algorithm>
#include <iterator>

#include "model/contract/Constdef.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

struct TCodeField {
  std::int32_t FField;
  TCode (*FRead)(const TSymbolFacts& facts);
};

constexpr TCodeField kCodeFields[] = {
    {kItemExchange, [](const TSymbolFacts& facts) { return facts.FProduct.FExchange; }},
    {kItemCurrency, [](const TSymbolFacts& facts) { return facts.FProduct.FCurrency; }},
    {kItemMarketCode, [](const TSymbolFacts& facts) { return facts.FProduct.FMarketCode; }},
};

// A field that is a number. One that is 0 is absent, unless 0 says something.
struct TNumberField {
  std::int32_t FField;
  bool FZeroCounts;
  double (*FRead)(const TSymbolFacts& facts);
};

template <auto Member>
double Price(const TSymbolFacts& facts) {
  return facts.FPrices.*Member;
}

template <auto Member>
double Fact(const TSymbolFacts& facts) {
  return static_cast<double>(facts.FProduct.*Member);
}

constexpr TNumberField kNumberFields[] = {
    {kItemLast, false, Price<&TPriceFacts::FLast>},
    {kItemBid, false, Price<&TPriceFacts::FBid>},
    {kItemAsk, false, Price<&TPriceFacts::FAsk>},
    {kItemPreviousClose, false, Price<&TPriceFacts::FPreviousClose>},
    {kItemReferencePrice, false, Price<&TPriceFacts::FReference>},
    {kItemContractSize, false, Fact<&TProductFacts::FContractSize>},
    {kItemProductType, true, Fact<&TProductFacts::FProductType>},
    {kItemLotSize, false, Fact<&TProductFacts::FLotSize>},
    {kItemPriceMultiplier, false, Fact<&TProductFacts::FPriceMultiplier>},
    {kItemOTC, true, Fact<&TProductFacts::FOverTheCounter>},
    {kItemBondMinimum, false, Fact<&TProductFacts::FMinimum>},
    {kItemBondIncrement, false, Fact<&TProductFacts::FIncrement>},
};

const TNumberField* FindNumberField(std::int32_t field) {
  const auto* found = std::ranges::find(kNumberFields, field, &TNumberField::FField);
  return found == std::end(kNumberFields) ? nullptr : found;
}

}  // namespace

double TSubItemRecord::GetFieldFloat(std::int32_t field) const {
  const TNumberField* number = FindNumberField(field);
  return number != nullptr && IsKnown() ? number->FRead(*FShown) : 0;
}

const std::string& TSubItemRecord::GetFieldText(std::int32_t field) const {
  static_assert(std::size(kNumberFields) == kNumberFieldCount);
  if (!HasField(field)) return TCode().Text();
  const TNumberField* number = FindNumberField(field);
  if (number == nullptr) return GetFieldCode(field).Text();
  std::string& text = FTexts[static_cast<std::size_t>(number - kNumberFields)];
  text = FloatToText(number->FRead(*FShown));
  return text;
}

bool TSubItemRecord::HasField(std::int32_t field) const {
  if (!IsKnown()) return false;
  const TNumberField* number = FindNumberField(field);
  if (number == nullptr) return !GetFieldCode(field).IsEmpty();
  return number->FZeroCounts || number->FRead(*FShown) != 0;
}

std::int32_t TSubItemRecord::GetStatus() const {
  if (!IsKnown()) return kItemUnknown;
  if (FFeedStatus) return *FFeedStatus;
  return FShown->GetPrice() != 0 ? kItemReady : kItemNotCurrent;
}

TCode TSubItemRecord::GetFieldCode(std::int32_t field) const {
  const auto* found = std::ranges::find(kCodeFields, field, &TCodeField::FField);
  return found == std::end(kCodeFields) || !IsKnown() ? TCode() : found->FRead(*FShown);
}

TVariant TSubItemRecord::GetDataValue(std::int32_t field) const {
  if (!HasField(field)) return {};
  if (FindNumberField(field) != nullptr) return TVariant::Float(GetFieldFloat(field));
  return TVariant::Text(GetFieldText(field));
}

void TSubItemRecord::SetProduct(const TProductFacts& product) {
  if (!FFacts) FFacts = std::make_unique<TSymbolFacts>();
  FFacts->FProduct = product;
  FFacts->FLotSizeText = FloatToText(product.FLotSize);
  FFacts->FTypeText = IntegerToText(product.FProductType);
  if (FLoaded) FShown = FFacts.get();
}

void TSubItemRecord::SetPrices(const TPriceFacts& prices) { FFacts->FPrices = prices; }

void TSubItemRecord::Load() noexcept {
  FLoaded = true;
  FShown = FFacts.get();
}

void TSubItemRecord::Clear() {
  FShown = nullptr;
  FFacts.reset();
  FFeedStatus.reset();
}

}  // namespace margindesk
