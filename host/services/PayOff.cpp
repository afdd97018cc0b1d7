#include "host/services/PayOff.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

namespace margindesk {

namespace {

constexpr double kHighestVolatility = 5;
constexpr int kBisections = 60;
constexpr double kDaysOfYear = 365;

double NormalDistribution(double x) { return std::erfc(-x / std::numbers::sqrt2) / 2; }

double ExerciseValue(char right, double spot, double strike) {
  return std::max(right == 'C' ? spot - strike : strike - spot, 0.0);
}

template <class TPrice>
double SumLegs(const TPayOffLegs& legs, TPrice price) {
  double sum = 0;
  for (const TPayOffLeg& leg : legs) sum += leg.FQuantity * leg.FContractSize * (price(leg) - leg.FAverage);
  return sum;
}

// How much the pay-off gains with each unit of spot above every strike.
double SlopeAtTheTop(const TPayOffLegs& legs) {
  double slope = 0;
  for (const TPayOffLeg& leg : legs) {
    if (leg.FRight != 'P') slope += leg.FQuantity * leg.FContractSize;
  }
  return slope;
}

}  // namespace

double ReckonOptionPrice(char right, double spot, double strike, double years, double volatility) {
  const double deviation = volatility * std::sqrt(std::max(years, 0.0));
  if (deviation <= 0 || spot <= 0 || strike <= 0) return ExerciseValue(right, spot, strike);
  const double d1 = std::log(spot / strike) / deviation + deviation / 2;
  const double d2 = d1 - deviation;
  if (right == 'C') return spot * NormalDistribution(d1) - strike * NormalDistribution(d2);
  return strike * NormalDistribution(-d2) - spot * NormalDistribution(-d1);
}

std::optional<double> FindVolatility(char right, double price, double spot, double strike, double years) {
  if (years <= 0 || spot <= 0 || strike <= 0 || price <= ExerciseValue(right, spot, strike)) return {};
  if (price >= ReckonOptionPrice(right, spot, strike, years, kHighestVolatility)) return {};
  double low = 0;
  double high = kHighestVolatility;
  for (int i = 0; i < kBisections; ++i) {
    const double middle = (low + high) / 2;
    (ReckonOptionPrice(right, spot, strike, years, middle) < price ? low : high) = middle;
  }
  return (low + high) / 2;
}

double ReckonPayOff(const TPayOffLegs& legs, double spot) {
  return SumLegs(legs, [spot](const TPayOffLeg& leg) {
    return leg.FRight == 0 ? spot : ExerciseValue(leg.FRight, spot, leg.FStrike);
  });
}

double ReckonPayOffNow(const TPayOffLegs& legs, double spot, double volatility) {
  return SumLegs(legs, [spot, volatility](const TPayOffLeg& leg) {
    return leg.FRight == 0 ? spot : ReckonOptionPrice(leg.FRight, spot, leg.FStrike, leg.FYears, volatility);
  });
}

// The pay-off is straight between 0, the strikes and beyond the last of them.
TPayOffFigures ReckonPayOffFigures(const TPayOffLegs& legs) {
  std::vector<double> knots{0};
  for (const TPayOffLeg& leg : legs) {
    if (leg.FRight != 0) knots.push_back(leg.FStrike);
  }
  std::ranges::sort(knots);
  knots.erase(std::unique(knots.begin(), knots.end()), knots.end());
  const double slope = SlopeAtTheTop(legs);

  TPayOffFigures figures;
  double highest = ReckonPayOff(legs, 0);
  double lowest = highest;
  double before = highest;
  for (std::size_t i = 1; i < knots.size(); ++i) {
    const double value = ReckonPayOff(legs, knots[i]);
    if ((before < 0) != (value < 0)) {
      figures.FBreakEvens.push_back(knots[i - 1] + (knots[i] - knots[i - 1]) * before / (before - value));
    }
    highest = std::max(highest, value);
    lowest = std::min(lowest, value);
    before = value;
  }
  if (slope != 0 && (before < 0) == (slope > 0)) {
    figures.FBreakEvens.push_back(knots.back() - before / slope);
  }
  // Where the pay-off touches zero from below it does not cross it twice.
  auto& points = figures.FBreakEvens;
  points.erase(std::unique(points.begin(), points.end()), points.end());
  if (slope <= 0) figures.FHighest = highest;
  if (slope >= 0) figures.FLowest = lowest;
  return figures;
}

std::optional<double> ReckonYears(std::string_view date, std::chrono::sys_days today) {
  constexpr std::size_t kLength = 10;
  if (date.size() != kLength || date[4] != '-' || date[7] != '-') return {};
  unsigned parts[3] = {};
  constexpr std::pair<std::size_t, std::size_t> kPlaces[] = {{0, 4}, {5, 2}, {8, 2}};
  for (std::size_t i = 0; i < 3; ++i) {
    const char* begin = date.data() + kPlaces[i].first;
    const char* end = begin + kPlaces[i].second;
    if (std::from_chars(begin, end, parts[i]).ptr != end) return {};
  }
  const std::chrono::year_month_day day{std::chrono::year(static_cast<int>(parts[0])),
                                        std::chrono::month(parts[1]), std::chrono::day(parts[2])};
  if (!day.ok()) return {};
  const auto days = (std::chrono::sys_days(day) - today).count();
  return std::max(static_cast<double>(days), 0.0) / kDaysOfYear;
}

}  // namespace margindesk
