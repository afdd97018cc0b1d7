#include <sstream>

#include <gtest/gtest.h>

#include "terminal/cli/OrdersFile.h"
#include "terminal/session/CliError.h"

namespace margindesk {
namespace {

std::string RefusalOf(const std::string& text) {
  try {
    ParseOrders(text, "orders.csv");
  } catch (const TCliError& error) {
    return error.what();
  }
  return "taken";
}

TEST(OrdersFileTest, ReadsColumnsInAnyOrderAndLeavesEmptyFieldsToTheGrid) {
  const auto orders = ParseOrders(
      "quantity,symbol,status,side,price,principal,openclose\r\n"
      "500,700,Completed,SELL,318.6,rt,Close\n"
      "1, abc ,,buy,,,\n",
      "orders.csv");
  ASSERT_EQ(orders.size(), 2u);
  EXPECT_EQ(orders[0].FSymbol, "700");
  EXPECT_EQ(orders[0].FSide, kSideSell);
  EXPECT_EQ(orders[0].FPrice, 318.6);
  EXPECT_EQ(orders[0].FQuantity, 500);
  EXPECT_EQ(orders[0].FOpenClose, kOpenCloseClose);
  EXPECT_EQ(orders[0].FPrincipal, kPrincipalRT);
  EXPECT_EQ(orders[0].FStatus, kStatusCompleted);
  EXPECT_EQ(orders[1].FSymbol, "abc");
  EXPECT_EQ(orders[1].FPrice, std::nullopt);
  EXPECT_EQ(orders[1].FStatus, kStatusPending);
  EXPECT_EQ(orders[1].FLine, 3u);
}

TEST(OrdersFileTest, RefusesAFileWithOneLineThatSaysWhereAndWhy) {
  const std::string head = "symbol,side,price,quantity\n";
  struct TCase {
    std::string FText;
    std::string FRefusal;
  };
  const TCase cases[] = {
      {"", "orders.csv: no column names"},
      {head, "orders.csv: no orders"},
      {"symbol,side,quantity\nA,buy,1\n", "orders.csv:1:price: missing column"},
      {"symbol,side,price,quantity,lots\n", "orders.csv:1:lots: unknown column"},
      {"symbol,side,price,price,quantity\n", "orders.csv:1:price: duplicate column"},
      {head + "A,buy,1\n", "orders.csv:2: too few fields"},
      {head + "A,buy,1,1\n,buy,1,1\n", "orders.csv:3:symbol: no symbol"},
      {head + std::string(101, 'A') + ",buy,1,1\n",
       "orders.csv:2:symbol: \"" + std::string(40, 'A') + "...\" is too long for a symbol"},
      {head + "A,short,1,1\n", "orders.csv:2:side: \"short\" is not buy or sell"},
      {head + "A,buy,nan,1\n", "orders.csv:2:price: \"nan\" is not a number"},
      {head + "A,buy,1e400,1\n", "orders.csv:2:price: \"1e400\" is not a number"},
      {head + "A,buy,-1,1\n", "orders.csv:2:price: a number below zero"},
      {head + "A,buy,1,many\n", "orders.csv:2:quantity: \"many\" is not a number"},
      {head + "A,buy,1,0\n", "orders.csv:2:quantity: a quantity is above zero"},
  };
  for (const TCase& each : cases) EXPECT_EQ(RefusalOf(each.FText), each.FRefusal);

  std::string many = head;
  for (int i = 0; i < 100'000; ++i) many += "A,buy,1,1\n";
  EXPECT_EQ(RefusalOf(many), "orders.csv:10002: more than 10000 orders");

  std::istringstream nothing;
  EXPECT_THROW(ReadOrdersFile("/nowhere/orders.csv", nothing), TCliError);
}

}  // namespace
}  // namespace margindesk
