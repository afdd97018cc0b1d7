#include "host/engine/Exposure.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace margindesk {

namespace {

// The positions in one symbol, opposite ones set off against each other.
struct TNet {
  const TSymbolFacts* FFacts;
  TMarginFacts FMargin;
  double FQuantity = 0;
  double FCovered = 0;

  double GetUnitValue() const { return FFacts->GetPrice() * FFacts->FProduct.FContractSize; }
};

// What one contract needs, whichever of the two ways its margin is given.
double PerContract(double lot, double ratio, const TNet& net) { return lot + ratio * net.GetUnitValue(); }

void AddSecurity(TExposure& exposure, const TNet& net) {
  const double value = net.FQuantity * net.GetUnitValue();
  const double initial = std::abs(value) * net.FMargin.FInitialRatio;
  const double marginable = std::max(value, 0.0) * net.FMargin.FLendingRatio;
  exposure.FInitial += initial;
  exposure.FMaintenance += std::abs(value) * net.FMargin.FMaintenanceRatio;
  exposure.FMarginable += marginable;
  exposure.FBacking += value < 0 ? value - initial : marginable;
}

// The premium, and the ratio of the underlying's value less what the option is out of the money, but at least
// the minimum ratio of the underlying's value (call) or of the strike's (put).
double ShortOptionMargin(const TNet& net, double underlyingPrice, double ratio) {
  const TProductFacts& product = net.FFacts->FProduct;
  const bool call = product.FOptionRight != 'P';
  const double underlying = underlyingPrice * product.FContractSize;
  const double strike = product.FStrike * product.FContractSize;
  const double outOfTheMoney = std::max(call ? strike - underlying : underlying - strike, 0.0);
  const double least = net.FMargin.FMinimumRatio * (call ? underlying : strike);
  return net.GetUnitValue() + std::max(ratio * underlying - outOfTheMoney, least);
}

void AddOption(TExposure& exposure, const TNet& net, const THostData& data) {
  const double bare = -net.FQuantity - net.FCovered;
  if (!(bare > 0)) return;
  const TProductFacts& product = net.FFacts->FProduct;
  const TSymbolFacts* underlying = FindSymbolFacts(data, product.FUnderlying);
  const double price =
      underlying != nullptr && underlying->GetPrice() != 0 ? underlying->GetPrice() : product.FStrike;
  const double initial = bare * ShortOptionMargin(net, price, net.FMargin.FInitialRatio);
  exposure.FInitial += initial;
  exposure.FMaintenance += bare * ShortOptionMargin(net, price, net.FMargin.FMaintenanceRatio);
  exposure.FBacking -= initial;
}

// All long, or all short, futures on one underlying.
struct TFuturesSide {
  double FUnits = 0;  // of the underlying
  double FOutright = 0;
  double FSpread = 0;

  void Add(const TNet& net, double contract, double spreadLot) {
    const double lots = std::abs(net.FQuantity);
    FUnits += lots * net.FFacts->FProduct.FContractSize;
    FOutright += lots * contract;
    FSpread += lots * spreadLot;
  }
};

// What is not matched by the other side, and for what is matched the dearer side's spread amounts.
double MarginOf(const TFuturesSide& a, const TFuturesSide& b) {
  const double matched = std::min(a.FUnits, b.FUnits);
  double outright = 0;
  double spread = 0;
  for (const TFuturesSide* side : {&a, &b}) {
    if (!(side->FUnits > 0)) continue;
    outright += side->FOutright * (side->FUnits - matched) / side->FUnits;
    spread = std::max(spread, side->FSpread * matched / side->FUnits);
  }
  return outright + spread;
}

void AddFutures(TExposure& exposure, const std::vector<TNet>& nets) {
  TFuturesSide initial[2];
  TFuturesSide maintenance[2];
  for (const TNet& net : nets) {
    const TMarginFacts& margin = net.FMargin;
    const std::size_t side = net.FQuantity < 0 ? 1 : 0;
    initial[side].Add(net, PerContract(margin.FInitialLot, margin.FInitialRatio, net),
                      margin.FInitialSpreadLot);
    maintenance[side].Add(net, PerContract(margin.FMaintenanceLot, margin.FMaintenanceRatio, net),
                          margin.FMaintenanceSpreadLot);
  }
  const double needed = MarginOf(initial[0], initial[1]);
  exposure.FInitial += needed;
  exposure.FMaintenance += MarginOf(maintenance[0], maintenance[1]);
  exposure.FBacking -= needed;
}

TMarginFacts MarginOfSymbol(const THostData& data, TCode symbol) {
  if (const TMarginFacts* margin = data.FindMargin(symbol)) return *margin;
  TMarginFacts whole;
  whole.FInitialRatio = whole.FMaintenanceRatio = whole.FMinimumRatio = 1;
  return whole;
}

// The nets in the order in which their symbols are met.
class TNets {
 public:
  TNet& Of(const TSymbolFacts& facts, const THostData& data) {
    const auto [place, isNew] = FPlaces.try_emplace(&facts, FNets.size());
    if (isNew) FNets.push_back({&facts, MarginOfSymbol(data, facts.FProduct.FSymbol)});
    return FNets[place->second];
  }
  const std::vector<TNet>& Get() const noexcept { return FNets; }

 private:
  std::vector<TNet> FNets;
  std::unordered_map<const TSymbolFacts*, std::size_t> FPlaces;
};

}  // namespace

const TSymbolFacts* FindSymbolFacts(const THostData& data, TCode symbol) {
  const TProductRecord* product = data.FindProduct(symbol);
  return product == nullptr ? nullptr : &product->GetFacts();
}

bool AreMarginedTogether(const TProductFacts& a, const TProductFacts& b) {
  if (a.FSymbol == b.FSymbol) return true;
  return IsFuture(a) && IsFuture(b) && !a.FUnderlying.IsEmpty() && a.FUnderlying == b.FUnderlying &&
         a.FCurrency == b.FCurrency;
}

TExposure ReckonExposure(const THostData& data, std::span<const TExposedPosition> positions) {
  TExposure exposure;
  TNets futures;
  TNets others;
  for (const auto& [position, lends] : positions) {
    const TSymbolFacts* facts = FindSymbolFacts(data, position.FSymbol);
    if (facts == nullptr) continue;
    const TProductFacts& product = facts->FProduct;
    const double quantity = position.FHoldingQuantity - position.FExcludedQuantity;
    const double price = facts->GetPrice();
    if (!IsCashProduct(product)) exposure.FLots += std::abs(position.FHoldingQuantity);
    if (IsFuture(product)) {
      futures.Of(*facts, data).FQuantity += quantity;
      if (price == 0) continue;
      const double profit = (price - position.FAveragePrice) * quantity * product.FContractSize;
      exposure.FEquity += profit;
      exposure.FBacking += profit;
      continue;
    }
    const double value = quantity * price * product.FContractSize;
    exposure.FEquity += value;
    if (IsOption(product)) exposure.FBacking += value;
    if (IsCashProduct(product) && !lends) {
      exposure.FBacking += std::min(value, 0.0);
      continue;
    }
    TNet& net = others.Of(*facts, data);
    net.FQuantity += quantity;
    if (quantity < 0) net.FCovered += position.FCoveredQuantity;
  }
  for (const TNet& net : others.Get()) {
    if (IsOption(net.FFacts->FProduct)) {
      AddOption(exposure, net, data);
    } else {
      AddSecurity(exposure, net);
    }
  }
  if (!futures.Get().empty()) AddFutures(exposure, futures.Get());
  return exposure;
}

}  // namespace margindesk
