#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "model/contract/ConfigManager.h"
#include "model/contract/Formatter.h"

namespace margindesk {

// Rounds half away from zero on the digits of the shortest decimal text that reads back as the same double,
// so that 1.005 with two decimals is 1.01, as a person reads it. decimals: 0 to 15, beyond it the nearer of
// the two. keepZeros: "1.50", else "1.5". grouping: a comma between thousands. A value that rounds to zero
// has no sign. "" when it is not finite.
std::string FormatDecimal(double value, std::int32_t decimals, bool keepZeros, bool grouping);

// The formatter of the user's preferences. It reads them when it is made and again at every configuration
// change, never while it formats. docs/host.md lists the keys and the defaults.
class TFormatter : public TCustomFormatter {
 public:
  // The decimals in which a symbol's prices are quoted, -1 when not known.
  using TSymbolDecimals = std::function<std::int32_t(TCode symbol)>;

  // The configuration must outlive the formatter.
  explicit TFormatter(TCustomConfigManager& config, TSymbolDecimals symbolDecimals = {});
  ~TFormatter() override;

  // An unknown kind is formatted as an amount.
  std::string FormatValue(double value, std::int32_t kind, TCode symbol, bool flag,
                          const void* extra = nullptr) const override;
  std::string FormatNumber(double value, std::int32_t decimals, bool flag) const override;

  // An average price: in the decimals that the user set for it.
  std::string FormatAveragePrice(double value, bool flag) const;

  void ConfigUpdate(void* sender, void* data);

 private:
  struct TStyle {
    std::int32_t FDecimals = 0;
    bool FKeepZeros = true;
    bool FConfigured = false;  // the user set the decimals
  };
  enum TStyleIndex { kAmount, kQuantity, kAverage, kPrice, kRatio, kStyleCount };
  struct TPreference;
  static const std::array<TPreference, kStyleCount> kPreferences;

  TCustomConfigManager& FConfig;
  const TSymbolDecimals FSymbolDecimals;
  std::array<TStyle, kStyleCount> FStyles;
};

}  // namespace margindesk
