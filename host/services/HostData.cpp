#include "host/services/HostData.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace margindesk {

TSubItemRecord& THostData::GetItem(TCode symbol) {
  std::unique_ptr<TSubItemRecord>& item = FItems.Make(symbol);
  if (!item) item = std::make_unique<TSubItemRecord>(symbol);
  return *item;
}

std::vector<TCode> THostData::GetPeriodExchanges() const {
  const auto order = [this](TCode exchange) { return FindExchange(exchange)->FPeriodOrder; };
  std::vector<TCode> exchanges;
  std::ranges::copy_if(FExchangeList, std::back_inserter(exchanges),
                       [&order](TCode exchange) { return order(exchange).has_value(); });
  std::ranges::stable_sort(exchanges, {}, order);
  return exchanges;
}

const std::string& THostData::GetCustomFieldKey(std::string_view table, std::string_view field) const {
  const auto found = FCustomFieldKeys.find(TTableFieldLess::TPair(table, field));
  return found == FCustomFieldKeys.end() ? TCode().Text() : found->second;
}

const std::vector<std::string>& THostData::GetOrderOptions(TCode exchange) const noexcept {
  static const std::vector<std::string> kNone;
  const std::vector<std::string>* options = FOrderOptions.Find(exchange);
  return options != nullptr ? *options : kNone;
}

const TOrderFacts* THostData::FindOrder(std::string_view orderID) const noexcept {
  const auto found = FOrders.find(orderID);
  return found == FOrders.end() ? nullptr : &found->second.FOrder;
}

const std::vector<const TOrderFacts*>& THostData::GetOrders(TCode account) const noexcept {
  static const std::vector<const TOrderFacts*> kNone;
  const auto* orders = FOrdersOf.Find(account);
  return orders != nullptr ? *orders : kNone;
}

const std::vector<TFillFacts>& THostData::GetFills(std::string_view orderID) const noexcept {
  static const std::vector<TFillFacts> kNone;
  const auto found = FOrders.find(orderID);
  return found == FOrders.end() ? kNone : found->second.FFills;
}

const std::vector<TCode>& THostData::GetHolders(TCode symbol) {
  THolders& holders = FHolders.Make(symbol);
  if (std::exchange(holders.FMayRepeat, false)) {
    std::ranges::sort(holders.FAccounts, {}, &TCode::Number);
    holders.FAccounts.erase(std::unique(holders.FAccounts.begin(), holders.FAccounts.end()),
                            holders.FAccounts.end());
  }
  return holders.FAccounts;
}

void THostData::Replace(const THostContents& contents) {
  ClearCurrencies();
  ClearExchanges();
  ClearProducts();
  ClearAccounts();
  ClearOrders();
  PutMarkets(contents);
  FMultiCurrency = contents.FMultiCurrency;
  FChinaConnect = contents.FChinaConnect;
  FCustomFieldKeys = contents.FCustomFieldKeys;
  for (const TCurrencyFacts& facts : contents.FCurrencies) PutCurrency(facts);
  for (const TExchangeFacts& facts : contents.FExchanges) PutExchange(facts);
  for (const TProductFacts& facts : contents.FProducts) SetProduct(facts);
  for (const auto& [symbol, prices] : contents.FPrices) SetPrice(symbol, prices);
  for (const TAccountFacts& facts : contents.FAccounts) PutAccount(facts);
  for (const TFigureFacts& facts : contents.FFigures) SetFigures(facts);
  for (const TFigureFacts& facts : contents.FConsolidated) SetConsolidated(facts);

  std::map<TCode, std::vector<TPositionFacts>, TCodeTextLess> positions;
  for (const TPositionFacts& facts : contents.FPositions) positions[facts.FAccount].push_back(facts);
  for (auto& [account, list] : positions) SetPositions(account, std::move(list));

  for (const TOrderFacts& facts : contents.FOrders) SetOrder(facts);
  for (const TFillFacts& facts : contents.FFills) AddFill(facts);

  THostChanges& changes = Mark();
  changes.FMultiCurrency = changes.FCurrencyList = changes.FCurrencyRatio = true;
}

TSubItemRecord* THostData::FindItemWithFacts(TCode symbol) const noexcept {
  const auto* item = FItems.Find(symbol);
  return item != nullptr && *item && (*item)->GetFacts() != nullptr ? item->get() : nullptr;
}

void THostData::FollowItem(const TSubItemRecord& item) {
  const TSymbolFacts* facts = item.GetFacts();
  FProducts.Make(item.GetSymbolCode()).Follow(facts != nullptr && facts->FProduct.FListed ? facts : nullptr);
}

void THostData::ClearCurrencies() {
  FBaseCurrency = TCode();
  FCurrencies.clear();
  FCurrencySlots.assign(1, TCurrencySlot{1, false});
}

void THostData::ClearExchanges() {
  for (const TCode exchange : FExchangeList) FExchanges.Make(exchange) = TExchangeFacts();
  FExchangeList.clear();
}

void THostData::ClearProducts() {
  for (const TCode symbol : FSymbols) {
    TSubItemRecord& item = GetItem(symbol);
    item.Clear();
    FollowItem(item);
    Mark().FSymbols.Insert(symbol);
  }
  FSymbols.clear();
}

