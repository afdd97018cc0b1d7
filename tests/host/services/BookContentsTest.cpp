#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/book/Book.h"
#include "host/services/HostContentsOfBook.h"
#include "model/contract/AccountAdapter.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

// One value in every column that the host reads, each different from its neighbours.
class BookContentsTest : public testing::Test {
 protected:
  TBookRow Row(TTable table,
               std::initializer_list<std::pair<std::string_view, std::string_view>> texts) const {
    TBookRow row(table);
    for (const auto& [column, text] : texts) row.SetText(BookTable(table).Column(column), text);
    return row;
  }
  static void Number(TBookRow& row, std::string_view column, double value) {
    row.SetNumber(BookTable(row.Table()).Column(column), value);
  }
  static void Integer(TBookRow& row, std::string_view column, std::int64_t value) {
    row.SetInteger(BookTable(row.Table()).Column(column), value);
  }
  static void Flag(TBookRow& row, std::string_view column) {
    row.SetFlag(BookTable(row.Table()).Column(column), true);
  }

  void Write(const std::vector<TBookRow>& rows) {
    TBookTransaction transaction(FBook);
    for (const TBookRow& row : rows) transaction.Upsert(row);
    transaction.Commit();
  }

  TTemporaryFolder FFolder;
  TBook FBook{FFolder.Path() / "book.db", TStoreMode::kCreate};
};

