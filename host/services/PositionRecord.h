#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "host/services/HostContents.h"
#include "host/services/SubItemRecord.h"
#include "model/contract/BasePositionData.h"

namespace margindesk {

// One position. What a position total reads comes first and holds no indirection; the facts behind it are
// kept by the same block.
class TPositionRecord final : public TCustomPositionData {
 public:
  TPositionRecord(const TPositionFacts& facts, const TSubItemRecord& item);

  TCode GetAccountID() const override { return FFacts->FAccount; }
  TCode GetSymbol() const override { return FSymbol; }
  double GetHoldingQuantity() const override { return FHoldingQuantity; }
  double GetExcludedQuantity() const override { return FExcludedQuantity; }
  double GetCompletedBuyAmount() const override { return FCompletedBuyAmount; }
  double GetCompletedSellAmount() const override { return FCompletedSellAmount; }
  const TCustomSubItem* GetReferenceItem() const override { return FItem->IsKnown() ? FItem : nullptr; }
  bool IsPriceBasedPL() const override { return FPriceBased; }
  double GetPLFirstPart() const override { return FPLFirstPart; }
  double GetRealizedPL() const override { return FRealizedPL; }
  double GetPLSecondPart() const override { return FPLSecondPart; }

  // The position columns of the catalogue, "L" or "S" as the side, and the prices of Constdef.h where the
  // position has them.
  std::string GetDataString(std::int32_t field) const override { return GetDataValue(field).AsText(); }
  TVariant GetDataValue(std::int32_t field) const override;

 private:
  TCode FSymbol;
  double FHoldingQuantity;
  double FExcludedQuantity;
  double FCompletedBuyAmount;
  double FCompletedSellAmount;
  double FPLFirstPart;
  double FPLSecondPart;
  double FRealizedPL;
  const TSubItemRecord* FItem;
  const TPositionFacts* FFacts;
  bool FPriceBased;
};

// The positions of one account, side by side in memory and in the order of their keys. A block never changes
// once it is shared with a map: a change then makes a new block, and the old one lives as long as a map names
// it.
class TPositionBlock {
 public:
  // The item of a symbol; it lives as long as the host.
  using TItemOf = std::function<const TSubItemRecord&(TCode symbol)>;

  // Takes the positions of one account. A key given twice: the later position counts.
  TPositionBlock(std::vector<TPositionFacts> positions, const TItemOf& itemOf);
  TPositionBlock(const TPositionBlock&) = delete;
  TPositionBlock& operator=(const TPositionBlock&) = delete;

  const std::vector<TPositionFacts>& GetFacts() const noexcept { return FFacts; }
  const TPositionMap::TContents& GetContents() const noexcept { return FContents; }
  const TPositionFacts* Find(std::string_view key) const noexcept;  // null when there is none

  // Puts new facts in the place of the position with the same key, which is there.
  void Replace(const TPositionFacts& facts, const TItemOf& itemOf);

 private:
  std::vector<TPositionFacts> FFacts;
  std::vector<TPositionRecord> FRecords;
  TPositionMap::TContents FContents;
};

// A map over a whole block, and one over some of its positions by place, ascending.
TPositionMap MakePositionMap(const std::shared_ptr<TPositionBlock>& block);
TPositionMap MakePositionMap(const std::shared_ptr<TPositionBlock>& block,
                             const std::vector<std::size_t>& places);

}  // namespace margindesk
