#pragma once

#include <cstdint>
#include <string>

#include "model/contract/Code.h"
#include "model/contract/Service.h"

namespace margindesk {

inline constexpr std::int32_t kFormatPrice = 1;
inline constexpr std::int32_t kFormatAmount = 3;
inline constexpr std::int32_t kFormatQuantity = 4;
inline constexpr std::int32_t kFormatRatio = 6;
inline constexpr std::int32_t kFormatMarginLevel = 7;  // percent, without the sign

// The one place where a figure is rounded: half away from zero on the decimal digits that the double shows.
// Never looks at a locale. A value that is not finite gives "".
class TCustomFormatter : public TService<TCustomFormatter> {
 public:
  // A figure of a kind (kFormat...). A price takes its decimals from the symbol where the kind has none
  // configured. flag: group the digits by thousands. The last argument is null.
  virtual std::string FormatValue(double value, std::int32_t kind, TCode symbol, bool flag,
                                  const void* extra = nullptr) const = 0;
  // A number with so many decimals, -1 for the default ones. flag: group the digits by thousands.
  virtual std::string FormatNumber(double value, std::int32_t decimals, bool flag) const = 0;
};

extern template class TService<TCustomFormatter>;

}  // namespace margindesk
