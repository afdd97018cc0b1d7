#include "host/services/HostContentsOfBook.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <unordered_map>

#include "host/book/Book.h"
#include "host/services/FactColumns.h"

namespace margindesk {

namespace {

TCode CodeAt(const TBookRows& rows, std::size_t column) { return TCode(rows.Text(column)); }
std::string TextAt(const TBookRows& rows, std::size_t column) { return std::string(rows.Text(column)); }

std::optional<std::int32_t> OptionalAt(const TBookRows& rows, std::size_t column) {
  if (rows.IsEmpty(column)) return std::nullopt;
  return rows.Integer(column);
}

template <class TFacts, std::size_t N>
void ReadNumbers(const TBookRows& rows, const TNumberColumn<TFacts> (&columns)[N], TFacts& facts) {
  for (const TNumberColumn<TFacts>& column : columns) {
    facts.*column.FNumber = rows.Number(column.FColumn);
  }
}

// The place of a choice in the list of the column's choices; that many when it is none of them.
std::size_t ChoiceAt(const TBookRows& rows, std::size_t column, std::span<const std::string_view> names) {
  return static_cast<std::size_t>(std::ranges::find(names, rows.Text(column)) - names.begin());
}

void ReadSettings(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kSettings;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    const std::string_view name = rows.Text(At(table, "name"));
    const bool value = rows.Flag(At(table, "value"));
    if (name == "multi_currency") contents.FMultiCurrency = value;
    if (name == "china_connect") contents.FChinaConnect = value;
  }
}

void ReadCurrencies(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kCurrencies;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    contents.FCurrencies.push_back({CodeAt(rows, At(table, "currency")), rows.Number(At(table, "ratio")),
                                    rows.Flag(At(table, "excluded")), rows.Flag(At(table, "base"))});
  }
}

void ReadExchanges(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kExchanges;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    contents.FExchanges.push_back({CodeAt(rows, At(table, "exchange")), rows.Flag(At(table, "china_connect")),
                                   rows.Flag(At(table, "market_open")),
                                   OptionalAt(rows, At(table, "period_order"))});
  }
}

void ReadProducts(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kProducts;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    TProductFacts& product = contents.FProducts.emplace_back();
    product.FSymbol = CodeAt(rows, At(table, "symbol"));
    product.FName = TextAt(rows, At(table, "name"));
    product.FExchange = CodeAt(rows, At(table, "exchange"));
    product.FCurrency = CodeAt(rows, At(table, "currency"));
    product.FProductType = rows.Integer(At(table, "product_type"));
    product.FLotSize = rows.Number(At(table, "lot_size"));
    product.FContractSize = rows.Number(At(table, "contract_size"));
    product.FPriceMultiplier = rows.Number(At(table, "price_multiplier"));
    product.FOverTheCounter = rows.Flag(At(table, "otc"));
    product.FMinimum = rows.Number(At(table, "otc_minimum"));
    product.FIncrement = rows.Number(At(table, "otc_increment"));
    product.FMarketCode = CodeAt(rows, At(table, "market_code"));
    product.FUnderlying = CodeAt(rows, At(table, "underlying"));
    product.FStrike = rows.Number(At(table, "strike"));
    product.FExpiry = TextAt(rows, At(table, "expiry"));
    const std::string_view right = rows.Text(At(table, "option_right"));
    product.FOptionRight = right.empty() ? '\0' : right.front();
  }
}

void ReadPrices(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kPrices;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    contents.FPrices.push_back(
        {CodeAt(rows, At(table, "symbol")),
         {rows.Number(At(table, "last")), rows.Number(At(table, "bid")), rows.Number(At(table, "ask")),
          rows.Number(At(table, "previous_close")), rows.Number(At(table, "reference"))}});
  }
}

void ReadAccounts(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kAccounts;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    TAccountFacts& account = contents.FAccounts.emplace_back();
    account.FAccount = CodeAt(rows, At(table, "account"));
    account.FName = TextAt(rows, At(table, "name"));
    account.FUser = TextAt(rows, At(table, "user"));
    account.FType = TextAt(rows, At(table, "type"));
    account.FMaster = CodeAt(rows, At(table, "master"));
    account.FMasterType = OptionalAt(rows, At(table, "master_type"));
    account.FMarginType = rows.Integer(At(table, "margin_type"));
    account.FMobile = TextAt(rows, At(table, "mobile"));
    account.FEmail = TextAt(rows, At(table, "email"));
    account.FStatusFlags = rows.Integer(At(table, "status_flags"));
    account.FBODUpdateTime = TextAt(rows, At(table, "bod_update_time"));
    account.FMarginClass = TextAt(rows, At(table, "margin_class"));
    account.FDayTradeStatus = rows.Integer(At(table, "day_trade_status"));
    account.FOnline = rows.Flag(At(table, "online"));
    account.FPositionIsolation = TextAt(rows, At(table, "position_isolation"));
    account.FMarginMethod = TextAt(rows, At(table, "margin_method"));
  }
}

