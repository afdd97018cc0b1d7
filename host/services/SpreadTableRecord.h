#pragma once

#include <cstdint>
#include <vector>

#include "host/services/HostContents.h"
#include "model/contract/BaseMarketData.h"

namespace margindesk {

// The price bands of one market, ascending and without gaps. The prices of a band count up from its lower
// limit in ticks. Every price that is given out is the double nearest to its decimal text, so that a thousand
// steps up and a thousand down lead back to the same bits; a price within the zero tolerance of one of them
// counts as that one.
//
// Where two bands meet, upward means the upper one and downward the lower one. The outermost limits belong to
// the table in both directions.
class TSpreadTableRecord final : public TCustomSpreadTable {
 public:
  std::int32_t GetKind() const override { return kSpreadTableBands; }
  bool LookUpUpward(double price, TSpreadBand& band) const override;
  bool LookUpDownward(double price, TSpreadBand& band) const override;
  // A price between two ticks goes to the next one. The table's limits are not left.
  double StepUp(double price) const override;
  double StepDown(double price) const override;

  // Whether an order may have this price: a band holds it and it is one of the band's ticks.
  bool IsOnTick(double price) const;

  bool IsEmpty() const noexcept { return FBands.empty(); }
  void Clear() noexcept { FBands.clear(); }
  void Add(const TSpreadBandFacts& facts);  // above the bands that are there

  static constexpr std::int32_t kSpreadTableBands = 1;

 private:
  struct TBand {
    TSpreadBand FBand;
    double FScale = 1;  // a power of ten that makes the lower limit and the tick whole
  };

  const TBand* FindUpward(double price) const noexcept;  // null when no band holds the price
  const TBand* FindDownward(double price) const noexcept;
  static double PriceAt(const TBand& band, double ticks);  // so many ticks above the lower limit

  std::vector<TBand> FBands;
};

}  // namespace margindesk
