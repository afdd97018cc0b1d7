#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/services/AccountRecord.h"
#include "host/services/HostContents.h"
#include "host/services/NumberTable.h"
#include "host/services/PositionRecord.h"
#include "host/services/ProductRecord.h"
#include "host/services/SpreadTableRecord.h"
#include "host/services/SubItemRecord.h"

namespace margindesk {

// What changed since it was last published.
struct THostChanges {
  // Of one account's positions.
  struct TPositions {
    bool FAll = false;            // any of them
    std::set<std::string> FKeys;  // those that were set or removed
  };

  bool FMultiCurrency = false;  // whether the terminal runs in several currencies
  bool FCurrencyList = false;
  bool FCurrencyRatio = false;
  TCodeSet FAccounts;   // facts or figures
  TCodeSet FMonitored;  // what the monitor tells of an account: margin class and day-trade status
  TCodeSet FOnline;     // online status
  TCodeSet FSymbols;    // prices, facts or feed status
  TCodeSet FOrders;     // accounts of which orders changed
  std::map<TCode, TPositions, TCodeTextLess> FPositions;
};

// Everything that the host holds in memory: currencies, exchanges, products with their prices, accounts with
// their figures and positions. It holds whatever it is given: references to unknown currencies or products
// are allowed and read as unknown; a book checks them.
//
// Reads come in two kinds: records by code, which are arrays indexed by the code's number and are read at
// every repaint, and the rest. Records stay where they are for as long as this object lives.
//
// Every change is marked and told to nobody; whoever publishes takes the changes together once per turn of
// the event loop. One thread.
class THostData {
 public:
  // An empty host without a currency.
  THostData() = default;
  explicit THostData(const THostContents& contents) { Replace(contents); }
  THostData(const THostData&) = delete;
  THostData& operator=(const THostData&) = delete;

  // --- reads

  // A listed product; null for any other symbol.
  const TProductRecord* FindProduct(TCode symbol) const noexcept {
    const TProductRecord* product = FProducts.Find(symbol);
    return product != nullptr && product->IsListed() ? product : nullptr;
  }

  // The reference item of a symbol, made when there is none: it follows the product from then on. The items
  // of symbols that are or were held are loaded, those of others once LoadItem has been called.
  TSubItemRecord& GetItem(TCode symbol);

  // Brings an amount of the currency into the base currency; 1 for the empty currency, 0 when unknown.
  double GetRatio(TCode currency) const noexcept {
    return currency.Number() < FCurrencySlots.size() ? FCurrencySlots[currency.Number()].FRatio : 0;
  }
  bool IsExcluded(TCode currency) const noexcept {
    return currency.Number() < FCurrencySlots.size() && FCurrencySlots[currency.Number()].FExcluded;
  }

  const TAccountRecord* FindAccount(TCode account) const noexcept {
    const auto* slot = FAccounts.Find(account);
    return slot != nullptr && *slot && (*slot)->FKnown ? slot->get() : nullptr;
  }

  // The record of an account that is or once was known; null otherwise.
  const TAccountRecord* FindAccountRecord(TCode account) const noexcept {
    const auto* slot = FAccounts.Find(account);
    return slot != nullptr ? slot->get() : nullptr;
  }

  const TExchangeFacts* FindExchange(TCode exchange) const noexcept {  // null when unknown
    const TExchangeFacts* facts = FExchanges.Find(exchange);
    return facts != nullptr && !facts->FExchange.IsEmpty() ? facts : nullptr;
  }

  // Null where the book gives none.
  const TSpreadTableRecord* FindSpreadTable(TCode marketCode) const noexcept {
    const TSpreadTableRecord* table = FSpreadTables.Find(marketCode);
    return table != nullptr && !table->IsEmpty() ? table : nullptr;
  }
  const TMarginFacts* FindMargin(TCode symbol) const noexcept {
    const TMarginFacts* facts = FMargins.Find(symbol);
    return facts != nullptr && !facts->FSymbol.IsEmpty() ? facts : nullptr;
  }
  const TChargeFacts* FindCharge(TCode exchange) const noexcept {
    const TChargeFacts* facts = FCharges.Find(exchange);
    return facts != nullptr && !facts->FExchange.IsEmpty() ? facts : nullptr;
  }
  const std::vector<std::string>& GetOrderOptions(TCode exchange) const noexcept;  // in their order

  // Orders, in the order of entry; they stay where they are until the contents are replaced.
  const TOrderFacts* FindOrder(std::string_view orderID) const noexcept;  // null when unknown
  const std::vector<const TOrderFacts*>& GetOrders() const noexcept { return FOrderList; }
  const std::vector<const TOrderFacts*>& GetOrders(TCode account) const noexcept;
  const std::vector<TFillFacts>& GetFills(std::string_view orderID) const noexcept;  // in the order of time

  bool IsMultiCurrency() const noexcept { return FMultiCurrency; }
  bool IsChinaConnectOn() const noexcept { return FChinaConnect; }
  TCode GetBaseCurrency() const noexcept { return FBaseCurrency; }  // empty when there is none
  const std::vector<TCode>& GetCurrencies() const noexcept { return FCurrencies; }
  const std::vector<TCode>& GetSymbols() const noexcept { return FSymbols; }  // that something is known of
  const std::vector<TCode>& GetAccounts() const noexcept { return FAccountList; }  // in the order of arrival
  std::vector<TCode> GetPeriodExchanges() const;  // in their order; empty when none is shown
  const std::string& GetCustomFieldKey(std::string_view table, std::string_view field) const;  // "" for none