// The accounts that were read, by code, to be given what other tables say of them.
class TAccountIndex {
 public:
  explicit TAccountIndex(THostContents& contents) {
    for (TAccountFacts& account : contents.FAccounts) FAccounts.emplace(account.FAccount, &account);
  }

  // Calls `take` with each row of the table and the account that it is about.
  template <class TTake>
  void ForEachRow(TBook& book, TTable table, TTake take) const {
    TBookRows rows = book.Read(table);
    const std::size_t column = At(table, "account");
    while (rows.Next()) {
      const auto found = FAccounts.find(CodeAt(rows, column));
      if (found != FAccounts.end()) take(rows, *found->second);
    }
  }

 private:
  std::unordered_map<TCode, TAccountFacts*> FAccounts;
};

void ReadAccountDetails(TBook& book, THostContents& contents) {
  const TAccountIndex accounts(contents);
  accounts.ForEachRow(book, TTable::kAccountAttributes, [](const TBookRows& rows, TAccountFacts& account) {
    constexpr auto table = TTable::kAccountAttributes;
    account.FAttributes[TextAt(rows, At(table, "attribute"))] = rows.Text(At(table, "value"));
  });
  accounts.ForEachRow(book, TTable::kCustomValues, [](const TBookRows& rows, TAccountFacts& account) {
    constexpr auto table = TTable::kCustomValues;
    account.FCustomValues[TextAt(rows, At(table, "key"))] = rows.Text(At(table, "value"));
  });
  accounts.ForEachRow(book, TTable::kCustomBalances, [](const TBookRows& rows, TAccountFacts& account) {
    constexpr auto table = TTable::kCustomBalances;
    account.FCustomBalances[TextAt(rows, At(table, "key"))].emplace_back(CodeAt(rows, At(table, "currency")),
                                                                         rows.Number(At(table, "amount")));
  });
  accounts.ForEachRow(book, TTable::kChinaConnectLinks, [](const TBookRows& rows, TAccountFacts& account) {
    account.FChinaConnectAccount = CodeAt(rows, At(TTable::kChinaConnectLinks, "linked_account"));
  });
}

void ReadCustomFields(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kCustomFields;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    contents.FCustomFieldKeys[{TextAt(rows, At(table, "table_name")), TextAt(rows, At(table, "field"))}] =
        rows.Text(At(table, "key"));
  }
}

// The figure columns of a row, which stand side by side in the order of TFigure.
void ReadFigureColumns(const TBookRows& rows, TTable table, TFigureFacts& facts) {
  facts.FAccount = CodeAt(rows, At(table, "account"));
  facts.FCurrency = CodeAt(rows, At(table, "currency"));
  const std::size_t first = At(table, kFigureList[0].FColumn);
  for (std::size_t i = 0; i < kFigureCount; ++i) facts.FFigures[i] = rows.Number(first + i);
}

void ReadFigures(TBook& book, THostContents& contents) {
  TBookRows figures = book.Read(TTable::kFigures);
  while (figures.Next()) {
    TFigureFacts& facts = contents.FFigures.emplace_back();
    ReadFigureColumns(figures, TTable::kFigures, facts);
    facts.FSeparateRow = figures.Flag(At(TTable::kFigures, "separate_row"));
  }
  TBookRows consolidated = book.Read(TTable::kConsolidated);
  while (consolidated.Next()) {
    ReadFigureColumns(consolidated, TTable::kConsolidated, contents.FConsolidated.emplace_back());
  }
}

void ReadCustomFigures(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kCustomFigures;
  std::unordered_map<TCode, std::vector<std::size_t>> places;  // of an account's figures
  for (std::size_t i = 0; i < contents.FFigures.size(); ++i)
    places[contents.FFigures[i].FAccount].push_back(i);
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    const TCode account = CodeAt(rows, At(table, "account"));
    const TCode currency = CodeAt(rows, At(table, "currency"));
    for (const std::size_t place : places[account]) {
      TFigureFacts& facts = contents.FFigures[place];
      if (facts.FCurrency == currency) {
        facts.FCustomFigures[rows.Integer(At(table, "number"))] = rows.Text(At(table, "value"));
      }
    }
  }
}

