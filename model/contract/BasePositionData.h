#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/contract/BaseData.h"
#include "model/contract/BaseMarketData.h"
#include "model/contract/Code.h"

namespace margindesk {

// One position. Quantities in units, amounts in the product's currency. Reads are in slot order.
//
// GetDataValue gives the position columns of the catalogue (95 quantity, 9014 and so on).
class TCustomPositionData : public TBaseData {
 public:
  virtual TCode GetAccountID() const = 0;
  virtual TCode GetSymbol() const = 0;
  virtual double GetHoldingQuantity() const = 0;   // negative for a short position
  virtual double GetExcludedQuantity() const = 0;  // held, but not valued
  virtual double GetCompletedBuyAmount() const = 0;
  virtual double GetCompletedSellAmount() const = 0;
  virtual const TCustomSubItem* GetReferenceItem() const = 0;  // null when the host has none
  virtual bool IsPriceBasedPL() const = 0;  // the profit and loss is computed from prices, not stored
  virtual double GetPLFirstPart() const = 0;
  virtual double GetRealizedPL() const = 0;
  virtual double GetPLSecondPart()
      const = 0;  // first and second part together are the stored profit and loss
};

// An account's positions by key, in the order of the keys: a value over shared contents that never change, so
// handing them over costs one reference count. The records are the host's and live at least as long as any
// map names them.
class TPositionMap {
 public:
  struct TContents {
    std::vector<std::string> FKeys;                      // ascending, no key twice
    std::vector<const TCustomPositionData*> FPositions;  // one a key
    std::shared_ptr<const void> FKeepAlive;              // whatever owns the records
  };

  TPositionMap() noexcept = default;
  explicit TPositionMap(std::shared_ptr<const TContents> contents) noexcept
      : FContents(std::move(contents)) {}

  void Clear() noexcept { FContents.reset(); }
  bool IsEmpty() const noexcept { return GetCount() == 0; }
  std::size_t GetCount() const noexcept { return FContents ? FContents->FPositions.size() : 0; }

  std::span<const TCustomPositionData* const> GetPositions() const noexcept {
    if (!FContents) return {};
    return FContents->FPositions;
  }
  std::span<const std::string> GetKeys() const noexcept {
    if (!FContents) return {};
    return FContents->FKeys;
  }

  // The position under a key, or null.
  const TCustomPositionData* Find(std::string_view key) const noexcept {
    if (!FContents) return nullptr;
    const auto& keys = FContents->FKeys;
    const auto found = std::lower_bound(keys.begin(), keys.end(), key);
    if (found == keys.end() || *found != key) return nullptr;
    return FContents->FPositions[static_cast<std::size_t>(found - keys.begin())];
  }

 private:
  std::shared_ptr<const TContents> FContents;
};

// What a position notification carries: the changed positions of each account.
using TAccountPositionMap = std::map<TCode, TPositionMap, TCodeTextLess>;

}  // namespace margindesk
