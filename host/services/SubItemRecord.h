#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "host/services/ProductRecord.h"
#include "model/contract/BaseMarketData.h"

namespace margindesk {

inline constexpr std::int32_t kItemUnknown = 0;     // nothing is known of the symbol
inline constexpr std::int32_t kItemNotCurrent = 2;  // its facts are known, its price is not

// The reference item of one symbol: its product and its prices under the numbers of Constdef.h. It lives as
// long as the host and follows its product.
class TSubItemRecord final : public TCustomSubItem {
 public:
  TSubItemRecord(TCode symbol, const TProductRecord& product) : FSymbol(symbol), FProduct(product) {}

  double GetFieldFloat(std::int32_t field) const override;
  // The text of a number is made anew at each call and holds until the next call for the same field.
  const std::string& GetFieldText(std::int32_t field) const override;
  bool HasField(std::int32_t field) const override;
  std::int32_t GetStatus() const override;
  TCode GetSymbolCode() const override { return FSymbol; }
  TCode GetFieldCode(std::int32_t field) const override;
  std::string GetDataString(std::int32_t field) const override { return GetFieldText(field); }
  TVariant GetDataValue(std::int32_t field) const override;

  bool IsKnown() const noexcept { return FProduct.IsKnown(); }

  // What the price feed says of the item; none lets the status follow from the product and its price.
  void SetFeedStatus(std::optional<std::int32_t> status) noexcept { FFeedStatus = status; }

 private:
  static constexpr std::size_t kNumberFieldCount = 12;

  TCode FSymbol;
  const TProductRecord& FProduct;
  std::optional<std::int32_t> FFeedStatus;
  mutable std::array<std::string, kNumberFieldCount> FTexts;
};

}  // namespace margindesk
