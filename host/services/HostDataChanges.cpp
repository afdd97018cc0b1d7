// Changes of single facts: each puts its fact in place and marks what it changed.
#include <algorithm>
#include <utility>

#include "host/services/HostData.h"
#include "model/contract/Constdef.h"

namespace margindesk {

void THostData::SetMultiCurrency(bool multiCurrency) {
  if (multiCurrency == FMultiCurrency) return;
  FMultiCurrency = multiCurrency;
  Mark().FMultiCurrency = true;
}

void THostData::SetChinaConnect(bool on) {
  if (on == FChinaConnect) return;
  FChinaConnect = on;
  Mark().FCurrencyList = true;  // the filters that views offer
  for (const TCode account : FAccountList) Mark().FAccounts.Insert(account);
}

void THostData::SetCurrency(const TCurrencyFacts& facts) {
  PutCurrency(facts);
  THostChanges& changes = Mark();
  changes.FCurrencyList = changes.FCurrencyRatio = true;
}

void THostData::SetCurrencyRatio(TCode currency, double ratio) {
  if (std::ranges::find(FCurrencies, currency) == FCurrencies.end()) return;
  FCurrencySlots[currency.Number()].FRatio = ratio;
  Mark().FCurrencyRatio = true;
}

void THostData::SetExchange(const TExchangeFacts& facts) {
  PutExchange(facts);
  // Its products are valued otherwise while it trades.
  for (const TCode symbol : FSymbols) {
    if (GetItem(symbol).GetFacts()->FProduct.FExchange == facts.FExchange) Mark().FSymbols.Insert(symbol);
  }
}

void THostData::SetExchangeOpen(TCode exchange, bool open) {
  const TExchangeFacts* found = FindExchange(exchange);
  if (found == nullptr || found->FOpen == open) return;
  TExchangeFacts facts = *found;
  facts.FOpen = open;
  SetExchange(facts);
}

void THostData::SetProduct(const TProductFacts& facts) {
  TSubItemRecord& item = GetItem(facts.FSymbol);
  if (item.GetFacts() == nullptr) FSymbols.push_back(facts.FSymbol);
  item.SetProduct(facts);
  FollowItem(item);
  Mark().FSymbols.Insert(facts.FSymbol);
}

void THostData::SetPrice(TCode symbol, const TPriceFacts& prices) {
  TSubItemRecord* item = FindItemWithFacts(symbol);
  if (item == nullptr) return;
  item->SetPrices(prices);
  FollowItem(*item);
  Mark().FSymbols.Insert(symbol);
}

void THostData::LoadItem(TCode symbol) {
  TSubItemRecord& item = GetItem(symbol);
  item.Load();
  if (item.IsKnown()) Mark().FSymbols.Insert(symbol);
}

void THostData::SetItemStatus(TCode symbol, std::optional<std::int32_t> status) {
  TSubItemRecord* item = FindItemWithFacts(symbol);
  if (item == nullptr) return;
  item->SetFeedStatus(status);
  Mark().FSymbols.Insert(symbol);
}

void THostData::SetAccount(const TAccountFacts& facts) { PutAccount(facts); }

void THostData::SetOnline(TCode account, bool online) {
  TAccountRecord* record = FindOwn(account);
  if (record == nullptr || record->FFacts.FOnline == online) return;
  record->FFacts.FOnline = online;
  Mark().FOnline.Insert(account);
}

void THostData::SetMonitorInfo(TCode account, std::string marginClass, std::int32_t dayTradeStatus) {
  TAccountRecord* record = FindOwn(account);
  if (record == nullptr) return;
  record->FFacts.FMarginClass = std::move(marginClass);
  record->FFacts.FDayTradeStatus = dayTradeStatus;
  Mark().FMonitored.Insert(account);
}

void THostData::SetFigures(const TFigureFacts& facts) {
  TAccountRecord* record = FindOwn(facts.FAccount);
  if (record == nullptr) return;
  record->FFigures.Set(facts);
  Mark().FAccounts.Insert(facts.FAccount);
}

void THostData::SetConsolidated(const TFigureFacts& facts) {
  TAccountRecord* record = FindOwn(facts.FAccount);
  if (record == nullptr) return;
  record->FConsolidated.Set(facts);
  Mark().FAccounts.Insert(facts.FAccount);
}

void THostData::SetSimulation(TCode account, const std::string& key,
                              const std::vector<TFigureFacts>& figures) {
  TAccountRecord* record = FindOwn(account);
  if (record == nullptr) return;
  record->FSimulations.erase(key);
  TAccountDataList& list = record->FSimulations.try_emplace(key, *record).first->second;
  for (const TFigureFacts& facts : figures) list.Set(facts);
}

void THostData::RemoveSimulation(TCode account, std::string_view key) {
  TAccountRecord* record = FindOwn(account);
  if (record == nullptr) return;
  const auto found = record->FSimulations.find(key);
  if (found != record->FSimulations.end()) record->FSimulations.erase(found);
}

void THostData::SetPositions(TCode account, std::vector<TPositionFacts> positions) {
  TAccountRecord* record = FindOwn(account);
  if (record != nullptr) PutPositions(*record, std::move(positions));
}

void THostData::UpsertPosition(TPositionFacts facts) {
  TAccountRecord* record = FindOwn(facts.FAccount);
  if (record == nullptr) return;
  if (facts.FKey.empty()) facts.FKey = facts.FSymbol.Text();
  Mark().FPositions[facts.FAccount].FKeys.insert(facts.FKey);

  std::shared_ptr<TPositionBlock>& block = record->FPositions;
  const TPositionFacts* before = block ? block->Find(facts.FKey) : nullptr;
  if (before == nullptr || before->FSymbol != facts.FSymbol) AddHolder(facts.FSymbol, facts.FAccount);
  if (before != nullptr && block.use_count() == 1) {
    block->Replace(facts, GetItemOf());  // nobody else sees the block
    return;
  }
  std::vector<TPositionFacts> positions;
  if (block) positions = block->GetFacts();
  positions.push_back(std::move(facts));
  block = std::make_shared<TPositionBlock>(std::move(positions), GetItemOf());
}

bool THostData::RemovePosition(TCode account, std::string_view key) {
  TAccountRecord* record = FindOwn(account);
  if (record == nullptr || !record->FPositions || record->FPositions->Find(key) == nullptr) return false;
  Mark().FPositions[account].FKeys.insert(std::string(key));
  std::vector<TPositionFacts> positions = record->FPositions->GetFacts();
  std::erase_if(positions, [key](const TPositionFacts& facts) { return facts.FKey == key; });
  record->FPositions = std::make_shared<TPositionBlock>(std::move(positions), GetItemOf());
  return true;
}

void THostData::SetOrder(const TOrderFacts& facts) {
  const auto [entry, isNew] = FOrders.try_emplace(facts.FOrderID);
  TOrderFacts& order = entry->second.FOrder;
  const TCode account = isNew ? facts.FAccount : order.FAccount;
  order = facts;
  order.FAccount = account;
  if (isNew) {
    FOrderList.push_back(&order);
    FOrdersOf.Make(account).push_back(&order);
  }
  Mark().FOrders.Insert(account);
}

void THostData::AddFill(const TFillFacts& facts) {
  const auto found = FOrders.find(facts.FOrderID);
  if (found == FOrders.end()) return;
  found->second.FFills.push_back(facts);
  Mark().FOrders.Insert(found->second.FOrder.FAccount);
}

void THostData::SetCustomFieldKey(std::string table, std::string field, std::string key) {
  FCustomFieldKeys[{std::move(table), std::move(field)}] = std::move(key);
}

}  // namespace margindesk
