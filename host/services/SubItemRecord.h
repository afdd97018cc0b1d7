#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "host/services/ProductRecord.h"
#include "model/contract/BaseMarketData.h"

namespace margindesk {

inline constexpr std::int32_t kItemUnknown = 0;     // nothing is known of the symbol
inline constexpr std::int32_t kItemNotCurrent = 2;  // its facts are known, its price is not

// The reference item of one symbol: the facts and prices of its product under the numbers of Constdef.h. It
// lives as long as the host, also while nothing is known of the symbol. What the host knows is shown once the
// item has been loaded, and from then on at once.
class TSubItemRecord final : public TCustomSubItem {
 public:
  explicit TSubItemRecord(TCode symbol) : FSymbol(symbol) {}

  double GetFieldFloat(std::int32_t field) const override;
  // The text of a number is made anew at each call and holds until the next call for the same field.
  const std::string& GetFieldText(std::int32_t field) const override;
  bool HasField(std::int32_t field) const override;
  std::int32_t GetStatus() const override;
  TCode GetSymbolCode() const override { return FSymbol; }
  TCode GetFieldCode(std::int32_t field) const override;
  std::string GetDataString(std::int32_t field) const override { return GetFieldText(field); }
  TVariant GetDataValue(std::int32_t field) const override;

  bool IsKnown() const noexcept { return FShown != nullptr; }  // whether the item shows anything
  // What the host knows, whether or not it is shown; null for nothing.
  const TSymbolFacts* GetFacts() const noexcept { return FFacts.get(); }

  void Load() noexcept;
  // Notes that somebody asked for the item; false when that is not the first time, or it was loaded already.
  bool Ask() noexcept { return !FLoaded && !std::exchange(FAsked, true); }

  void SetProduct(const TProductFacts& product);  // keeps the prices
  void SetPrices(const TPriceFacts& prices);      // of a symbol that is known
  // What the price feed says of the item; none lets the status follow from the product and its price.
  void SetFeedStatus(std::optional<std::int32_t> status) noexcept { FFeedStatus = status; }
  void Clear();  // nothing is known any more

 private:
  static constexpr std::size_t kNumberFieldCount = 12;

  TCode FSymbol;
  std::unique_ptr<TSymbolFacts> FFacts;
  const TSymbolFacts* FShown = nullptr;  // the facts of a loaded item
  bool FLoaded = false;
  bool FAsked = false;
  std::optional<std::int32_t> FFeedStatus;
  mutable std::array<std::string, kNumberFieldCount> FTexts;
};

}  // namespace margindesk
