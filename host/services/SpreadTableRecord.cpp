#include "host/services/SpreadTableRecord.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

// How many decimals the shortest text of a number has.
int DecimalsOf(double number) {
  std::array<char, 400> text{};
  const char* const end =
      std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
  const char* const point = std::find(static_cast<const char*>(text.data()), end, '.');
  return point == end ? 0 : static_cast<int>(end - point) - 1;
}

bool Holds(const TSpreadBand& band, double price) {
  return price >= band.FLowerLimit - kZeroTolerance && price <= band.FUpperLimit + kZeroTolerance;
}

// How many ticks a price lies above the band's lower limit; whole when it is within the tolerance of a tick.
double TicksTo(const TSpreadBand& band, double price) {
  const double ticks = (price - band.FLowerLimit) / band.FTick;
  const double nearest = std::round(ticks);
  return std::abs(ticks - nearest) * band.FTick <= kZeroTolerance ? nearest : ticks;
}

}  // namespace

void TSpreadTableRecord::Add(const TSpreadBandFacts& facts) {
  const int decimals = std::max(DecimalsOf(facts.FTick), DecimalsOf(facts.FLowerLimit));
  FBands.push_back({{facts.FTick, facts.FUpperLimit, facts.FLowerLimit}, std::pow(10, decimals)});
}

const TSpreadTableRecord::TBand* TSpreadTableRecord::FindUpward(double price) const noexcept {
  const auto holds = [price](const TBand& band) { return Holds(band.FBand, price); };
  const auto found = std::find_if(FBands.rbegin(), FBands.rend(), holds);
  return found == FBands.rend() ? nullptr : &*found;
}

const TSpreadTableRecord::TBand* TSpreadTableRecord::FindDownward(double price) const noexcept {
  const auto holds = [price](const TBand& band) { return Holds(band.FBand, price); };
  const auto found = std::ranges::find_if(FBands, holds);
  return found == FBands.end() ? nullptr : &*found;
}

double TSpreadTableRecord::PriceAt(const TBand& band, double ticks) {
  const double price = band.FBand.FLowerLimit + ticks * band.FBand.FTick;
  return std::clamp(std::round(price * band.FScale) / band.FScale, band.FBand.FLowerLimit,
                    band.FBand.FUpperLimit);
}

bool TSpreadTableRecord::LookUpUpward(double price, TSpreadBand& band) const {
  const TBand* found = FindUpward(price);
  if (found != nullptr) band = found->FBand;
  return found != nullptr;
}

bool TSpreadTableRecord::LookUpDownward(double price, TSpreadBand& band) const {
  const TBand* found = FindDownward(price);
  if (found != nullptr) band = found->FBand;
  return found != nullptr;
}

double TSpreadTableRecord::StepUp(double price) const {
  const TBand* band = FindUpward(price);
  return band == nullptr ? price : PriceAt(*band, std::floor(TicksTo(band->FBand, price)) + 1);
}

double TSpreadTableRecord::StepDown(double price) const {
  const TBand* band = FindDownward(price);
  return band == nullptr ? price : PriceAt(*band, std::ceil(TicksTo(band->FBand, price)) - 1);
}

bool TSpreadTableRecord::IsOnTick(double price) const {
  const TBand* band = FindUpward(price);
  if (band == nullptr) return false;
  const double ticks = TicksTo(band->FBand, price);
  return ticks == std::floor(ticks);
}

}  // namespace margindesk