TEST_F(BookContentsTest, ABookIsReadAsItWasWritten) {
  std::vector<TBookRow> rows;
  const auto add = [&rows](TBookRow row) -> TBookRow& { return rows.emplace_back(std::move(row)); };
  rows.reserve(40);
  Flag(add(Row(TTable::kSettings, {{"name", "china_connect"}})), "value");
  add(Row(TTable::kSettings, {{"name", "multi_currency"}}));
  TBookRow& hkd = add(Row(TTable::kCurrencies, {{"currency", "HKD"}}));
  Number(hkd, "ratio", 1);
  Flag(hkd, "base");
  TBookRow& usd = add(Row(TTable::kCurrencies, {{"currency", "USD"}}));
  Number(usd, "ratio", 7.8);
  Flag(usd, "excluded");
  TBookRow& hk = add(Row(TTable::kExchanges, {{"exchange", "HK"}}));
  Flag(hk, "market_open");
  Integer(hk, "period_order", 0);
  Flag(add(Row(TTable::kExchanges, {{"exchange", "SH"}})), "china_connect");
  TBookRow& product = add(Row(
      TTable::kProducts,
      {{"symbol", "5"}, {"name", "Bank"}, {"exchange", "HK"}, {"currency", "HKD"}, {"market_code", "HKEQ"}}));
  Integer(product, "product_type", 6);
  Number(product, "lot_size", 400);
  Number(product, "contract_size", 0.01);
  Number(product, "price_multiplier", 10);
  Flag(product, "otc");
  Number(product, "otc_minimum", 1000);
  Number(product, "otc_increment", 50);
  TBookRow& price = add(Row(TTable::kPrices, {{"symbol", "5"}}));
  Number(price, "last", 60);
  Number(price, "bid", 59.9);
  Number(price, "ask", 60.1);
  Number(price, "previous_close", 58);
  Number(price, "reference", 58.5);
  TBookRow& master = add(Row(TTable::kAccounts, {{"account", "M1"}}));
  Integer(master, "master_type", 10);
  TBookRow& account = add(Row(TTable::kAccounts, {{"account", "A1"},
                                                  {"name", "Lee"},
                                                  {"user", "u1"},
                                                  {"type", "S"},
                                                  {"master", "M1"},
                                                  {"mobile", "123"},
                                                  {"email", "a@b"},
                                                  {"bod_update_time", "08:00"},
                                                  {"margin_class", "B"},
                                                  {"position_isolation", "Cross"},
                                                  {"margin_method", "Lot"}}));
  Integer(account, "margin_type", 5);
  Integer(account, "status_flags", 2048);
  Integer(account, "day_trade_status", -1);
  Flag(account, "online");
  add(Row(TTable::kAccountAttributes, {{"account", "A1"}, {"attribute", "ClientFeature"}, {"value", "1"}}));
  add(Row(TTable::kCustomFields, {{"table_name", "info"}, {"field", "CIES"}, {"key", "K1"}}));
  add(Row(TTable::kCustomFields, {{"table_name", "balance"}, {"field", "CreditLimit"}, {"key", "K2"}}));
  add(Row(TTable::kCustomValues, {{"account", "A1"}, {"key", "K1"}, {"value", "Y"}}));
  Number(add(Row(TTable::kCustomBalances, {{"account", "A1"}, {"currency", "USD"}, {"key", "K2"}})), "amount",
         77);
  add(Row(TTable::kChinaConnectLinks, {{"account", "A1"}, {"linked_account", "M1"}}));
  TBookRow& figures = add(Row(TTable::kFigures, {{"account", "A1"}, {"currency", "HKD"}}));
  Flag(figures, "separate_row");
  Number(figures, "trading_limit", 1);
  Number(figures, "own_unrealized_pl", -2);
  Number(figures, "credit_limit_dds", 3);
  Number(add(Row(TTable::kFigures, {{"account", "A1"}})), "cash_balance", 4);
  Integer(add(Row(TTable::kCustomFigures, {{"account", "A1"}, {"value", "x"}})), "number", 2);
  Number(add(Row(TTable::kConsolidated, {{"account", "M1"}, {"currency", "USD"}})), "initial_margin", 5);
  TBookRow& position =
      add(Row(TTable::kPositions, {{"account", "A1"}, {"key", "5 short"}, {"symbol", "5"}, {"side", "S"}}));
  Flag(position, "price_based");
  const std::string_view numbers[] = {
      "holding_quantity", "excluded_quantity",  "completed_buy_amount", "completed_sell_amount",
      "pl_first_part",    "pl_second_part",     "realized_pl",          "bod_quantity",
      "voucher_quantity", "today_buy_quantity", "today_sell_quantity",  "quantity",
      "covered_quantity", "average_price",      "buy_average_price",    "sell_average_price"};
  for (std::size_t i = 0; i < std::size(numbers); ++i)
    Number(position, numbers[i], 101 + static_cast<double>(i));
  Write(rows);

  TTestBook expected;
  expected.SingleCurrency().ChinaConnectOn().Currency("HKD", 1).ExcludedCurrency("USD", 7.8);
  expected.Exchange("HK").PeriodExchange("HK").ChinaConnectExchange("SH");
  expected.CustomField("info", "CIES", "K1").CustomField("balance", "CreditLimit", "K2");
  expected.Product("5", "HKD", 60)
      .Exchange("HK")
      .Type(6)
      .LotSize(400)
      .ContractSize(0.01)
      .PriceMultiplier(10)
      .OverTheCounter(1000, 50)
      .MarketCode("HKEQ")
      .BidAsk(59.9, 60.1)
      .PreviousClose(58);
  expected.Contents().FProducts[0].FName = "Bank";
  expected.Contents().FPrices[0].second.FReference = 58.5;
  expected.Account("M1").MasterType(10).Consolidated("USD").Set(TFigure::kInitialMargin, 5);
  expected.Account("A1")
      .Name("Lee")
      .User("u1")
      .Type("S")
      .Master("M1")
      .MarginType(5)
      .Contact("123", "a@b")
      .StatusFlags(2048)
      .BODUpdateTime("08:00")
      .MarginClass("B")
      .DayTradeStatus(-1)
      .Online()
      .PositionIsolation("Cross")
      .MarginMethod("Lot")
      .Attribute("ClientFeature", "1")
      .CustomValue("K1", "Y")
      .CustomBalance("USD", "K2", 77)
      .ChinaConnectAccount("M1")
      .Figures("HKD")
      .SeparateRow()
      .Set(TFigure::kTradingLimit, 1)
      .Set(TFigure::kOwnUnrealizedPL, -2)
      .Set(TFigure::kCreditLimitDds, 3)
      .Figures("")
      .Set(TFigure::kCashBalance, 4)
      .Custom(2, "x")
      .Position("5", 101)
      .Key("5 short")
      .Excluded(102)
      .Bought(103)
      .Sold(104)
      .PL(105, 106)
      .Realized(107)
      .PriceBased(114);
  TPositionFacts& facts = expected.Contents().FPositions[0];
  facts.FShort = true;
  facts.FBODQuantity = 108;
  facts.FVoucherQuantity = 109;
  facts.FTodayBuyQuantity = 110;
  facts.FTodaySellQuantity = 111;
  facts.FQuantity = 112;
  facts.FCoveredQuantity = 113;
  facts.FBuyAveragePrice = 115;
  facts.FSellAveragePrice = 116;

  const THostContents contents = ReadHostContents(FBook);
  EXPECT_EQ(contents.FMultiCurrency, expected.Contents().FMultiCurrency);
  EXPECT_EQ(contents.FChinaConnect, expected.Contents().FChinaConnect);
  EXPECT_TRUE(contents.FCurrencies == expected.Contents().FCurrencies);
  EXPECT_TRUE(contents.FExchanges == expected.Contents().FExchanges);
  EXPECT_TRUE(contents.FProducts == expected.Contents().FProducts);
  EXPECT_TRUE(contents.FPrices == expected.Contents().FPrices);
  EXPECT_TRUE(contents.FAccounts == expected.Contents().FAccounts);
  EXPECT_TRUE(contents.FFigures == expected.Contents().FFigures);
  EXPECT_TRUE(contents.FConsolidated == expected.Contents().FConsolidated);
  EXPECT_TRUE(contents.FPositions == expected.Contents().FPositions);
  EXPECT_TRUE(contents.FCustomFieldKeys == expected.Contents().FCustomFieldKeys);
}

