#pragma once

#include <string>
#include <string_view>

#include "host/services/HostData.h"
#include "host/services/PayOff.h"

namespace margindesk {

// What the pay-off of an account's option position is reckoned from.
struct TPayOffCase {
  TPayOffLegs FLegs;  // empty: the position is no option, or is gone
  TCode FUnderlying;
  TCode FCurrency;
  double FSpot = 0;  // 0: the underlying has no price
  std::string FExpiry;
  double FVolatility = kAssumedVolatility;
  bool FImplied = false;  // the volatility is the one that gives the option's own price

  static constexpr double kAssumedVolatility = 0.25;
};

// The option under a position key, and with `combined` also the account's other options on the same
// underlying that expire on the same day, the underlying itself and futures on it. Warrants are no options
// here: how many of them make one underlying is not known.
TPayOffCase MakePayOffCase(THostData& data, TCode account, std::string_view key, bool combined,
                           std::chrono::sys_days today);

// Whether a pay-off can be drawn for a product.
bool IsPayOffOption(const TProductFacts& product) noexcept;

}  // namespace margindesk
