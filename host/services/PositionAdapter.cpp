#include "host/services/PositionAdapter.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "model/contract/LanguageManager.h"

namespace margindesk {

namespace {

constexpr std::string_view kHostSection = "Host";

const std::string& HostText(std::string_view prefix, const std::string& word) {
  if (word.empty()) return word;
  const std::string& text =
      TCustomLanguageManager::GetInstance().GetLanguageText(kHostSection, std::string(prefix) + word);
  return text.empty() ? word : text;
}

// The positions of a block that are under one of the keys.
TPositionMap PositionsUnder(const std::shared_ptr<TPositionBlock>& block, const std::set<std::string>& keys) {
  std::vector<std::size_t> places;
  if (block) {
    const auto& all = block->GetContents().FKeys;
    for (const std::string& key : keys) {
      const auto found = std::ranges::lower_bound(all, key);
      if (found != all.end() && *found == key) {
        places.push_back(static_cast<std::size_t>(found - all.begin()));
      }
    }
  }
  return MakePositionMap(block, places);
}

// The positions of a block in one of the symbols.
TPositionMap PositionsIn(const std::shared_ptr<TPositionBlock>& block, const TCodeSet& symbols) {
  std::vector<std::size_t> places;
  if (block) {
    const auto& facts = block->GetFacts();
    for (std::size_t place = 0; place < facts.size(); ++place) {
      if (symbols.Contains(facts[place].FSymbol)) places.push_back(place);
    }
  }
  return MakePositionMap(block, places);
}

}  // namespace

void TPositionAdapter::AddPositionMarketDataHandler(THandler handler, const void* owner) {
  FMarketDataHandlers.Add(handler, owner);
}

void TPositionAdapter::RemovePositionMarketDataHandler(const void* owner) {
  FMarketDataHandlers.RemoveOwner(owner);
}

void TPositionAdapter::RegisterPositionListener(TCode account, THandler handler, const void* owner,
                                                TCode previousAccount) {
  FPositionHandlers.Register(account, handler, owner, previousAccount);
}

void TPositionAdapter::UnregisterPositionListener(TCode account, const void* owner) {
  FPositionHandlers.Unregister(account, owner);
}

void TPositionAdapter::RegisterSubAccountPositionListener(TCode masterAccount, THandler handler,
                                                          const void* owner, TCode previousAccount) {
  FSubAccountHandlers.Register(masterAccount, handler, owner, previousAccount);
}

void TPositionAdapter::UnregisterSubAccountPositionListener(TCode masterAccount, const void* owner) {
  FSubAccountHandlers.Unregister(masterAccount, owner);
}

void TPositionAdapter::GetPositionList(TCode account, TPositionMap& positions) const {
  const TAccountRecord* record = FData.FindAccount(account);
  if (record == nullptr) {
    positions.Clear();
  } else {
    positions = MakePositionMap(record->FPositions);
  }
}

bool TPositionAdapter::GetPositionMarketValue(TCode symbol, double quantity, double& value) const {
  const TProductRecord* product = FData.FindProduct(symbol);
  double unit = 0;
  if (product == nullptr || !product->GetUnitValue(unit)) return false;
  value = quantity * unit;
  return true;
}

const std::string& TPositionAdapter::GetPositionIsolationText(TCode account) const {
  const TAccountRecord* record = FData.FindAccount(account);
  return record == nullptr ? TCode().Text()
                           : HostText("PositionIsolation_", record->FFacts.FPositionIsolation);
}

const std::string& TPositionAdapter::GetMarginMethodText(TCode account) const {
  const TAccountRecord* record = FData.FindAccount(account);
  return record == nullptr ? TCode().Text() : HostText("MarginMethod_", record->FFacts.FMarginMethod);
}

void TPositionAdapter::Publish(const THostChanges& changes) {
  PublishPositions(changes);
  PublishPrices(changes);
}

void TPositionAdapter::PublishPositions(const THostChanges& changes) {
  if (FPositionHandlers.GetCount() + FSubAccountHandlers.GetCount() == 0) return;
  TAccountPositionMap changed;
  std::vector<TCode> accounts;
  TCodeSet masters;
  for (const auto& [account, positions] : changes.FPositions) {
    const TAccountRecord* record = FData.FindAccountRecord(account);
    changed.emplace(account, positions.FAll ? MakePositionMap(record->FPositions)
                                            : PositionsUnder(record->FPositions, positions.FKeys));
    accounts.push_back(account);
    if (record->IsSubAccount()) masters.Insert(record->GetMasterAccountID());
  }
  if (accounts.empty()) return;
  FPositionHandlers.NotifyOnce(accounts, this, &changed);
  if (!masters.IsEmpty()) FSubAccountHandlers.NotifyOnce(masters.GetCodes(), this, &changed);
}

void TPositionAdapter::PublishPrices(const THostChanges& changes) {
  if (FMarketDataHandlers.GetCount() == 0) return;
  TCodeSet holders;
  for (const TCode symbol : changes.FSymbols.GetCodes()) {
    for (const TCode account : FData.GetHolders(symbol)) holders.Insert(account);
  }
  TAccountPositionMap changed;
  for (const TCode account : holders.GetCodes()) {
    const TAccountRecord* record = FData.FindAccount(account);
    if (record == nullptr) continue;
    TPositionMap positions = PositionsIn(record->FPositions, changes.FSymbols);
    if (!positions.IsEmpty()) changed.emplace(account, std::move(positions));
  }
  if (!changed.empty()) FMarketDataHandlers.Notify(this, &changed);
}

}  // namespace margindesk
