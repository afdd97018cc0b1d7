#include <gmock/gmock.h>

#include "tests/cli/CliTest.h"

namespace margindesk {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using TJson = nlohmann::ordered_json;

class Lists : public TCliTest {};

TEST_F(Lists, ShowAccountsWithTheirMasters) {
  EXPECT_EQ(Run({"accounts", "--lang", "CHS"}).FOut,
            "账户  账户名称              类别  主账户\n"
            "M1    Amber Lantern Family  M\n"
            "S1    范例船务（香港）      S     M1\n"
            "F1    Amber  [31m futures   F     M1\n"
            "B1\n");
  EXPECT_EQ(SplitIntoLines(Run({"accounts", "--format", "csv"}).FOut)[2], "S1,范例船务（香港）,S,M1");
  const TJson accounts = RunJson({"accounts"});
  ASSERT_EQ(accounts.size(), 4U);
  EXPECT_EQ(accounts[1].dump(), R"({"account":"S1","name":"范例船务（香港）","type":"S","master":"M1"})");
  EXPECT_EQ(accounts[3].dump(), R"({"account":"B1","name":null,"type":null,"master":null})");
}

TEST_F(Lists, ShowWhatAPositionIsWorthAndWhatItMade) {
  const TJson document = RunJson({"positions", "S1"});
  EXPECT_EQ(document["account"], "S1");
  ASSERT_EQ(document["positions"].size(), 2U);
  const TJson& first = document["positions"][0];
  EXPECT_EQ(first["key"], "90101");
  EXPECT_EQ(first["name"], "Lantern Bay");
  EXPECT_EQ(first["side"], "L");
  EXPECT_EQ(first["currency"], "HKD");
  EXPECT_EQ(first["quantity"], 2000);
  EXPECT_EQ(first["buy_amount"], 6250);
  EXPECT_EQ(first["market_value"], 100000);  // 400 of the 2,000 are not valued
  EXPECT_EQ(first["pl"], -600);
  EXPECT_EQ(first["realized_pl"], 150.5);
  EXPECT_EQ(first["unrealized_pl"], -750.5);
  const TJson& unpriced = document["positions"][1];
  EXPECT_TRUE(unpriced["name"].is_null());
  EXPECT_EQ(unpriced["side"], "S");
  EXPECT_TRUE(unpriced["market_value"].is_null());
}

TEST_F(Lists, LeaveOutPositionColumnsThatHoldNothing) {
  const TCliResult result = Run({"positions", "S1"});
  EXPECT_EQ(
      result.FOut,
      "Symbol  Name         L/S  Currency  Position Qty  Average Price  Total Buy Amount  Market Value  "
      "Total P/L  Realized P/L  Unrealized P/L\n"
      "90101   Lantern Bay  L    HKD              2,000        62.8500          6,250.00    100,000.00  "
      "  -600.00        150.50         -750.50\n"
      "ZZOB                 S    USD                 -5                             0.00                "
      "     0.00          0.00            0.00\n");
  FWidth = 80;  // too narrow for a row
  EXPECT_THAT(Run({"positions", "S1", "--lang", "CHS"}).FOut,
              HasSubstr("\n未实现盈亏      -750.50\n\n代码               ZZOB\n"));
  EXPECT_THAT(Run({"positions", "B1"}).FOut, Not(HasSubstr("Average")));
  EXPECT_EQ(SplitIntoLines(Run({"positions", "S1", "--format", "csv"}).FOut)[2].substr(0, 17),
            "ZZOB,ZZOB,,S,USD,");
}

}  // namespace

}  // namespace margindesk
