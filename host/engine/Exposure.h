#pragma once

#include <span>
#include <vector>

#include "host/services/HostData.h"

namespace margindesk {

inline constexpr std::int32_t kProductTypeFuture = 2;
inline constexpr std::int32_t kProductTypeOption = 3;
inline constexpr std::int32_t kProductTypeIndex = 7;  // quoted, never dealt in

inline bool IsFuture(const TProductFacts& product) { return product.FProductType == kProductTypeFuture; }
inline bool IsOption(const TProductFacts& product) { return product.FProductType == kProductTypeOption; }
// Neither a future nor an option: it is paid for in full and cannot be sold before it is held.
inline bool IsCashProduct(const TProductFacts& product) { return !IsFuture(product) && !IsOption(product); }

// What is known of a listed symbol; null for any other.
const TSymbolFacts* FindSymbolFacts(const THostData& data, TCode symbol);

// Whether two products are margined against each other: the same one, or futures in one currency on one
// underlying.
bool AreMarginedTogether(const TProductFacts& a, const TProductFacts& b);

// A position, and whether its account's holdings are lent against (that of a margin account).
struct TExposedPosition {
  TPositionFacts FPosition;
  bool FLends = false;
};

// What positions add to an account's figures, in the products' currency.
struct TExposure {
  double FEquity = 0;      // securities and options at their value, futures at their unrealised profit
  double FMarginable = 0;  // what the holdings can be lent against
  double FBacking = 0;     // what they add to the gross trading limit
  double FInitial = 0;
  double FMaintenance = 0;
  double FLots = 0;  // derivatives, long and short ones

  friend TExposure operator-(const TExposure& a, const TExposure& b) {
    return {a.FEquity - b.FEquity,   a.FMarginable - b.FMarginable,   a.FBacking - b.FBacking,
            a.FInitial - b.FInitial, a.FMaintenance - b.FMaintenance, a.FLots - b.FLots};
  }
};

// Reckons positions that are margined together, of one account or of several whose margins are netted. A
// product of which no margin is known needs its whole value and is not lent against.
TExposure ReckonExposure(const THostData& data, std::span<const TExposedPosition> positions);

}  // namespace margindesk
