#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <string_view>

#include "host/book/BookColumn.h"
#include "host/book/Figures.h"

namespace margindesk {

// Every table of the book and every column of it stands here and nowhere else: the schema of the store, CSV
// import and export, the checks and the reads are derived. A new table is one entry in each of the two lists,
// with FSince one above the highest so far; opening an older book then adds it.
enum class TTable : std::size_t {
  kSettings,
  kCurrencies,
  kExchanges,
  kProducts,
  kPrices,
  kAccounts,
  kAccountAttributes,
  kCustomFields,
  kCustomValues,
  kCustomBalances,
  kCustomFigures,
  kChinaConnectLinks,
  kFigures,
  kConsolidated,
  kPositions,
  kSpreadBands,
  kOrderOptions,
  kMargins,
  kCharges,
  kOrders,
  kFills,
};

struct TBookTable {
  TTable FTable;
  std::string_view FName;  // of the table in the store; its CSV file is this name and ".csv"
  bool FRequired;          // an import without this file is refused
  int FSince;              // schema version that brought the table
  std::span<const TBookColumn> FColumns;

  // Index of a column, for reads and writes. Meant for constants: a name that is not there does not compile
  // in a constant expression and throws std::out_of_range elsewhere.
  constexpr std::size_t Column(std::string_view name) const {
    for (std::size_t i = 0; i < FColumns.size(); ++i) {
      if (FColumns[i].FName == name) return i;
    }
    throw std::out_of_range("no such column");
  }
};

// The columns that name an account, a currency, an exchange or a product known to the book.
constexpr TBookColumn AccountColumn(std::string_view name) {
  return TextColumn(name).To(TTable::kAccounts, "account");
}
constexpr TBookColumn CurrencyColumn() { return TextColumn("currency").To(TTable::kCurrencies, "currency"); }
constexpr TBookColumn SymbolColumn(std::string_view name) {
  return TextColumn(name).To(TTable::kProducts, "symbol");
}
constexpr TBookColumn ExchangeColumn() { return TextColumn("exchange").To(TTable::kExchanges, "exchange"); }
// An empty currency is the account's total row, which is in the base currency.
constexpr TBookColumn CurrencyOrTotalColumn() { return CurrencyColumn().Nullable(); }

// The leading columns of a table followed by one number column for each figure.
template <std::size_t N>
constexpr auto WithFigureColumns(const std::array<TBookColumn, N>& leading) {
  std::array<TBookColumn, N + kFigureCount> columns{};
  std::copy(leading.begin(), leading.end(), columns.begin());
  for (std::size_t i = 0; i < kFigureCount; ++i) columns[N + i] = NumberColumn(kFigureList[i].FColumn);
  return columns;
}

inline constexpr std::string_view kBookSettingNames[] = {"multi_currency", "china_connect"};
inline constexpr std::string_view kBookOptionRights[] = {"C", "P"};
inline constexpr std::string_view kBookPositionSides[] = {"L", "S"};
inline constexpr std::string_view kBookOrderOptions[] = {"Open", "Close", "Client", "House", "RT"};
inline constexpr std::string_view kBookOrderSides[] = {"B", "S"};
inline constexpr std::string_view kBookOpenCloses[] = {"Open", "Close"};
inline constexpr std::string_view kBookPrincipals[] = {"Client", "House", "RT"};
inline constexpr std::string_view kBookOrderStates[] = {"resting", "filled", "cancelled"};

inline constexpr TBookColumn kSettingsColumns[] = {
    ChoiceColumn("name", kBookSettingNames).Key(),
    FlagColumn("value"),
};

inline constexpr TBookColumn kCurrenciesColumns[] = {
    TextColumn("currency").Key(),
    NumberColumn("ratio").Above(0),
    FlagColumn("excluded"),
    FlagColumn("base"),
};

inline constexpr TBookColumn kExchangesColumns[] = {
    TextColumn("exchange").Key(), TextColumn("name").Nullable(),
    FlagColumn("china_connect"),  IntegerColumn("period_order").AtLeast(0).Nullable().Unique(),
    FlagColumn("market_open"),
};

inline constexpr TBookColumn kProductsColumns[] = {
    TextColumn("symbol").Key(),
    TextColumn("name").Nullable(),
    ExchangeColumn(),
    CurrencyColumn(),
    IntegerColumn("product_type").AtLeast(0),
    NumberColumn("lot_size").Above(0),
    NumberColumn("contract_size").Above(0),
    NumberColumn("price_multiplier").Above(0).Nullable(),
    FlagColumn("otc"),
    NumberColumn("otc_minimum").AtLeast(0).Nullable(),
    NumberColumn("otc_increment").AtLeast(0).Nullable(),
    TextColumn("market_code").Nullable(),
    SymbolColumn("underlying").Nullable(),
    NumberColumn("strike").AtLeast(0).Nullable(),
    DateColumn("expiry").Nullable(),
    ChoiceColumn("option_right", kBookOptionRights).Nullable(),
};

inline constexpr TBookColumn kPricesColumns[] = {
    SymbolColumn("symbol").Key(),
    NumberColumn("last"),
    NumberColumn("bid"),
    NumberColumn("ask"),
    NumberColumn("previous_close").Nullable(),
    NumberColumn("reference").Nullable(),
};

inline constexpr TBookColumn kAccountsColumns[] = {
    TextColumn("account").Key(),
    TextColumn("name").Nullable(),
    TextColumn("user").Nullable(),
    TextColumn("type").Nullable(),
    AccountColumn("master").Nullable(),
    IntegerColumn("master_type").Nullable(),
    IntegerColumn("margin_type"),
    TextColumn("mobile").Nullable(),
    TextColumn("email").Nullable(),
    IntegerColumn("status_flags").AtLeast(0),
    TextColumn("bod_update_time").Nullable(),
    TextColumn("margin_class").Nullable(),
    IntegerColumn("day_trade_status"),
    FlagColumn("online"),
    TextColumn("position_isolation").Nullable(),
    TextColumn("margin_method").Nullable(),
};

inline constexpr TBookColumn kAccountAttributesColumns[] = {
    AccountColumn("account").Key(),
    TextColumn("attribute").Key(),
    TextColumn("value").Nullable(),
};

inline constexpr TBookColumn kCustomFieldsColumns[] = {
    TextColumn("table_name").Key(),
    TextColumn("field").Key(),
    TextColumn("key").Unique(),
};

inline constexpr TBookColumn kCustomValuesColumns[] = {
    AccountColumn("account").Key(),
    TextColumn("key").Key().To(TTable::kCustomFields, "key"),
    TextColumn("value").Nullable(),
};

inline constexpr TBookColumn kCustomBalancesColumns[] = {
    AccountColumn("account").Key(),
    CurrencyColumn().Key(),
    TextColumn("key").Key().To(TTable::kCustomFields, "key"),
    NumberColumn("amount"),
};

inline constexpr TBookColumn kCustomFiguresColumns[] = {
    AccountColumn("account").Key(),
    CurrencyOrTotalColumn().Key(),
    IntegerColumn("number").AtLeast(0).Key(),
    TextColumn("value").Nullable(),
};

inline constexpr TBookColumn kChinaConnectLinksColumns[] = {
    AccountColumn("account").Key(),
    AccountColumn("linked_account"),
};

inline constexpr auto kFiguresColumns = WithFigureColumns(std::to_array<TBookColumn>({
    AccountColumn("account").Key(),
    CurrencyOrTotalColumn().Key(),
    FlagColumn("separate_row"),
}));

inline constexpr auto kConsolidatedColumns = WithFigureColumns(std::to_array<TBookColumn>({
    AccountColumn("account").Key(),
    CurrencyOrTotalColumn().Key(),
}));

inline constexpr TBookColumn kPositionsColumns[] = {
    AccountColumn("account").Key(),
    TextColumn("key").Key().WhenEmpty("symbol"),
    SymbolColumn("symbol"),
    NumberColumn("holding_quantity"),
    NumberColumn("excluded_quantity"),
    NumberColumn("completed_buy_amount"),
    NumberColumn("completed_sell_amount"),
    NumberColumn("pl_first_part"),
    NumberColumn("realized_pl"),
    NumberColumn("pl_second_part"),
    FlagColumn("price_based"),
    NumberColumn("bod_quantity"),
    NumberColumn("voucher_quantity"),
    NumberColumn("today_buy_quantity"),
    NumberColumn("today_sell_quantity"),
    NumberColumn("quantity"),
    NumberColumn("covered_quantity"),
    ChoiceColumn("side", kBookPositionSides),
    NumberColumn("buy_average_price"),
    NumberColumn("sell_average_price"),
    NumberColumn("average_price"),
};

inline constexpr TBookColumn kSpreadBandsColumns[] = {
    TextColumn("market_code").Key(),
    NumberColumn("lower_limit").AtLeast(0).Key(),
    NumberColumn("upper_limit").Above(0),
    NumberColumn("tick").Above(0),
};

inline constexpr TBookColumn kOrderOptionsColumns[] = {
    ExchangeColumn().Key(),
    ChoiceColumn("option", kBookOrderOptions).Key(),
};

inline constexpr TBookColumn kMarginsColumns[] = {
    SymbolColumn("symbol").Key(),
    NumberColumn("initial_ratio").AtLeast(0),
    NumberColumn("maintenance_ratio").AtLeast(0),
    NumberColumn("minimum_ratio").AtLeast(0),
    NumberColumn("lending_ratio").AtLeast(0),
    NumberColumn("initial_lot").AtLeast(0),
    NumberColumn("maintenance_lot").AtLeast(0),
    NumberColumn("initial_spread_lot").AtLeast(0),
    NumberColumn("maintenance_spread_lot").AtLeast(0),
};

inline constexpr TBookColumn kChargesColumns[] = {
    ExchangeColumn().Key(),
    NumberColumn("rate").AtLeast(0),
    NumberColumn("per_unit").AtLeast(0),
    NumberColumn("minimum").AtLeast(0),
};

inline constexpr TBookColumn kOrdersColumns[] = {
    TextColumn("order_id").Key(),
    AccountColumn("account"),
    SymbolColumn("symbol"),
    ChoiceColumn("side", kBookOrderSides),
    NumberColumn("price").AtLeast(0),
    NumberColumn("quantity").Above(0),
    NumberColumn("filled_quantity").AtLeast(0),
    ChoiceColumn("open_close", kBookOpenCloses).Nullable(),
    ChoiceColumn("principal", kBookPrincipals).Nullable(),
    FlagColumn("market"),
    ChoiceColumn("state", kBookOrderStates),
    TextColumn("entered"),
    NumberColumn("hold_amount").AtLeast(0),
};

inline constexpr TBookColumn kFillsColumns[] = {
    TextColumn("fill_id").Key(),       TextColumn("order_id").To(TTable::kOrders, "order_id"),
    NumberColumn("price").Above(0),    NumberColumn("quantity").Above(0),
    NumberColumn("charge").AtLeast(0), TextColumn("time"),
};

// In the order of TTable. A table stands after those it refers to.
inline constexpr auto kBookTables = std::to_array<TBookTable>({
    {TTable::kSettings, "settings", false, 1, kSettingsColumns},
    {TTable::kCurrencies, "currencies", true, 1, kCurrenciesColumns},
    {TTable::kExchanges, "exchanges", false, 1, kExchangesColumns},
    {TTable::kProducts, "products", false, 1, kProductsColumns},
    {TTable::kPrices, "prices", false, 1, kPricesColumns},
    {TTable::kAccounts, "accounts", true, 1, kAccountsColumns},
    {TTable::kAccountAttributes, "account_attributes", false, 1, kAccountAttributesColumns},
    {TTable::kCustomFields, "custom_fields", false, 1, kCustomFieldsColumns},
    {TTable::kCustomValues, "custom_values", false, 1, kCustomValuesColumns},
    {TTable::kCustomBalances, "custom_balances", false, 1, kCustomBalancesColumns},
    {TTable::kCustomFigures, "custom_figures", false, 1, kCustomFiguresColumns},
    {TTable::kChinaConnectLinks, "china_connect_links", false, 1, kChinaConnectLinksColumns},
    {TTable::kFigures, "figures", false, 1, kFiguresColumns},
    {TTable::kConsolidated, "consolidated", false, 1, kConsolidatedColumns},
    {TTable::kPositions, "positions", false, 1, kPositionsColumns},
    {TTable::kSpreadBands, "spread_bands", false, 2, kSpreadBandsColumns},
    {TTable::kOrderOptions, "order_options", false, 2, kOrderOptionsColumns},
    {TTable::kMargins, "margins", false, 2, kMarginsColumns},
    {TTable::kCharges, "charges", false, 2, kChargesColumns},
    {TTable::kOrders, "orders", false, 2, kOrdersColumns},
    {TTable::kFills, "fills", false, 2, kFillsColumns},
});

// The schema version that this program writes; it refuses a book with a higher one.
inline constexpr int kBookSchemaVersion =
    std::max_element(kBookTables.begin(), kBookTables.end(), [](const TBookTable& a, const TBookTable& b) {
      return a.FSince < b.FSince;
    })->FSince;

constexpr const TBookTable& BookTable(TTable table) { return kBookTables[static_cast<std::size_t>(table)]; }

// The table of this name, or null.
const TBookTable* FindBookTable(std::string_view name);

}  // namespace margindesk
