#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "tests/host/book/BookTestFiles.h"

namespace margindesk {

namespace {

class BookDemo : public testing::Test {
 protected:
  BookDemo() : FBook(FFolder.Path() / "book.db", TStoreMode::kCreate) {
    FBook.Import(DemoFolder());
    FStore = std::make_unique<TSqliteConnection>(FFolder.Path() / "book.db", TStoreMode::kExisting);
  }

  static std::filesystem::path DemoFolder() {
    return std::filesystem::path(MARGINDESK_SOURCE_DIR) / "resources/demo";
  }
  std::int64_t Query(const std::string& sql) { return FStore->QueryInteger(sql); }

  TTemporaryFolder FFolder;
  TBook FBook;
  std::unique_ptr<TSqliteConnection> FStore;
};

TEST_F(BookDemo, TheDemoBookIsSoundAndStoredAsItIsExported) {
  for (const TBookFinding& finding : FBook.Check()) ADD_FAILURE() << finding.Text();
  EXPECT_EQ(ExportedTexts(FBook), ReadBookTexts(DemoFolder()));
}

TEST_F(BookDemo, EveryFeatureIsShownBySomething) {
  const struct {
    std::string FFeature;
    std::int64_t FAtLeast;
    std::string FCountOf;
  } features[] = {
      {"sub-accounts of a consolidated master", 3,
       "accounts s JOIN accounts m ON m.account = s.master WHERE m.master_type = 10"},
      {"consolidated figures of that master, total and currencies", 3,
       "consolidated c JOIN accounts m USING (account) WHERE m.master_type = 10"},
      {"sub-accounts of an ordinary master", 3,
       "accounts s JOIN accounts m ON m.account = s.master WHERE m.master_type <> 10"},
      {"five currencies below an ordinary master", 5,
       "(SELECT DISTINCT f.currency FROM figures f JOIN accounts s USING (account) JOIN accounts m ON "
       "m.account = "
       "s.master WHERE m.master_type <> 10 AND f.currency IS NOT NULL)"},
      {"cash accounts", 2, "accounts WHERE margin_type = 0"},
      {"margin accounts", 2, "accounts WHERE margin_type = 1 AND type = 'S'"},
      {"custodian accounts", 2, "accounts WHERE margin_type = 2"},
      {"an account with delivery versus payment", 1, "accounts WHERE margin_type = 5"},
      {"futures accounts", 2, "accounts WHERE type = 'F'"},
      {"a suspended account", 1, "accounts WHERE status_flags & 1024"},
      {"a sell-only account", 1, "accounts WHERE status_flags & 2048"},
      {"an account without figures", 1,
       "accounts a WHERE NOT EXISTS (SELECT 1 FROM figures f WHERE f.account = a.account)"},
      {"an account without a margin class", 1, "accounts WHERE margin_class = 'N/A'"},
      {"day trading on", 1, "accounts WHERE day_trade_status = 0"},
      {"net margining", 1, "account_attributes WHERE attribute = 'ClientFeature' AND value = '1'"},
      {"gross margining", 1, "account_attributes WHERE attribute = 'ClientFeature' AND value = '2'"},
      {"China Connect pairs, both sides with a total row", 2,
       "china_connect_links l JOIN figures a ON a.account = l.account AND a.currency IS NULL JOIN figures b "
       "ON b.account "
       "= l.linked_account AND b.currency IS NULL"},
      {"positions on China Connect exchanges of linked accounts", 4,
       "positions p JOIN products USING (symbol) JOIN exchanges e USING (exchange) JOIN china_connect_links "
       "l USING "
       "(account) WHERE e.china_connect"},
      {"exchanges whose period is shown", 2, "exchanges WHERE period_order IS NOT NULL"},
      {"bonds over the counter", 3,
       "positions JOIN products p USING (symbol) WHERE p.otc AND p.product_type = 6"},
      {"funds over the counter", 3,
       "positions JOIN products p USING (symbol) WHERE p.otc AND p.product_type = 10"},
      {"long options", 2, "positions p JOIN products USING (symbol) WHERE option_right <> '' AND side = 'L'"},
      {"short options, partly covered", 1,
       "positions p JOIN products USING (symbol) WHERE side = 'S' AND covered_quantity > 0"},
      {"price-based positions", 10, "positions WHERE price_based"},
      {"positions of a currency excluded from calculation", 1,
       "positions JOIN products USING (symbol) JOIN currencies c ON c.currency = products.currency WHERE "
       "c.excluded"},
      {"a currency in a row of its own", 1, "figures WHERE separate_row"},
      {"a position that is not valued", 1, "positions WHERE excluded_quantity > 0"},
      {"two positions in one symbol", 1, "positions WHERE key <> symbol"},
      {"a margin call", 1, "figures WHERE margin_call > 0 AND initial_margin > net_equity"},
      {"risk profile levels", 10, "custom_values JOIN custom_fields USING (key) WHERE field = 'RPQLevel'"},
      {"a risk profile level that is no number", 1,
       "custom_values JOIN custom_fields USING (key) WHERE field = 'RPQLevel' AND value GLOB '*[a-z]*'"},
      {"risk profile dates of eight digits", 10,
       "custom_values JOIN custom_fields USING (key) WHERE field = 'RPQDate' AND length(value) = 8"},
      {"investment scheme answers of both kinds", 2,
       "(SELECT DISTINCT value FROM custom_values JOIN custom_fields USING (key) WHERE field = 'CIES')"},
      {"credit limits of risk management", 5,
       "custom_balances JOIN custom_fields USING (key) WHERE field = 'CreditLimit'"},
      {"custom columns", 5, "custom_figures"},
      {"China Connect off", 1, "settings WHERE name = 'china_connect' AND value = 0"},
  };
  for (const auto& feature : features) {
    EXPECT_GE(Query("SELECT count(*) FROM " + feature.FCountOf), feature.FAtLeast) << feature.FFeature;
  }
}

TEST_F(BookDemo, FiguresAgreeWithPositionsAndTotalRowsWithCurrencies) {
  // An account that repeats the northbound side of another has no positions of its own.
  EXPECT_EQ(Query("SELECT count(*) FROM figures f WHERE f.currency IS NOT NULL AND f.account NOT IN (SELECT "
                  "linked_account FROM china_connect_links) AND abs(f.own_total_pl - (SELECT "
                  "ifnull(sum(p.pl_first_part + p.pl_second_part), 0) FROM positions p JOIN products s USING "
                  "(symbol) "
                  "WHERE p.account = f.account AND s.currency = f.currency)) > 0.01"),
            0);
  EXPECT_EQ(
      Query("SELECT count(*) FROM positions WHERE holding_quantity <> quantity OR abs(bod_quantity + "
            "today_buy_quantity - today_sell_quantity - quantity) > 1e-9 OR (side = 'S') <> (quantity < 0)"),
      0);
  for (const char* figure :
       {"cash_balance", "bod_cash_balance", "net_equity", "initial_margin", "charges", "hold_fund"}) {
    const std::string sum =
        "(SELECT sum(f.FIGURE * c.ratio) FROM figures f JOIN currencies c USING (currency) WHERE f.account = "
        "t.account AND NOT f.separate_row AND NOT c.excluded)";
    std::string unequal =
        "SELECT count(*) FROM figures t WHERE t.currency IS NULL AND abs(t.FIGURE - " + sum + ") > 0.01";
    unequal = Replaced(Replaced(unequal, "FIGURE", figure), "FIGURE", figure);
    EXPECT_EQ(Query(unequal), 0) << figure;
  }
}

TEST(BookDocument, DescribesEveryTableAndColumn) {
  const std::string document = ReadWholeFile(std::filesystem::path(MARGINDESK_SOURCE_DIR) / "docs/book.md");
  for (const TBookTable& table : kBookTables) {
    const std::size_t begin = document.find("\n### `" + std::string(table.FName) + "`");
    ASSERT_NE(begin, std::string::npos) << table.FName;
    // The columns of the consolidated figures are described with the figures.
    const bool sharesFigures = table.FTable == TTable::kConsolidated;
    const std::string section = document.substr(begin, document.find("\n### ", begin + 1) - begin);
    for (const TBookColumn& column : table.FColumns) {
      if (sharesFigures && !column.FKey) continue;
      EXPECT_NE(section.find("| `" + std::string(column.FName) + "` |"), std::string::npos)
          << table.FName << "." << column.FName;
    }
  }
}

}  // namespace

}  // namespace margindesk
