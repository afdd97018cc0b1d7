#pragma once

#include <chrono>
#include <optional>
#include <string_view>
#include <vector>

namespace margindesk {

// One position in a pay-off: an option, or with FRight 0 the underlying itself or a future on it, which is
// worth its spot price. Amounts are in the product's currency.
struct TPayOffLeg {
  double FQuantity = 0;      // negative when short
  double FContractSize = 1;  // what one unit is worth at a price of one
  double FAverage = 0;       // the price that was paid or received
  char FRight = 0;           // 'C' call, 'P' put
  double FStrike = 0;
  double FYears = 0;  // until it expires; 0 or less: it has
};

using TPayOffLegs = std::vector<TPayOffLeg>;

// The price of a European option by Black and Scholes at an interest rate and a dividend of 0. `volatility`
// is a year's: 0.25 for 25 percent. Without time or volatility left: what it is worth if exercised.
double ReckonOptionPrice(char right, double spot, double strike, double years, double volatility);

// The volatility at which an option has this price; none when no volatility up to 500 percent gives it.
std::optional<double> FindVolatility(char right, double price, double spot, double strike, double years);

// The legs' profit or loss at a spot price: when they all expire there, and now.
double ReckonPayOff(const TPayOffLegs& legs, double spot);
double ReckonPayOffNow(const TPayOffLegs& legs, double spot, double volatility);

// What a pay-off at expiry comes to over all spot prices from 0 upward.
struct TPayOffFigures {
  std::vector<double> FBreakEvens;  // spot prices at which profit turns into loss or back, ascending
  std::optional<double> FHighest;   // the largest profit; none: it has no limit
  std::optional<double> FLowest;    // the largest loss, as a negative amount; none: it has no limit
};

TPayOffFigures ReckonPayOffFigures(const TPayOffLegs& legs);

// Years of 365 days from one day to a date as 2027-01-28, never below 0; none when it is no date.
std::optional<double> ReckonYears(std::string_view date, std::chrono::sys_days today);

}  // namespace margindesk
