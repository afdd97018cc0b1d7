#include <cmath>
#include <numeric>

#include <gmock/gmock.h>

#include "model/contract/Variant.h"
#include "tests/cli/CliTest.h"

namespace margindesk {
namespace {

using ::testing::HasSubstr;
using TJson = nlohmann::ordered_json;

// What a person who does the arithmetic gets from the inputs that are printed.
double Reckon(const TJson& term) {
  const std::string kind = term.at("kind");
  if (kind == "input") return term.at("value");
  std::vector<double> values;
  for (const TJson& own : term.at("terms")) values.push_back(Reckon(own));
  if (kind == "sum") return std::accumulate(values.begin(), values.end(), 0.0);
  if (kind == "difference") return values.at(0) - values.at(1);
  if (kind == "product") return values.at(0) * values.at(1);
  if (kind == "quotient") return values.at(0) / values.at(1);
  return std::min(values.at(0), values.at(1));
}

double ReadShown(std::string text) {
  std::erase(text, ',');
  if (text.ends_with('%')) text.pop_back();
  double shown = NAN;
  EXPECT_TRUE(TryTextToFloat(text, shown)) << text;
  return shown;
}

class ExplainCommand : public TCliTest {
 protected:
  void Configure(const std::string& key, const std::string& value) {
    EXPECT_EQ(Run({"config", "set", key, value}).FCode, 0);
  }
  // Over the demo book, or what has been made of it.
  TJson Show(const std::string& command, const std::vector<std::string>& arguments) {
    std::vector<std::string> line = {"--book", FDemo, command, "--format", "json"};
    if (FDemo.empty()) line.erase(line.begin(), line.begin() + 2);
    line.insert(line.end(), arguments.begin(), arguments.end());
    return TJson::parse(RunBare(line).FOut);
  }
  // What is explained of each figure of a view gives what the view shows.
  void ExpectSound(const std::vector<std::string>& view, const std::string& columns) {
    std::vector<std::string> arguments = view;
    arguments.insert(arguments.end(), {"--columns", columns});
    const TJson rows = Show("account", arguments)["rows"];
    ASSERT_GE(rows.size(), 14U);
    for (const TJson& row : rows) {
      if (("," + columns + ",").find("," + row["key"].get<std::string>() + ",") == std::string::npos)
        continue;
      arguments = view;
      arguments.insert(arguments.begin() + 1, row["key"]);
      const TJson figure = Show("explain", arguments);
      EXPECT_EQ(figure["text"], row["text"]) << figure;
      ASSERT_FALSE(figure["calculation"].is_null()) << figure;
      EXPECT_NEAR(Reckon(figure["calculation"]), ReadShown(row["text"]), 0.005001) << figure;
    }
  }

  std::string FDemo;  // empty: the demo book as it is
};

TEST_F(ExplainCommand, PrintsArithmeticThatGivesTheFigureThatTheAccountCommandShows) {
  const std::string columns =
      "CashBalance,PL,UnrealizedPL,RealizedPL,Equity,CutLoss,TotalPortfolio,MarketValue,NetValue,OptionValue,"
      "AvailableBal,NetTradedAmount,MarginableValue,MarginLevel";
  const std::pair<std::string, std::string> settings[] = {{"ApplyDDSPL", ""},
                                                          {"MarginLevelMode", "1"},
                                                          {"NetEquityMargin", "Y"},
                                                          {"ApplyDDSPL", "Y"},
                                                          {"AcctInfoShow3LvInfo", "N"}};
  // M10001 states figures of its own for the group, M20001 does not.
  const std::vector<std::string> views[] = {{"M20001"},
                                            {"M20001", "--convert", "USD"},
                                            {"M20001", "--filter", "EUR", "--convert", "JPY"},
                                            {"M20001", "--aggregate", "--filter", "USD"},
                                            {"M20001", "--aggregate", "--convert", "EUR"},
                                            {"M10001", "--aggregate"}};
  for (const auto& [key, value] : settings) {
    Configure(key, value);
    SCOPED_TRACE(key);
    for (const auto& view : views) ExpectSound(view, columns);
    Configure(key, "");
  }
}

TEST_F(ExplainCommand, FollowsTheSideThatIsShownWhileChinaConnectIsOn) {
  const auto folder = InHome("demo");
  ASSERT_EQ(RunBare({"book", "export", folder}).FCode, 0);
  WriteWholeFile(folder / "settings.csv", "name,value\nmulti_currency,Y\nchina_connect,Y\n");
  WriteWholeFile(folder / "china_connect_links.csv", "account,linked_account\nM20001,10011C\n20015,20015C\n");
  FDemo = InHome("connect.db");
  ASSERT_EQ(RunBare({"--book", FDemo, "book", "import", folder}).FCode, 0);
  const std::string columns =
      "CashBalance,LotLimit,PL,UnrealizedPL,RealizedPL,CutLoss,HoldFund,TotalPortfolio,MarketValue,NetValue,"
      "OptionValue,AvailableBal,NetTradedAmount,MarginableValue,MarginLevel";
  const std::vector<std::string> views[] = {{"20015", "--filter", "CNY"},
                                            {"20015", "--filter", "HKD", "--convert", "USD"},
                                            {"M20001"},
                                            {"M20001", "--aggregate", "--filter", "CNY", "--convert", "USD"}};
  for (const std::string layout : {"Y", "N"}) {
    SCOPED_TRACE(layout);
    Configure("AcctInfoShow3LvInfo", layout);
    for (const auto& view : views) ExpectSound(view, columns);
  }
}

TEST_F(ExplainCommand, TellsTheConfiguredFormulaOrTheOneThatComesAlongInTheLanguageAsked) {
  EXPECT_EQ(RunJson({"explain", "M1", "OptionValue"})["formula"], "Option Value=Net Equity - Cash Balance");
  EXPECT_THAT(Run({"--lang", "ZHH", "explain", "M1", "MarginLevel"}).FOut, HasSubstr("按金水平=("));
  WriteWholeFile(InHome("a #1 file.txt"), "[ENG]\nOMS_OPTIONVALUE = ours\n");
  Configure("FormulaURL", "file://" + InHome("a%20%231%20file.txt").string());
  EXPECT_EQ(RunJson({"explain", "M1", "OptionValue"})["formula"], "Option Value=ours");
  EXPECT_TRUE(RunJson({"explain", "M1", "PL"})["formula"].is_null());
}

TEST_F(ExplainCommand, SaysWhatATextIsReadFromAndHasNoLevelWithoutAMargin) {
  const TJson text = RunJson({"explain", "M1", "CIES"});
  EXPECT_EQ(text["source"], "the account's custom value CIES");
  EXPECT_TRUE(text["calculation"].is_null());
  const TJson level = RunJson({"explain", "S1", "MarginLevel"});
  EXPECT_EQ(level["text"], "--");
  EXPECT_TRUE(level["calculation"]["value"].is_null());
  for (const std::string field : {"all", "PL,CashBalance", "Nothing", "Status"}) {
    EXPECT_EQ(Run({"explain", "M1", field}).FCode, 2) << field;
  }
}

}  // namespace
}  // namespace margindesk
