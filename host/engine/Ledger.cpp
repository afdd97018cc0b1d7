// Booking: positions, figures, consolidated figures.
#include "host/engine/Ledger.h"

#include <algorithm>
#include <cmath>

#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

bool Lends(const TAccountRecord& account) { return account.GetMarginType() == 1; }

double AmountOf(const TProductFacts& product, const TDeal& deal) {
  return deal.FPrice * deal.FQuantity * product.FContractSize;
}

// As it is billed: in hundredths.
double ChargeOf(const THostData& data, const TProductFacts& product, const TDeal& deal) {
  const TChargeFacts* charge = data.FindCharge(product.FExchange);
  if (charge == nullptr) return 0;
  const double due = charge->FRate * AmountOf(product, deal) + charge->FPerUnit * deal.FQuantity;
  return std::round(std::max(due, charge->FMinimum) * 100) / 100;
}

// The key of a position that is new to the account: the symbol, unless another product's position has it.
std::string FreeKey(const TAccountRecord& account, TCode symbol) {
  std::string key = symbol.Text();
  while (account.FPositions && account.FPositions->Find(key) != nullptr) key += '+';
  return key;
}

}  // namespace

TDeal DealOf(const TSymbolFacts& facts, const TOrderFacts& order) {
  const TProductFacts& product = facts.FProduct;
  const double left = order.FQuantity - order.FFilledQuantity;
  if (product.FOverTheCounter && product.FProductType == kProductTypeFund) {
    const double price = facts.GetPrice();
    if (order.FSide == kSideSell || !(price > 0)) return {price, left};
    const double lot = product.FLotSize > 0 ? product.FLotSize : 1;
    return {price, std::floor(order.FPrice * left / price / lot + kZeroTolerance) * lot};
  }
  if (!order.FMarket) return {order.FPrice, left};
  const double quote = order.FSide == kSideBuy ? facts.FPrices.FAsk : facts.FPrices.FBid;
  return {quote > 0 ? quote : facts.GetPrice(), left};
}

void TLedger::TRows::Copy(const TAccountDataList& list) {
  if (const TAccountDataRecord* total = list.Find(TCode())) FRows.push_back(total->GetFacts());
  for (const TCode currency : list.GetCurrencies()) FRows.push_back(list.Find(currency)->GetFacts());
  FTouched.resize(FRows.size());
}

std::size_t TLedger::TRows::Find(TCode account, TCode currency) const noexcept {
  const auto found = std::ranges::find_if(
      FRows, [&](const TFigureFacts& row) { return row.FAccount == account && row.FCurrency == currency; });
  return static_cast<std::size_t>(found - FRows.begin());
}

TFigureFacts& TLedger::TRows::Touch(TCode account, TCode currency) {
  const std::size_t index = Find(account, currency);
  if (index == FRows.size()) {
    TFigureFacts& row = FRows.emplace_back();
    row.FAccount = account;
    row.FCurrency = currency;
    FTouched.push_back(true);
  }
  FTouched[index] = true;
  return FRows[index];
}

std::vector<TFigureFacts> TLedger::TRows::GetTouched() const {
  std::vector<TFigureFacts> touched;
  for (std::size_t i = 0; i < FRows.size(); ++i) {
    if (FTouched[i]) touched.push_back(FRows[i]);
  }
  return touched;
}

TLedger::TLedger(const THostData& data, TCode account) : FData(&data), FAccount(data.FindAccount(account)) {
  FFigures.Copy(FAccount->FFigures);
  if (data.IsChinaConnectOn()) FLinked = data.FindAccount(FAccount->FFacts.FChinaConnectAccount);
  if (FLinked != nullptr) FFigures.Copy(FLinked->FFigures);
  const TAccountRecord* master =
      FAccount->IsMasterAccount() ? FAccount : data.FindAccount(FAccount->FFacts.FMaster);
  if (master != nullptr) FConsolidated.Copy(master->FConsolidated);
  if (!FConsolidated.FRows.empty()) FMaster = master;
  for (const TOrderFacts* order : data.GetOrders(account)) {
    if (order->FState == TOrderState::kResting)
      PendingOf(*order) += order->FQuantity - order->FFilledQuantity;
  }
}

double& TLedger::PendingOf(const TOrderFacts& order) {
  TPending& pending = FPending[order.FSymbol];
  return order.FSide == kSideBuy ? pending.FBuy : pending.FSell;
}

const TAccountRecord& TLedger::TargetOf(const TProductFacts& product) const {
  const TExchangeFacts* exchange = FData->FindExchange(product.FExchange);
  return FLinked != nullptr && exchange != nullptr && exchange->FChinaConnect ? *FLinked : *FAccount;
}

std::vector<TExposedPosition> TLedger::Collect(const TAccountRecord& account,
                                               const TProductFacts& product) const {
  std::vector<TExposedPosition> group;
  const bool own = &account == FAccount;
  const auto belongs = [&](const TPositionFacts& position) {
    if (position.FSymbol == product.FSymbol) return true;
    if (!IsFuture(product)) return false;
    const TSymbolFacts* facts = FindSymbolFacts(*FData, position.FSymbol);
    return facts != nullptr && AreMarginedTogether(product, facts->FProduct);
  };
  // In the order of their keys, so that sums are made in one order, whether a position has just changed or
  // not.
  auto changed = FPositions.begin();
  const auto changedEnd = own ? FPositions.end() : changed;
  const auto addChanged = [&] {
    if (belongs(changed->second)) group.push_back({changed->second, Lends(account)});
    ++changed;
  };
  if (account.FPositions) {
    for (const TPositionFacts& position : account.FPositions->GetFacts()) {
      if (!belongs(position)) continue;
      while (changed != changedEnd && changed->first < position.FKey) addChanged();
      if (changed != changedEnd && changed->first == position.FKey) {
        addChanged();
      } else {
        group.push_back({position, Lends(account)});
      }
    }
  }
  while (changed != changedEnd) addChanged();
  return group;
}