void THostData::ClearAccounts() {
  for (const TCode code : FAccountList) {
    TAccountRecord& account = MakeAccount(code);
    if (account.FPositions) PutPositions(account, {});
    account.FKnown = false;
    MakeAccount(account.FFacts.FMaster).FSubAccounts.clear();
    account.FFacts = TAccountFacts();
    account.FFigures.Clear();
    account.FConsolidated.Clear();
    account.FSimulations.clear();
    Mark().FAccounts.Insert(code);
    Mark().FMonitored.Insert(code);
  }
  FAccountList.clear();
}

void THostData::ClearOrders() {
  for (const TOrderFacts* order : FOrderList) {
    FOrdersOf.Make(order->FAccount).clear();
    Mark().FOrders.Insert(order->FAccount);
  }
  FOrderList.clear();
  FOrders.clear();
}

void THostData::PutMarkets(const THostContents& contents) {
  for (const TCode key : FMarketKeys) {
    FSpreadTables.Make(key).Clear();
    FMargins.Make(key) = TMarginFacts();
    FCharges.Make(key) = TChargeFacts();
    FOrderOptions.Make(key).clear();
  }
  FMarketKeys.clear();
  const auto made = [this]<class T>(TNumberTable<T>& table, TCode key) -> T& {
    FMarketKeys.push_back(key);
    return table.Make(key);
  };
  for (const TSpreadBandFacts& facts : contents.FSpreadBands) {
    made(FSpreadTables, facts.FMarketCode).Add(facts);
  }
  for (const TMarginFacts& facts : contents.FMargins) made(FMargins, facts.FSymbol) = facts;
  for (const TChargeFacts& facts : contents.FCharges) made(FCharges, facts.FExchange) = facts;
  for (const TOrderOptionFacts& facts : contents.FOrderOptions) {
    made(FOrderOptions, facts.FExchange).push_back(facts.FOption);
  }
}

TAccountRecord& THostData::MakeAccount(TCode account) {
  std::unique_ptr<TAccountRecord>& slot = FAccounts.Make(account);
  if (!slot) slot = std::make_unique<TAccountRecord>(account);
  return *slot;
}

TAccountRecord* THostData::FindOwn(TCode account) const noexcept {
  const auto* slot = FAccounts.Find(account);
  return slot != nullptr && *slot && (*slot)->FKnown ? slot->get() : nullptr;
}

void THostData::PutCurrency(const TCurrencyFacts& facts) {
  const std::size_t number = facts.FCurrency.Number();
  if (number >= FCurrencySlots.size()) FCurrencySlots.resize(number + 1);
  FCurrencySlots[number] = {facts.FRatio, facts.FExcluded};
  if (std::ranges::find(FCurrencies, facts.FCurrency) == FCurrencies.end()) {
    FCurrencies.push_back(facts.FCurrency);
  }
  if (facts.FBase) FBaseCurrency = facts.FCurrency;
}

void THostData::PutExchange(const TExchangeFacts& facts) {
  if (FindExchange(facts.FExchange) == nullptr) FExchangeList.push_back(facts.FExchange);
  FExchanges.Make(facts.FExchange) = facts;
}

void THostData::PutAccount(const TAccountFacts& facts) {
  TAccountRecord& account = MakeAccount(facts.FAccount);
  if (!account.FKnown) FAccountList.push_back(facts.FAccount);
  account.FKnown = true;
  if (const TCode master = account.FFacts.FMaster; !master.IsEmpty()) {
    std::erase(MakeAccount(master).FSubAccounts, facts.FAccount);
    // A view of the master that the account leaves hears of it too.
    if (master != facts.FMaster) Mark().FAccounts.Insert(master);
  }
  if (!facts.FMaster.IsEmpty()) MakeAccount(facts.FMaster).FSubAccounts.push_back(facts.FAccount);
  account.FFacts = facts;
  Mark().FAccounts.Insert(facts.FAccount);
  Mark().FMonitored.Insert(facts.FAccount);
}

void THostData::PutPositions(TAccountRecord& account, std::vector<TPositionFacts> positions) {
  TCodeSet symbols;
  for (TPositionFacts& facts : positions) {
    facts.FAccount = account.GetAccountID();
    if (symbols.Insert(facts.FSymbol)) AddHolder(facts.FSymbol, facts.FAccount);
  }
  account.FPositions = std::make_shared<TPositionBlock>(std::move(positions), GetItemOf());
  Mark().FPositions[account.GetAccountID()].FAll = true;
}

void THostData::AddHolder(TCode symbol, TCode account) {
  THolders& holders = FHolders.Make(symbol);
  holders.FMayRepeat = !holders.FAccounts.empty();
  holders.FAccounts.push_back(account);
}

TPositionBlock::TItemOf THostData::GetItemOf() {
  return [this](TCode symbol) -> const TSubItemRecord& {
    TSubItemRecord& item = GetItem(symbol);
    item.Load();
    return item;
  };
}

THostChanges& THostData::Mark() {
  if (!std::exchange(FChanged, true) && FListener) FListener();
  return FChanges;
}

THostChanges THostData::TakeChanges() {
  FChanged = false;
  return std::exchange(FChanges, THostChanges());
}

}  // namespace margindesk
