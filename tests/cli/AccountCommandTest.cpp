#include <gmock/gmock.h>

#include "tests/cli/CliTest.h"

namespace margindesk {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using TJson = nlohmann::ordered_json;

class AccountCommand : public TCliTest {
 protected:
  std::vector<std::string> Keys(std::vector<std::string> arguments) {
    std::vector<std::string> keys;
    const TJson document = RunJson(std::move(arguments));
    for (const TJson& row : document["rows"]) keys.push_back(row["key"]);
    return keys;
  }

  void Configure(const std::string& key, const std::string& value) {
    EXPECT_EQ(Run({"config", "set", key, value}).FCode, 0);
  }
};

TEST_F(AccountCommand, ShowsTotalsTheCurrenciesUnderThemAndTheRowsOfTheirOwn) {
  const TCliResult result =
      Run({"account", "M1", "--columns", "TradingLimit,CashBalance,MarginLevel,Account"});
  EXPECT_EQ(result.FCode, 0);
  EXPECT_EQ(result.FErr, "");
  EXPECT_EQ(result.FOut,
            "M1  Amber Lantern Family\n"
            "Base: HKD  Convert: HKD  Filter: All\n"
            "\n"
            "Trading Limit         101,900.00\n"
            "  Total(HK Dollar)      1,900.00\n"
            "    HK Dollar           1,100.00\n"
            "    US Dollar             800.00\n"
            "  Japanese Yen      2,000,000.00\n"
            "Cash Balance             -500.50 <\n"
            "  Total(HK Dollar)       -500.50 <\n"
            "    HK Dollar             300.00\n"
            "    US Dollar            -800.50 <\n"
            "  Japanese Yen              0.00\n"
            "Margin Level               0.00%\n"
            "Account                       M1\n");
}

TEST_F(AccountCommand, AlignsFiguresToOneColumnInEveryLanguageAndLayout) {
  for (const std::string language : {"ENG", "CHS", "ZHH"}) {
    for (const std::string layout : {"3", "2"}) {
      for (const std::string account : {"M1", "S1"}) {
        const TCliResult result =
            Run({"--lang", language, "account", account, "--columns", "all", "--layout", layout});
        ASSERT_EQ(result.FCode, 0) << result.FErr;
        std::vector<std::string> lines = SplitIntoLines(result.FOut);
        lines.erase(lines.begin(), lines.begin() + 3);
        std::size_t width = 0;
        int figures = 0;
        for (std::string line : lines) {
          if (line.ends_with(" <")) line.resize(line.size() - 2);
          if (!line.ends_with(".00") && !line.ends_with(".50")) continue;
          if (width == 0) width = CountColumns(line);
          EXPECT_EQ(CountColumns(line), width) << line;
          ++figures;
        }
        EXPECT_GT(figures, 50) << language << layout << account;
      }
    }
  }
}

TEST_F(AccountCommand, ShowsNegativeAmountsInRedOnlyOnAColourScreen) {
  FColour = true;
  const TCliResult coloured = Run({"account", "M1", "--columns", "CashBalance"});
  EXPECT_THAT(coloured.FOut, HasSubstr("US Dollar            \x1b[31m-800.50\x1b[0m <\n"));
  EXPECT_THAT(coloured.FOut, HasSubstr("HK Dollar             300.00\n"));
  EXPECT_THAT(RunJson({"account", "M1"}).dump(), Not(HasSubstr("\x1b")));
  FColour = false;
  EXPECT_THAT(Run({"account", "M1"}).FOut, Not(HasSubstr("\x1b")));
}

TEST_F(AccountCommand, NeverHandsControlCharactersOfTheBookToTheScreen) {
  EXPECT_THAT(Run({"account", "F1"}).FOut, HasSubstr("F1  Amber  [31m futures\n"));
  EXPECT_THAT(Run({"accounts"}).FOut, Not(HasSubstr("\x1b")));
}

TEST_F(AccountCommand, PrintsAJsonDocumentWithValuesBesideTexts) {
  const TJson document = RunJson({"account", "M1", "--columns", "CashBalance,MarginLevel,MarginClass"});
  EXPECT_EQ(document["account"], "M1");
  EXPECT_EQ(document["base"], "HKD");
  EXPECT_EQ(document["convert"], "HKD");
  EXPECT_TRUE(document["filter"].is_null());
  EXPECT_EQ(document["aggregated"], false);
  ASSERT_EQ(document["rows"].size(), 4U);

  const TJson& cash = document["rows"][1];
  EXPECT_EQ(cash["field"], 156);
  EXPECT_EQ(cash["key"], "CashBalance");
  EXPECT_EQ(cash["caption"], "Cash Balance");
  EXPECT_EQ(cash["text"], "-500.50");
  EXPECT_EQ(cash["value"], -500.5);
  ASSERT_EQ(cash["children"].size(), 2U);
  const TJson& total = cash["children"][0];
  EXPECT_EQ(total["currency"], "");
  EXPECT_EQ(total["caption"], "Total(HK Dollar)");
  ASSERT_EQ(total["children"].size(), 2U);
  EXPECT_EQ(total["children"][1].dump(),
            R"({"currency":"USD","caption":"US Dollar","text":"-800.50","value":-800.5})");
  EXPECT_EQ(cash["children"][1].dump(),
            R"({"currency":"JPY","caption":"Japanese Yen","text":"0.00","value":0.0})");

  EXPECT_EQ(document["rows"][3]["value"], "");  // a text field
  EXPECT_TRUE(document["rows"][3]["children"].empty());
  const TJson noMargin = RunJson({"account", "S1", "--columns", "MarginLevel"});
  EXPECT_TRUE(noMargin["rows"][1]["value"].is_null());
  EXPECT_EQ(noMargin["rows"][1]["text"], "--");
}

TEST_F(AccountCommand, PrintsOneCsvLineARowWithItsLevel) {
  const TCliResult result = Run({"account", "M1", "--columns", "TradingLimit", "--format", "csv"});
  EXPECT_EQ(result.FOut,
            "level,field,key,currency,caption,text,value\n"
            "0,155,TradingLimit,,Trading Limit,\"101,900.00\",101900\n"
            "1,155,TradingLimit,,Total(HK Dollar),\"1,900.00\",1900\n"
            "2,155,TradingLimit,HKD,HK Dollar,\"1,100.00\",1100\n"
            "2,155,TradingLimit,USD,US Dollar,800.00,800\n"
            "1,155,TradingLimit,JPY,Japanese Yen,\"2,000,000.00\",2000000\n");
}

TEST_F(AccountCommand, ConvertsTotalsAndFiltersOneCurrency) {
  const TJson converted = RunJson({"account", "M1", "--columns", "TradingLimit", "--convert", "usd"});
  EXPECT_EQ(converted["convert"], "USD");
  EXPECT_EQ(converted["rows"][0]["text"], "12,737.50");
  EXPECT_EQ(converted["rows"][0]["children"][0]["children"][0]["text"], "137.50");
  EXPECT_EQ(converted["rows"][0]["children"][1]["text"], "2,000,000.00");  // in its own currency

  const TJson filtered = RunJson({"account", "M1", "--columns", "TradingLimit", "--filter", "JPY"});
  EXPECT_EQ(filtered["filter"], "JPY");
  EXPECT_EQ(filtered["rows"][0]["value"], 2000000);
  ASSERT_EQ(filtered["rows"][0]["children"].size(), 1U);
  EXPECT_EQ(filtered["rows"][0]["children"][0]["currency"], "JPY");
}

TEST_F(AccountCommand, AddsTheSubAccountsWhenAggregated) {
  const TJson document = RunJson({"account", "M1", "--columns", "CashBalance", "--aggregate"});
  EXPECT_EQ(document["aggregated"], true);
  EXPECT_EQ(document["rows"][1]["value"], 499.5);
  EXPECT_THAT(Run({"account", "M1", "--aggregate"}).FOut,
              HasSubstr("M1  Amber Lantern Family  [Aggregated, Cross-out]\n"));
}

TEST_F(AccountCommand, TakesTheLayoutFromTheConfigurationUnlessItIsNamed) {
  const auto levels = [this](std::vector<std::string> more) {
    more.insert(more.begin(), {"account", "M1", "--columns", "TradingLimit"});
    return RunJson(std::move(more))["rows"][0]["children"].size();
  };
  EXPECT_EQ(levels({}), 2U);  // the total and the yen
  EXPECT_EQ(levels({"--layout", "2"}), 3U);
  Configure("AcctInfoShow3LvInfo", "N");
  EXPECT_EQ(levels({}), 3U);
  EXPECT_EQ(levels({"--layout", "3"}), 2U);
}

TEST_F(AccountCommand, ShowsTheColumnsConfiguredForTheTypeOfTheAccountThenTheCustomOnes) {
  EXPECT_THAT(Keys({"account", "S1"}),
              ElementsAre("TradingLimit", "CashBalance", "BODTradingLimit", "BODCashBalance", "CashIn/Out",
                          "Charges", "Equity", "MarginCall", "1", "2"));
  Configure("Default_AccountInfoColumn", "OMS_PL,Nonsense,TradingLimit");
  Configure("Futures_AccountInfoColumn", "Equity");
  EXPECT_THAT(Keys({"account", "S1"}), ElementsAre("PL", "TradingLimit", "1", "2"));
  EXPECT_THAT(Keys({"account", "M1"}), ElementsAre("PL", "TradingLimit", "1", "2"));
  EXPECT_THAT(Keys({"account", "F1"}), ElementsAre("TradingLimit", "Equity", "1", "2"));
}

TEST_F(AccountCommand, ShowsTheNamedColumnsAndTheReservedOne) {
  EXPECT_THAT(Keys({"account", "M1", "--columns", "equity"}), ElementsAre("TradingLimit", "Equity"));
  EXPECT_THAT(Keys({"account", "M1", "--columns", "OMS_PL, CashIn/Out,TradingLimit,2"}),
              ElementsAre("PL", "CashIn/Out", "TradingLimit", "2"));
  // A field under its old and its current key is one column.
  EXPECT_THAT(Keys({"account", "M1", "--columns", "OMS_PL,PL"}), ElementsAre("TradingLimit", "PL"));
}

TEST_F(AccountCommand, ShowsEveryAccountColumnForAll) {
  const std::vector<std::string> keys = Keys({"account", "M1", "--columns", "all"});
  EXPECT_EQ(keys.size(), 59U + 2U);
  EXPECT_EQ(keys.front(), "Account");
  EXPECT_EQ(keys[58], "Status");  // the one exchange's trading period
  EXPECT_EQ(keys.back(), "2");
}

TEST_F(AccountCommand, ShowsAnAccountWithoutFigures) {
  const TCliResult result = Run({"account", "B1", "--columns", "TradingLimit,MarginLevel"});
  EXPECT_EQ(result.FCode, 0);
  EXPECT_THAT(result.FOut, HasSubstr("B1  [Suspended]\n"));
  EXPECT_THAT(result.FOut, HasSubstr("\nTrading Limit"));
}

}  // namespace

}  // namespace margindesk