  // The accounts that hold a symbol, each once; some may have given it up since.
  const std::vector<TCode>& GetHolders(TCode symbol);

  // --- changes

  // Puts these contents in the place of all others and marks everything as changed. Accounts and symbols that
  // are no longer there become unknown.
  void Replace(const THostContents& contents);

  void SetMultiCurrency(bool multiCurrency);
  void SetChinaConnect(bool on);                           // marks every account
  void SetCurrency(const TCurrencyFacts& facts);           // adds or replaces
  void SetCurrencyRatio(TCode currency, double ratio);     // of a currency that is there
  void SetExchange(const TExchangeFacts& facts);           // adds or replaces
  void SetExchangeOpen(TCode exchange, bool open);         // of an exchange that is there
  void SetProduct(const TProductFacts& facts);             // adds, or replaces all but the prices
  void SetPrice(TCode symbol, const TPriceFacts& prices);  // of a symbol that is there
  void LoadItem(TCode symbol);                             // lets its reference item show what is known
  void SetItemStatus(TCode symbol, std::optional<std::int32_t> status);  // see TSubItemRecord::SetFeedStatus
  void SetAccount(const TAccountFacts& facts);  // adds, or replaces all but figures and positions
  void SetOnline(TCode account, bool online);
  void SetMonitorInfo(TCode account, std::string marginClass, std::int32_t dayTradeStatus);
  void SetFigures(const TFigureFacts& facts);       // adds or replaces, of an account that is there
  void SetConsolidated(const TFigureFacts& facts);  // likewise
  // The figures that an account has under a simulation's key, in the place of those that it had under it.
  // They are marked as no change and go when the contents are replaced.
  void SetSimulation(TCode account, const std::string& key, const std::vector<TFigureFacts>& figures);
  void RemoveSimulation(TCode account, std::string_view key);
  void SetPositions(TCode account, std::vector<TPositionFacts> positions);  // all of an account that is there
  void UpsertPosition(TPositionFacts facts);                                // of an account that is there
  bool RemovePosition(TCode account, std::string_view key);                 // false when there is none
  void SetOrder(const TOrderFacts& facts);  // adds, or replaces; an order keeps its account
  void AddFill(const TFillFacts& facts);    // of an order that is there
  void SetCustomFieldKey(std::string table, std::string field, std::string key);

  // --- what changed

  // Called when something changes while nothing else is waiting to be published.
  void SetChangeListener(std::function<void()> listener) { FListener = std::move(listener); }
  bool HasChanges() const noexcept { return FChanged; }
  const THostChanges& GetChanges() const noexcept { return FChanges; }
  THostChanges TakeChanges();  // and starts anew

 private:
  // What the totals read of a currency at every repaint.
  struct TCurrencySlot {
    double FRatio = 0;
    bool FExcluded = false;
  };

  // Who holds a symbol. Additions only append, so that a load costs no search.
  struct THolders {
    std::vector<TCode> FAccounts;
    bool FMayRepeat = false;
  };

  struct TOrderEntry {
    TOrderFacts FOrder;
    std::vector<TFillFacts> FFills;
  };

  TAccountRecord& MakeAccount(TCode account);
  TAccountRecord* FindOwn(TCode account) const noexcept;
  void PutCurrency(const TCurrencyFacts& facts);
  void PutExchange(const TExchangeFacts& facts);
  void PutAccount(const TAccountFacts& facts);
  void PutPositions(TAccountRecord& account, std::vector<TPositionFacts> positions);
  TSubItemRecord* FindItemWithFacts(TCode symbol) const noexcept;  // null when nothing is known of the symbol
  void FollowItem(const TSubItemRecord& item);                     // makes the product of the item's facts
  void ClearCurrencies();
  void ClearExchanges();
  void ClearProducts();
  void ClearAccounts();
  void ClearOrders();
  void PutMarkets(const THostContents& contents);
  void AddHolder(TCode symbol, TCode account);
  TPositionBlock::TItemOf GetItemOf();
  THostChanges& Mark();

  bool FMultiCurrency = true;
  bool FChinaConnect = false;
  TCode FBaseCurrency;
  std::vector<TCode> FCurrencies;
  std::vector<TCurrencySlot> FCurrencySlots{TCurrencySlot{1, false}};  // by number; first the empty currency
  TNumberTable<TExchangeFacts> FExchanges;
  std::vector<TCode> FExchangeList;
  TNumberTable<TProductRecord> FProducts;
  std::vector<TCode> FSymbols;  // that something is known of
  TNumberTable<std::unique_ptr<TSubItemRecord>> FItems;
  TNumberTable<THolders> FHolders;
  TNumberTable<std::unique_ptr<TAccountRecord>> FAccounts;
  std::vector<TCode> FAccountList;
  TCustomFieldKeys FCustomFieldKeys;
  TNumberTable<TSpreadTableRecord> FSpreadTables;        // by market code
  TNumberTable<TMarginFacts> FMargins;                   // by symbol
  TNumberTable<TChargeFacts> FCharges;                   // by exchange
  TNumberTable<std::vector<std::string>> FOrderOptions;  // by exchange
  std::vector<TCode> FMarketKeys;                        // every code under which those four have something
  std::map<std::string, TOrderEntry, std::less<>> FOrders;
  std::vector<const TOrderFacts*> FOrderList;
  TNumberTable<std::vector<const TOrderFacts*>> FOrdersOf;  // by account

  THostChanges FChanges;
  bool FChanged = false;
  std::function<void()> FListener;
};

}  // namespace margindesk
