#pragma once

#include <limits>
#include <string>

#include "host/services/HostContents.h"
#include "model/contract/BaseMarketData.h"

namespace margindesk {

// Everything that is known of one symbol.
struct TSymbolFacts {
  TProductFacts FProduct;
  TPriceFacts FPrices;
  std::string FLotSizeText;
  std::string FTypeText;

  // The last price, else the previous close; 0 for none.
  double GetPrice() const noexcept { return FPrices.FLast != 0 ? FPrices.FLast : FPrices.FPreviousClose; }
};

// One product of the market. It holds itself what a position total reads at every repaint, and is kept small,
// because thousands are read in a row; the facts belong to the symbol's reference item.
class TProductRecord final : public TCustomProduct {
 public:
  TCode GetExchange() const override { return FFacts->FProduct.FExchange; }
  TCode GetCurrency() const override { return FCurrency; }
  const std::string& GetLotSize() const override { return FFacts->FLotSizeText; }
  const std::string& GetProductType() const override { return FFacts->FTypeText; }
  TCode GetMarketCode() const override { return FFacts->FProduct.FMarketCode; }

  // Whether the market lists the product. Everything else is asked of a listed product alone.
  bool IsListed() const noexcept { return FFacts != nullptr; }

  // What one unit is worth now, in the product's currency. False leaves `value` alone: there is no price.
  bool GetUnitValue(double& value) const noexcept {
    if (FUnitValue != FUnitValue) return false;
    value = FUnitValue;
    return true;
  }

  const TSymbolFacts& GetFacts() const noexcept { return *FFacts; }

  // Takes over what the facts say now; null for a product that is not listed. They stay where they are.
  void Follow(const TSymbolFacts* facts) noexcept;

 private:
  TCode FCurrency;
  double FUnitValue = std::numeric_limits<double>::quiet_NaN();  // not a number: there is no price
  const TSymbolFacts* FFacts = nullptr;
};

}  // namespace margindesk