std::vector<TExposedPosition> TLedger::CollectGroup(const TProductFacts& product) const {
  if (FMaster == nullptr) return {};
  std::vector<TExposedPosition> group = Collect(*FMaster, product);
  for (const TCode account : FMaster->FSubAccounts) {
    const TAccountRecord* record = FData->FindAccount(account);
    if (record == nullptr) continue;
    const std::vector<TExposedPosition> positions = Collect(*record, product);
    group.insert(group.end(), positions.begin(), positions.end());
  }
  return group;
}

TDealProfit TLedger::BookPositions(const TSymbolFacts& facts, const TOrderFacts& order, const TDeal& deal) {
  std::vector<TPositionFacts*> positions;
  for (const TExposedPosition& exposed : Collect(*FAccount, facts.FProduct)) {
    if (exposed.FPosition.FSymbol != order.FSymbol) continue;
    const std::string& key = exposed.FPosition.FKey;
    TPositionFacts& position = FPositions.try_emplace(key, exposed.FPosition).first->second;
    // The position under the symbol itself is the first one.
    positions.insert(key == order.FSymbol.Text() ? positions.begin() : positions.end(), &position);
  }
  if (positions.empty()) {
    std::string key = FreeKey(*FAccount, order.FSymbol);
    TPositionFacts& position = FPositions[key];
    position.FAccount = FAccount->GetAccountID();
    position.FKey = std::move(key);
    position.FSymbol = order.FSymbol;
    position.FPriceBased = !IsCashProduct(facts.FProduct);
    positions.push_back(&position);
  }
  TPositionDeal booked;
  booked.FQuantity = order.FSide == kSideBuy ? deal.FQuantity : -deal.FQuantity;
  booked.FPrice = deal.FPrice;
  booked.FContractSize = facts.FProduct.FContractSize;
  booked.FMark = facts.GetPrice() != 0 ? facts.GetPrice() : deal.FPrice;
  return BookDeal(positions, booked);
}

double TLedger::ApplyFill(const TOrderFacts& order, const TDeal& deal) {
  const TSymbolFacts& facts = *FindSymbolFacts(*FData, order.FSymbol);
  const TProductFacts& product = facts.FProduct;
  const TExposure before = ReckonExposure(*FData, Collect(*FAccount, product));
  const TExposure groupBefore = ReckonExposure(*FData, CollectGroup(product));
  const TDealProfit profit = BookPositions(facts, order, deal);

  TBooking booking;
  booking.FCharge = ChargeOf(*FData, product, deal);
  const double amount = AmountOf(product, deal);
  if (IsFuture(product)) {
    booking.FCash = profit.FRealized - booking.FCharge;
  } else if (order.FSide == kSideBuy) {
    booking.FCash = -amount - booking.FCharge;
    booking.FBought = amount;
  } else {
    booking.FCash = amount - booking.FCharge;
    booking.FSold = amount;
    if (IsCashProduct(product)) booking.FForthcoming = amount;
  }
  booking.FTotalPL = profit.FTotal;
  booking.FUnrealizedPL = profit.FTotal - profit.FRealized;
  booking.FExposure = ReckonExposure(*FData, Collect(*FAccount, product)) - before;
  BookFigures(product, booking, ReckonExposure(*FData, CollectGroup(product)) - groupBefore);
  return booking.FCharge;
}

void TLedger::BookFigures(const TProductFacts& product, TBooking booking, const TExposure& groupMove) {
  const TAccountRecord& target = TargetOf(product);
  const TLimitRules rules = LimitRulesOf(target.FFacts);
  MoveRows(FFigures, target.GetAccountID(), product, booking, rules);
  if (FMaster == nullptr) return;
  booking.FExposure = groupMove;
  MoveRows(FConsolidated, FMaster->GetAccountID(), product, booking, rules);
}

void TLedger::MoveRows(TRows& rows, TCode account, const TProductFacts& product, const TBooking& booking,
                       const TLimitRules& rules) {
  const bool isNew = std::ranges::find(rows.FRows, account, &TFigureFacts::FAccount) == rows.FRows.end();
  if (isNew) rows.Touch(account, TCode());
  TFigureFacts& row = rows.Touch(account, product.FCurrency);
  const TFigures moves = MoveFigures(row, booking, rules);
  if (row.FSeparateRow || FData->IsExcluded(product.FCurrency)) return;
  if (rows.Find(account, TCode()) == rows.FRows.size()) return;
  MoveTotal(rows.Touch(account, TCode()), moves, FData->GetRatio(product.FCurrency));
}

TBookChange TLedger::GetChange() const {
  TBookChange change;
  change.FFigures = FFigures.GetTouched();
  change.FConsolidated = FConsolidated.GetTouched();
  for (const auto& [key, position] : FPositions) change.FPositions.push_back(position);
  return change;
}

}  // namespace margindesk
