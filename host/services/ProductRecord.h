#pragma once

#include <limits>
#include <memory>
#include <string>

#include "host/services/HostContents.h"
#include "model/contract/BaseMarketData.h"

namespace margindesk {

// One product with its prices. What a position total reads of it lies in one cache line; the rest is kept
// apart.
class alignas(64) TProductRecord final : public TCustomProduct {
 public:
  TCode GetExchange() const override { return FExchange; }
  TCode GetCurrency() const override { return FCurrency; }
  const std::string& GetLotSize() const override;
  const std::string& GetProductType() const override;
  TCode GetMarketCode() const override;

  // Whether anything is known of the symbol, and whether the market lists it as a product.
  bool IsKnown() const noexcept { return FDetails != nullptr; }
  bool IsListed() const noexcept { return FListed; }

  // The last price, else the previous close; 0 for none.
  double GetPrice() const noexcept;

  // What one unit is worth now, in the product's currency. False leaves `value` alone: there is no price.
  bool GetUnitValue(double& value) const noexcept {
    if (!FHasPrice) return false;
    value = FUnitValue;
    return true;
  }

  const TProductFacts& GetFacts() const noexcept;  // blank for an unknown product
  const TPriceFacts& GetPrices() const noexcept;   // all 0 for an unknown product

  void SetFacts(const TProductFacts& facts);
  void SetPrices(const TPriceFacts& prices);  // the product has its facts already
  void Clear();                               // unknown again

 private:
  struct TDetails {
    TProductFacts FFacts;
    TPriceFacts FPrices;
    std::string FLotSizeText;
    std::string FTypeText;
  };

  void Value() noexcept;

  TCode FCurrency;
  TCode FExchange;
  double FUnitValue = 0;
  bool FListed = false;
  bool FHasPrice = false;
  std::unique_ptr<TDetails> FDetails;
};

}  // namespace margindesk
