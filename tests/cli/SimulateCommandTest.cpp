#include <gmock/gmock.h>

#include "tests/cli/CliTest.h"

namespace margindesk {
namespace {

using ::testing::HasSubstr;
using TJson = nlohmann::ordered_json;

// The first row of the cash balance: the account's own.
TJson FindCash(const std::string& text) {
  const TJson document = TJson::parse(text);
  for (const TJson& row : document.at("rows")) {
    if (row.at("key") == "CashBalance") return row;
  }
  return {};
}

// Over the demo book, which the first command makes.
class SimulateCommand : public TCliTest {
 protected:
  SimulateCommand() { RunBare({"accounts"}); }

  TCliResult Simulate(const std::string& orders, std::vector<std::string> more = {}) {
    FInput = "symbol,side,price,quantity,status\n" + orders;
    std::vector<std::string> words = {"simulate",  "10011",       "--orders", "-",
                                      "--columns", "CashBalance", "--format", "json"};
    words.insert(words.end(), more.begin(), more.end());
    return RunBare(words);
  }
  TJson Orders() { return TJson::parse(RunBare({"orders", "10011", "--format", "json"}).FOut).at("orders"); }
};

TEST_F(SimulateCommand, ShowsTheFigureBeforeAndAfterAndPlacesTheOrderOnlyWhenThatIsConfirmed) {
  const std::string order = "90101,buy,62.4,500,completed\n";
  const std::size_t placed = Orders().size();
  const TCliResult simulated = Simulate(order);
  ASSERT_EQ(simulated.FCode, 0) << simulated.FErr;
  // 500 at 62.40 and a charge of 0.13 percent, all of it in HKD.
  const TJson row = FindCash(simulated.FOut);
  EXPECT_EQ(row.at("before_text"), "-1,142,023.42");
  EXPECT_EQ(row.at("after_text"), "-1,173,263.98");
  EXPECT_EQ(row.at("changed"), true);
  EXPECT_EQ(Orders().size(), placed);
  EXPECT_EQ(Simulate(order, {"--submit"}).FCode, 2);
  EXPECT_EQ(Orders().size(), placed);

  const TCliResult submitted = Simulate(order, {"--submit", "--yes"});
  ASSERT_EQ(submitted.FCode, 0) << submitted.FErr;
  const TJson orders = Orders();
  ASSERT_EQ(orders.size(), placed + 1);
  EXPECT_EQ(TJson::parse(submitted.FOut).at("placed").at(0), orders.back());
  EXPECT_EQ(orders.back().at("state"), "filled");
  const TJson cash =
      FindCash(RunBare({"account", "10011", "--columns", "CashBalance", "--format", "json"}).FOut);
  EXPECT_EQ(cash.at("text"), row.at("after_text"));
}

TEST_F(SimulateCommand, NamesTheOrderThatWouldFailAndPlacesNoneOfThem) {
  const std::size_t placed = Orders().size();
  const TCliResult refused =
      Simulate("90101,buy,60,500,pending\n90101,buy,60,501,pending\n", {"--submit", "--yes"});
  EXPECT_EQ(refused.FCode, 3);
  EXPECT_THAT(refused.FErr, HasSubstr("row 2 (line 3), buy 501 90101: "));
  EXPECT_EQ(TJson::parse(refused.FOut).at("refused").at("row"), 2);
  EXPECT_EQ(Orders().size(), placed);

  EXPECT_EQ(Simulate("90101,buy,60,none,pending\n").FCode, 2);
  EXPECT_EQ(Simulate("NOPE,buy,60,1,pending\n").FCode, 3);

  RunBare({"config", "set", "Function_MarginSim", "N"});
  EXPECT_EQ(Simulate("90101,buy,60,500,pending\n", {"--submit", "--yes"}).FCode, 2)
      << "a user who may not simulate";
  EXPECT_EQ(Orders().size(), placed);
}

TEST_F(SimulateCommand, CancelsAnOrderThatRestsOnce) {
  ASSERT_EQ(Simulate("90101,buy,50,500,pending\n", {"--submit", "--yes"}).FCode, 0);
  const TJson order = Orders().back();
  ASSERT_EQ(order.at("state"), "resting");
  EXPECT_EQ(RunBare({"orders", "10011", "--cancel", ""}).FCode, 2);
  EXPECT_EQ(RunBare({"orders", "10011", "--cancel", order.at("order")}).FCode, 0);
  EXPECT_EQ(Orders().back().at("state"), "cancelled");
  EXPECT_EQ(RunBare({"orders", "10011", "--cancel", order.at("order")}).FCode, 3);
}

}  // namespace
}  // namespace margindesk