TEST_F(BookContentsTest, ABookThatChangesWhileItIsReadIsReadAsItWas) {
  WriteBookTexts(FFolder.Path() / "csv", SmallBookTexts());
  FBook.Import(FFolder.Path() / "csv");
  TBook other(FFolder.Path() / "book.db", TStoreMode::kExisting);
  const auto countCurrencies = [this] {
    TBookRows rows = FBook.Read(TTable::kCurrencies);
    std::size_t count = 0;
    while (rows.Next()) ++count;
    return count;
  };
  const std::size_t before = countCurrencies();
  {
    const TBookSnapshot snapshot(FBook);
    FBook.Read(TTable::kAccounts).Next();
    TBookRow currency = Row(TTable::kCurrencies, {{"currency", "XXX"}});
    Number(currency, "ratio", 2);
    other.Upsert(std::vector{currency});
    EXPECT_EQ(countCurrencies(), before);
  }
  EXPECT_EQ(countCurrencies(), before + 1);
}

TEST_F(BookContentsTest, AReloadedBookIsPublishedAsAWhole) {
  WriteBookTexts(FFolder.Path() / "csv", SmallBookTexts());
  FBook.Import(FFolder.Path() / "csv");
  TReferenceHostOptions options;
  options.FLanguageDirectory = MARGINDESK_SOURCE_DIR "/resources/languages";
  TReferenceHost host(FBook, options);
  ASSERT_FALSE(host.Data().GetAccounts().empty());
  EXPECT_FALSE(host.Data().HasChanges()) << "nobody was there to be told of the first load";
  const std::size_t accountsBefore = host.Data().GetAccounts().size();

  TRecorder recorder;
  auto& accounts = TCustomAccountAdapter::GetInstance();
  accounts.AddAccountInfoLoadHandler(recorder.Accounts(), &recorder);
  FBook.Upsert(std::vector{Row(TTable::kAccounts, {{"account", "new"}})});
  EXPECT_EQ(accounts.GetAccount(TCode("new")), nullptr);
  host.Reload(FBook);
  EXPECT_EQ(host.Data().GetAccounts().size(), accountsBefore + 1);
  host.Loop().RunOnce();
  const std::vector<std::string> notices = recorder.Take();
  ASSERT_EQ(notices.size(), 1U);
  EXPECT_THAT(notices[0], testing::HasSubstr("new"));
  accounts.RemoveAccountInfoLoadHandler(&recorder);
}

TEST_F(BookContentsTest, EveryPositionOfTheDemoBookIsValuedAndEveryMasterIsThere) {
  FBook.Import(MARGINDESK_SOURCE_DIR "/resources/demo");
  const THostContents contents = ReadHostContents(FBook);
  const THostData data(contents);
  EXPECT_FALSE(contents.FPositions.empty());
  for (const TPositionFacts& position : contents.FPositions) {
    const TProductRecord* product = data.FindProduct(position.FSymbol);
    ASSERT_NE(product, nullptr) << position.FSymbol.Text();
    double value = 0;
    EXPECT_TRUE(product->GetUnitValue(value)) << position.FSymbol.Text();
    EXPECT_GT(data.GetRatio(product->GetCurrency()), 0) << position.FSymbol.Text();
    EXPECT_NE(data.FindAccount(position.FAccount), nullptr);
  }
  for (const TAccountFacts& account : contents.FAccounts) {
    if (account.FMaster.IsEmpty()) continue;
    const TAccountRecord* master = data.FindAccount(account.FMaster);
    ASSERT_NE(master, nullptr) << account.FAccount.Text();
    EXPECT_TRUE(master->IsMasterAccount());
  }
  EXPECT_FALSE(data.GetBaseCurrency().IsEmpty());
}

}  // namespace
}  // namespace margindesk
