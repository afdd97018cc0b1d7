#include <gtest/gtest.h>

#include "host/book/Book.h"
#include "host/services/HostContentsOfBook.h"
#include "host/services/HostData.h"
#include "tests/host/book/BookTestFiles.h"

namespace margindesk {
namespace {

TOrderFacts Order(const std::string& id, std::string_view account, double filled = 0) {
  TOrderFacts facts;
  facts.FOrderID = id;
  facts.FAccount = TCode(account);
  facts.FFilledQuantity = filled;
  return facts;
}

class SpreadTable : public testing::Test {
 protected:
  SpreadTable() {
    for (const auto& [lower, upper, tick] :
         {std::tuple{0.0, 0.25, 0.001}, {0.25, 0.5, 0.005}, {0.5, 10.0, 0.01}, {10.0, 20.0, 0.02}}) {
      FTable.Add({TCode("M"), lower, upper, tick});
    }
  }

  TSpreadTableRecord FTable;
};

TEST_F(SpreadTable, AThousandStepsUpAndDownMeetTheSameDecimalPrices) {
  std::vector<double> prices = {0};
  while (FTable.StepUp(prices.back()) != prices.back()) prices.push_back(FTable.StepUp(prices.back()));
  EXPECT_EQ(prices.size(), 1U + 250 + 50 + 950 + 500);
  EXPECT_EQ(prices[300], 0.5);
  EXPECT_EQ(prices[330], 0.8) << "and not the sum of its ticks";
  for (std::size_t i = prices.size() - 1; i > 0; --i) {
    ASSERT_EQ(FTable.StepDown(prices[i]), prices[i - 1]);
    ASSERT_TRUE(FTable.IsOnTick(prices[i]));
  }
  EXPECT_EQ(FTable.StepDown(0), 0) << "the table's limit is not left";
}

TEST_F(SpreadTable, APriceOnALimitBelongsToTheBandOfTheDirection) {
  TSpreadBand band;
  EXPECT_TRUE(FTable.LookUpUpward(0.25, band) && band.FTick == 0.005);
  EXPECT_TRUE(FTable.LookUpDownward(0.25, band) && band.FTick == 0.001 && band.FUpperLimit == 0.25);
  EXPECT_TRUE(FTable.LookUpUpward(20, band) && band.FLowerLimit == 10);
  EXPECT_EQ(FTable.StepUp(0.2512), 0.255) << "from between two ticks to the next one";
  EXPECT_EQ(FTable.StepDown(0.2512), 0.25);
  EXPECT_FALSE(FTable.IsOnTick(0.251));
  for (const double outside : {-0.01, 20.01, std::numeric_limits<double>::quiet_NaN()}) {
    band.FTick = 77;
    EXPECT_FALSE(FTable.LookUpUpward(outside, band) || FTable.LookUpDownward(outside, band) ||
                 FTable.IsOnTick(outside));
    EXPECT_EQ(band.FTick, 77);
  }
  EXPECT_EQ(FTable.StepUp(20.01), 20.01);
}

TEST(MarketsOfTheHost, TheDemoBooksPricesAreOnTheTicksOfTheirMarkets) {
  const TTemporaryFolder folder;
  TBook book(folder.Path() / "book.db", TStoreMode::kCreate);
  book.Import(MARGINDESK_SOURCE_DIR "/resources/demo");
  const THostContents contents = ReadHostContents(book);
  const THostData data(contents);
  const auto check = [&data](TCode symbol, double price) {
    const TSpreadTableRecord* table = data.FindSpreadTable(data.FindProduct(symbol)->GetMarketCode());
    EXPECT_TRUE(table == nullptr || table->IsOnTick(price)) << symbol.Text() << " " << price;
  };
  for (const auto& [symbol, prices] : contents.FPrices) {
    for (const double price : {prices.FLast, prices.FBid, prices.FAsk}) check(symbol, price);
  }
  for (const TOrderFacts& order : contents.FOrders) check(order.FSymbol, order.FPrice);
}

TEST(MarketsOfTheHost, FollowTheContentsAndOrdersAreKeptByAccount) {
  THostContents contents;
  contents.FSpreadBands = {{TCode("M"), 0, 10, 1}};
  contents.FMargins = {{TCode("S"), 0.5}};
  contents.FCharges = {{TCode("X"), 0.1, 0, 0}};
  contents.FOrderOptions = {{TCode("X"), "Open"}, {TCode("X"), "Close"}};
  contents.FOrders = {Order("1", "A"), Order("2", "B")};
  contents.FFills = {{"f", "2", 1, 1, 0, "t"}, {"g", "unknown", 1, 1, 0, "t"}};
  THostData data(contents);
  EXPECT_EQ(data.FindSpreadTable(TCode("M"))->StepUp(3), 4);
  EXPECT_EQ(data.FindMargin(TCode("S"))->FInitialRatio, 0.5);
  EXPECT_EQ(data.FindCharge(TCode("X"))->FRate, 0.1);
  EXPECT_EQ(data.GetOrderOptions(TCode("X")), (std::vector<std::string>{"Open", "Close"}));
  EXPECT_EQ(data.GetFills("2").size(), 1U);
  EXPECT_TRUE(data.GetFills("unknown").empty());

  data.TakeChanges();
  data.SetOrder(Order("3", "A"));
  data.SetOrder(Order("1", "A", 7));
  const auto& orders = data.GetOrders(TCode("A"));
  ASSERT_EQ(orders.size(), 2U);
  EXPECT_EQ(orders[0]->FFilledQuantity, 7) << "a change keeps the order's place";
  EXPECT_EQ(orders[1]->FOrderID, "3");
  EXPECT_EQ(data.TakeChanges().FOrders.GetCodes(), std::vector<TCode>{TCode("A")});

  data.Replace({});
  EXPECT_EQ(data.FindSpreadTable(TCode("M")), nullptr);
  EXPECT_EQ(data.FindMargin(TCode("S")), nullptr);
  EXPECT_EQ(data.FindCharge(TCode("X")), nullptr);
  EXPECT_TRUE(data.GetOrderOptions(TCode("X")).empty() && data.GetOrders().empty());
  EXPECT_TRUE(data.GetOrders(TCode("A")).empty());
}

}  // namespace
}  // namespace margindesk