void ReadPositions(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kPositions;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    TPositionFacts& position = contents.FPositions.emplace_back();
    position.FAccount = CodeAt(rows, At(table, "account"));
    position.FKey = TextAt(rows, At(table, "key"));
    position.FSymbol = CodeAt(rows, At(table, "symbol"));
    position.FPriceBased = rows.Flag(At(table, "price_based"));
    position.FShort = rows.Text(At(table, "side")) == "S";
    ReadNumbers(rows, kPositionNumbers, position);
  }
}

void ReadMarkets(TBook& book, THostContents& contents) {
  constexpr auto bandTable = TTable::kSpreadBands;
  TBookRows bands = book.Read(bandTable);
  while (bands.Next()) {
    contents.FSpreadBands.push_back(
        {CodeAt(bands, At(bandTable, "market_code")), bands.Number(At(bandTable, "lower_limit")),
         bands.Number(At(bandTable, "upper_limit")), bands.Number(At(bandTable, "tick"))});
  }
  constexpr auto optionTable = TTable::kOrderOptions;
  TBookRows options = book.Read(optionTable);
  while (options.Next()) {
    contents.FOrderOptions.push_back(
        {CodeAt(options, At(optionTable, "exchange")), TextAt(options, At(optionTable, "option"))});
  }
  constexpr auto chargeTable = TTable::kCharges;
  TBookRows charges = book.Read(chargeTable);
  while (charges.Next()) {
    contents.FCharges.push_back(
        {CodeAt(charges, At(chargeTable, "exchange")), charges.Number(At(chargeTable, "rate")),
         charges.Number(At(chargeTable, "per_unit")), charges.Number(At(chargeTable, "minimum"))});
  }
  TBookRows margins = book.Read(TTable::kMargins);
  while (margins.Next()) {
    TMarginFacts& margin = contents.FMargins.emplace_back();
    margin.FSymbol = CodeAt(margins, At(TTable::kMargins, "symbol"));
    ReadNumbers(margins, kMarginNumbers, margin);
  }
}

void ReadOrders(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kOrders;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    TOrderFacts& order = contents.FOrders.emplace_back();
    order.FOrderID = TextAt(rows, At(table, "order_id"));
    order.FAccount = CodeAt(rows, At(table, "account"));
    order.FSymbol = CodeAt(rows, At(table, "symbol"));
    ReadNumbers(rows, kOrderNumbers, order);
    for (const TOrderChoice& choice : kOrderChoices) {
      if (rows.IsEmpty(choice.FColumn)) continue;
      const std::size_t place = ChoiceAt(rows, choice.FColumn, choice.FNames);
      order.*choice.FNumber = choice.FFirst + static_cast<std::int32_t>(place);
    }
    order.FMarket = rows.Flag(At(table, "market"));
    order.FState = static_cast<TOrderState>(ChoiceAt(rows, At(table, "state"), kBookOrderStates));
    order.FEntered = TextAt(rows, At(table, "entered"));
  }
}

void ReadFills(TBook& book, THostContents& contents) {
  constexpr auto table = TTable::kFills;
  TBookRows rows = book.Read(table);
  while (rows.Next()) {
    TFillFacts& fill = contents.FFills.emplace_back();
    fill.FFillID = TextAt(rows, At(table, "fill_id"));
    fill.FOrderID = TextAt(rows, At(table, "order_id"));
    fill.FTime = TextAt(rows, At(table, "time"));
    ReadNumbers(rows, kFillNumbers, fill);
  }
}

}  // namespace

THostContents ReadHostContents(TBook& book) {
  const TBookSnapshot snapshot(book);
  THostContents contents;
  ReadSettings(book, contents);
  ReadCurrencies(book, contents);
  ReadExchanges(book, contents);
  ReadProducts(book, contents);
  ReadPrices(book, contents);
  ReadAccounts(book, contents);
  ReadAccountDetails(book, contents);
  ReadCustomFields(book, contents);
  ReadFigures(book, contents);
  ReadCustomFigures(book, contents);
  ReadPositions(book, contents);
  ReadMarkets(book, contents);
  ReadOrders(book, contents);
  ReadFills(book, contents);
  return contents;
}

}  // namespace margindesk
