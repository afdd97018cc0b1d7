#include "host/services/PositionRecord.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "model/AccountInfoConstDef.h"
#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

struct TPositionField {
  std::int32_t FField;
  double TPositionFacts::*FNumber;
};

constexpr TPositionField kQuantityFields[] = {
    {kFieldQty, &TPositionFacts::FQuantity},
    {kFieldBODQty, &TPositionFacts::FBODQuantity},
    {kFieldVoucherQty, &TPositionFacts::FVoucherQuantity},
    {kFieldTodayBuyQty, &TPositionFacts::FTodayBuyQuantity},
    {kFieldTodaySellQty, &TPositionFacts::FTodaySellQuantity},
    {kFieldCoveredQty, &TPositionFacts::FCoveredQuantity},
};

// 0 for none.
constexpr TPositionField kPriceFields[] = {
    {kPositionAveragePrice, &TPositionFacts::FAveragePrice},
    {kPositionBuyAveragePrice, &TPositionFacts::FBuyAveragePrice},
    {kPositionSellAveragePrice, &TPositionFacts::FSellAveragePrice},
};

bool KeyBefore(const TPositionFacts& facts, std::string_view key) { return facts.FKey < key; }

void Normalise(TPositionFacts& facts) {
  if (facts.FKey.empty()) facts.FKey = facts.FSymbol.Text();
}

}  // namespace

TPositionRecord::TPositionRecord(const TPositionFacts& facts, const TSubItemRecord& item)
    : FSymbol(facts.FSymbol),
      FHoldingQuantity(facts.FHoldingQuantity),
      FExcludedQuantity(facts.FExcludedQuantity),
      FCompletedBuyAmount(facts.FCompletedBuyAmount),
      FCompletedSellAmount(facts.FCompletedSellAmount),
      FPLFirstPart(facts.FPLFirstPart),
      FPLSecondPart(facts.FPLSecondPart),
      FRealizedPL(facts.FRealizedPL),
      FItem(&item),
      FFacts(&facts),
      FPriceBased(facts.FPriceBased) {}

TVariant TPositionRecord::GetDataValue(std::int32_t field) const {
  if (field == kFieldSymbol) return TVariant::Text(FSymbol.Text());
  if (field == kFieldAccount) return TVariant::Text(FFacts->FAccount.Text());
  if (field == kFieldSide) return TVariant::Text(FFacts->FShort ? "S" : "L");
  const auto* quantity = std::ranges::find(kQuantityFields, field, &TPositionField::FField);
  if (quantity != std::end(kQuantityFields)) return TVariant::Float(FFacts->*(quantity->FNumber));
  const auto* price = std::ranges::find(kPriceFields, field, &TPositionField::FField);
  if (price == std::end(kPriceFields) || FFacts->*(price->FNumber) == 0) return {};
  return TVariant::Float(FFacts->*(price->FNumber));
}

TPositionBlock::TPositionBlock(std::vector<TPositionFacts> positions, const TItemOf& itemOf)
    : FFacts(std::move(positions)) {
  std::ranges::for_each(FFacts, Normalise);
  std::ranges::stable_sort(FFacts, {}, &TPositionFacts::FKey);
  // Of equal keys the last one stays: it overwrites the one before it.
  std::size_t count = 0;
  for (std::size_t i = 0; i < FFacts.size(); ++i) {
    if (count > 0 && FFacts[count - 1].FKey == FFacts[i].FKey) --count;
    if (count != i) FFacts[count] = std::move(FFacts[i]);
    ++count;
  }
  FFacts.resize(count);
  FRecords.reserve(count);
  FContents.FKeys.reserve(count);
  FContents.FPositions.reserve(count);
  for (const TPositionFacts& facts : FFacts) {
    FRecords.emplace_back(facts, itemOf(facts.FSymbol));
    FContents.FKeys.push_back(facts.FKey);
    FContents.FPositions.push_back(&FRecords.back());
  }
}

const TPositionFacts* TPositionBlock::Find(std::string_view key) const noexcept {
  const auto found = std::lower_bound(FFacts.begin(), FFacts.end(), key, KeyBefore);
  return found != FFacts.end() && found->FKey == key ? &*found : nullptr;
}

void TPositionBlock::Replace(const TPositionFacts& facts, const TItemOf& itemOf) {
  const auto place = std::lower_bound(FFacts.begin(), FFacts.end(), std::string_view(facts.FKey), KeyBefore) -
                     FFacts.begin();
  const auto index = static_cast<std::size_t>(place);
  FFacts[index] = facts;
  FRecords[index] = TPositionRecord(FFacts[index], itemOf(facts.FSymbol));
}

TPositionMap MakePositionMap(const std::shared_ptr<TPositionBlock>& block) {
  if (!block) return {};
  // The contents share the block's count, so the map keeps the records alive by itself.
  return TPositionMap(std::shared_ptr<const TPositionMap::TContents>(block, &block->GetContents()));
}

TPositionMap MakePositionMap(const std::shared_ptr<TPositionBlock>& block,
                             const std::vector<std::size_t>& places) {
  if (!block) return {};
  auto contents = std::make_shared<TPositionMap::TContents>();
  contents->FKeepAlive = block;
  for (const std::size_t place : places) {
    contents->FKeys.push_back(block->GetContents().FKeys[place]);
    contents->FPositions.push_back(block->GetContents().FPositions[place]);
  }
  return TPositionMap(std::move(contents));
}

}  // namespace margindesk
