#include "host/services/SubItemRecord.h"

#include <algorithm>
#include <iterator>

#include "model/contract/Constdef.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

struct TCodeField {
  std::int32_t FField;
  TCode (*FRead)(const TProductRecord& product);
};

constexpr TCodeField kCodeFields[] = {
    {kItemExchange, [](const TProductRecord& product) { return product.GetExchange(); }},
    {kItemCurrency, [](const TProductRecord& product) { return product.GetCurrency(); }},
    {kItemMarketCode, [](const TProductRecord& product) { return product.GetMarketCode(); }},
};

// A field that is a number. One that is 0 is absent, unless 0 says something.
struct TNumberField {
  std::int32_t FField;
  bool FZeroCounts;
  double (*FRead)(const TProductRecord& product);
};

template <auto Member>
double Price(const TProductRecord& product) {
  return product.GetPrices().*Member;
}

template <auto Member>
double Fact(const TProductRecord& product) {
  return static_cast<double>(product.GetFacts().*Member);
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
  return number != nullptr && IsKnown() ? number->FRead(FProduct) : 0;
}

const std::string& TSubItemRecord::GetFieldText(std::int32_t field) const {
  static_assert(std::size(kNumberFields) == kNumberFieldCount);
  if (!HasField(field)) return TCode().Text();
  const TNumberField* number = FindNumberField(field);
  if (number == nullptr) return GetFieldCode(field).Text();
  std::string& text = FTexts[static_cast<std::size_t>(number - kNumberFields)];
  text = FloatToText(number->FRead(FProduct));
  return text;
}

bool TSubItemRecord::HasField(std::int32_t field) const {
  if (!IsKnown()) return false;
  const TNumberField* number = FindNumberField(field);
  if (number == nullptr) return !GetFieldCode(field).IsEmpty();
  return number->FZeroCounts || number->FRead(FProduct) != 0;
}

std::int32_t TSubItemRecord::GetStatus() const {
  if (!IsKnown()) return kItemUnknown;
  if (FFeedStatus) return *FFeedStatus;
  return FProduct.GetPrice() != 0 ? kItemReady : kItemNotCurrent;
}

TCode TSubItemRecord::GetFieldCode(std::int32_t field) const {
  const auto* found = std::ranges::find(kCodeFields, field, &TCodeField::FField);
  return found == std::end(kCodeFields) ? TCode() : found->FRead(FProduct);
}

TVariant TSubItemRecord::GetDataValue(std::int32_t field) const {
  if (!HasField(field)) return {};
  if (FindNumberField(field) != nullptr) return TVariant::Float(GetFieldFloat(field));
  return TVariant::Text(GetFieldText(field));
}

}  // namespace margindesk
