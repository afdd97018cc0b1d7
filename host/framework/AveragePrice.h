#pragma once

#include <cstdint>
#include <string>

namespace margindesk {

// The decimals of an average price while the user has set none, and the most that a user may set.
inline constexpr std::int32_t kAveragePriceDecimals = 4;
inline constexpr std::int32_t kMaximumPrecision = 8;

// The next number up or down with at most so many decimals, or the value itself where it has no more. It goes
// by the digits that the double shows, so that 67.43 has two decimals whatever its binary value is.
double RoundTowards(double value, std::int32_t decimals, bool up);

// How the user wants average prices: the rounding direction of buys and of sells, and the decimals.
class TAveragePriceStyle {
 public:
  static TAveragePriceStyle Read();  // from the user's section of the configuration

  // The price as the mode has it: in its decimals where it is rounded up or down, else in full.
  double Round(double price, bool buy) const;
  // The text, in the nearest number of those decimals.
  std::string Format(double price) const;

 private:
  bool FBuysUp = false;
  bool FSellsDown = false;
  bool FKeepZeros = true;
  std::int32_t FDecimals = kAveragePriceDecimals;
};

}  // namespace margindesk
