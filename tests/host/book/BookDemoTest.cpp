#include <gtest/gtest.h>

#include "tests/host/book/BookTestFiles.h"

namespace margindesk {
namespace {

struct BookDemo : testing::Test {
  BookDemo() { FBook.Import(FDemo); }

  const std::filesystem::path FDemo = std::filesystem::path(MARGINDESK_SOURCE_DIR) / "resources/demo";
  TTemporaryFolder FFolder;
  TBook FBook{FFolder.Path() / "book.db", TStoreMode::kCreate};
  TSqliteConnection FStore{FFolder.Path() / "book.db", TStoreMode::kExisting};
};

TEST_F(BookDemo, IsSoundAndShowsEveryFeatureAndItsFiguresAgreeWithItsPositions) {
  for (const TBookFinding& finding : FBook.Check()) ADD_FAILURE() << finding.Text();
  EXPECT_EQ(ExportedTexts(FBook), ReadBookTexts(FDemo));
  FStore.Execute(
      "CREATE TEMP VIEW subs AS SELECT s.account, m.master_type FROM accounts s JOIN accounts m ON m.account "
      "= "
      "s.master;"
      "CREATE TEMP VIEW held AS SELECT * FROM positions JOIN products USING (symbol);"
      "CREATE TEMP VIEW custom AS SELECT * FROM custom_values JOIN custom_fields USING (key)");
  const std::pair<const char*, int> features[] = {
      {"subs WHERE master_type = 10", 3},
      {"consolidated JOIN accounts USING (account) WHERE master_type = 10", 3},
      {"subs JOIN figures USING (account) WHERE master_type <> 10 AND currency IS NOT NULL", 5},
      {"(SELECT DISTINCT margin_type FROM accounts WHERE type = 'S')", 4},  // cash, margin, custodian, DVP
      {"accounts WHERE type = 'F'", 2},
      {"(SELECT DISTINCT status_flags & 3072 FROM accounts)", 3},  // neither, suspended, sell only
      {"accounts WHERE account NOT IN (SELECT account FROM figures)", 1},
      {"accounts WHERE margin_class = 'N/A'", 1},
      {"accounts WHERE day_trade_status = 0", 1},
      {"(SELECT DISTINCT value FROM account_attributes WHERE attribute = 'ClientFeature')", 2},
      {"held JOIN exchanges e USING (exchange) JOIN china_connect_links USING (account) WHERE "
       "e.china_connect",
       4},
      {"exchanges WHERE period_order IS NOT NULL", 2},
      {"(SELECT DISTINCT product_type FROM held WHERE otc AND product_type IN (6, 10))", 2},
      {"held WHERE option_right <> '' AND side = 'L'", 2},
      {"held WHERE side = 'S' AND covered_quantity > 0", 1},
      {"held JOIN currencies USING (currency) WHERE excluded", 1},
      {"figures WHERE separate_row", 1},
      {"positions WHERE excluded_quantity > 0", 1},
      {"positions WHERE key <> symbol", 1},
      {"figures WHERE margin_call > 0 AND initial_margin > net_equity", 1},
      {"custom WHERE field = 'RPQLevel' AND value GLOB '*[a-z]*'", 1},
      {"custom WHERE field = 'RPQDate' AND length(value) = 8", 10},
      {"(SELECT DISTINCT value FROM custom WHERE field = 'CIES')", 2},
      {"custom_balances JOIN custom_fields USING (key) WHERE field = 'CreditLimit'", 5},
      {"custom_figures", 5},
  };
  const auto count = [&](const std::string& from) {
    return FStore.QueryInteger("SELECT count(*) FROM " + from);
  };
  for (const auto& [from, atLeast] : features) EXPECT_GE(count(from), atLeast) << from;

  // An account that repeats the northbound side of another has no positions of its own.
  EXPECT_EQ(
      count("figures f WHERE currency IS NOT NULL AND account NOT IN (SELECT linked_account FROM "
            "china_connect_links) AND abs(own_total_pl - (SELECT ifnull(sum(pl_first_part + "
            "pl_second_part), 0) FROM held h WHERE h.account = f.account AND h.currency = f.currency)) > "
            "0.01"),
      0);
  for (const std::string figure : {"cash_balance", "net_equity", "initial_margin", "hold_fund"}) {
    std::string wrong = "figures t WHERE currency IS NULL AND abs(";
    wrong.append(figure).append(" - (SELECT sum(f.").append(figure);
    wrong +=
        " * ratio) FROM figures f JOIN currencies USING (currency) WHERE f.account = t.account AND NOT "
        "f.separate_row AND NOT excluded)) > 0.01";
    EXPECT_EQ(count(wrong), 0) << figure;
  }
}

TEST_F(BookDemo, TheDaysOrdersAreBehindItsHoldsAndTradedAmountsAndEveryProductHasTerms) {
  const std::string wrong[] = {
      "figures f WHERE currency IS NOT NULL AND hold_fund <> (SELECT ifnull(sum(hold_amount), 0) FROM orders "
      "JOIN products USING (symbol) WHERE account = f.account AND currency = f.currency AND state = "
      "'resting')",
      "positions p JOIN products USING (symbol) WHERE abs(completed_buy_amount + completed_sell_amount - "
      "(SELECT ifnull(sum(f.price * f.quantity * contract_size), 0) FROM orders o JOIN fills f USING "
      "(order_id) WHERE o.account = p.account AND o.symbol = p.symbol)) > 0.01",
      "orders o WHERE filled_quantity <> (SELECT ifnull(sum(quantity), 0) FROM fills f WHERE f.order_id = "
      "o.order_id)",
      "products WHERE product_type <> 7 AND (symbol NOT IN (SELECT symbol FROM margins) OR market_code NOT "
      "IN "
      "(SELECT market_code FROM spread_bands) OR exchange NOT IN (SELECT exchange FROM charges))",
      // The securities accounts' statements: what is not lent against the holdings is their initial margin.
      "figures f WHERE account IN ('10011', '20011', '30002', '30010') AND currency IS NOT NULL AND "
      "abs(initial_margin - (SELECT ifnull(sum(quantity * last * contract_size * initial_ratio), 0) FROM "
      "positions JOIN products USING (symbol) JOIN prices USING (symbol) JOIN margins USING (symbol) WHERE "
      "account = f.account AND currency = f.currency)) > 0.01",
  };
  for (const std::string& from : wrong) {
    EXPECT_EQ(FStore.QueryInteger("SELECT count(*) FROM " + from), 0) << from;
  }
}

}  // namespace
}  // namespace margindesk
