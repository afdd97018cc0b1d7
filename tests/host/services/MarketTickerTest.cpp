#include <gtest/gtest.h>

#include "host/services/MarketTicker.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

TTestBook MakeMarket() {
  TTestBook book;
  book.Currency("HKD", 1);
  book.Exchange("OPEN");
  book.Exchange("SHUT", false);
  for (const auto& [symbol, exchange, last] :
       {std::tuple{"LOW", "OPEN", 0.01}, std::tuple{"EDGE", "OPEN", 10.0},
        std::tuple{"STILL", "SHUT", 5.0}}) {
    TProductFacts& product = book.Product(symbol, "HKD", last);
    product.FExchange = TCode(exchange);
    product.FMarketCode = TCode("M");
    book.FPrices.back().second.FPreviousClose = last;
  }
  book.FSpreadBands = {{TCode("M"), 0, 10, 0.01}, {TCode("M"), 10, 20, 0.05}};
  return book;
}

const TPriceFacts& PricesOf(TTestHost& host, std::string_view symbol) {
  return host.Data().GetItem(TCode(symbol)).GetFacts()->FPrices;
}

std::vector<double> Walk(std::uint64_t seed) {
  TTestHost host(MakeMarket());
  TMarketTicker ticker(host.Data(), host.Loop(), seed);
  std::vector<double> prices;
  for (int beat = 0; beat < 500; ++beat) {
    ticker.Beat();
    prices.push_back(PricesOf(host, "EDGE").FLast);
  }
  host.RunLoop();
  return prices;
}

TEST(MarketTicker, TheSameSeedWalksTheSameWayAndAnotherOneDoesNot) {
  EXPECT_EQ(Walk(7), Walk(7));
  EXPECT_NE(Walk(7), Walk(8));
}

TEST(MarketTicker, EveryPriceOfTheWalkIsAnOrderPriceOneTickWide) {
  TTestHost host(MakeMarket());
  TMarketTicker ticker(host.Data(), host.Loop());
  const TSpreadTableRecord& spreads = *host.Data().FindSpreadTable(TCode("M"));
  for (int beat = 0; beat < 2000; ++beat) {
    ticker.Beat();
    for (const char* symbol : {"LOW", "EDGE"}) {
      const TPriceFacts& prices = PricesOf(host, symbol);
      if (prices.FBid == 0) continue;  // not moved yet
      ASSERT_TRUE(spreads.IsOnTick(prices.FLast)) << symbol << ' ' << prices.FLast;
      ASSERT_GT(prices.FBid, 0);
      ASSERT_EQ(spreads.StepUp(prices.FBid), prices.FAsk);
      ASSERT_TRUE(prices.FLast == prices.FBid || prices.FLast == prices.FAsk);
    }
  }
  EXPECT_NE(PricesOf(host, "EDGE").FBid, 0);
  EXPECT_EQ(PricesOf(host, "EDGE").FPreviousClose, 10);
  EXPECT_EQ(PricesOf(host, "STILL").FBid, 0) << "its exchange does not trade";
  host.RunLoop();
}

TEST(MarketTicker, AReplayKeepsTheTimesOfItsFileAtItsSpeedAndStopsAfterTheLastTick) {
  TTestHost host(MakeMarket());
  TMarketTicker ticker(host.Data(), host.Loop());
  ticker.Replay(
      ReadTickFile("time,symbol,last,bid,ask\n"
                   "09:30:00,EDGE,10.05,10,10.05\n"
                   "09:30:00.4,EDGE,10.1,10.05,10.1\n",
                   host.Data()));
  ticker.SetSpeed(2);
  ticker.Start();
  ticker.Beat();
  EXPECT_EQ(PricesOf(host, "EDGE").FLast, 10.05);
  ticker.Beat();
  EXPECT_EQ(PricesOf(host, "EDGE").FLast, 10.05) << "200 ms have passed, not 400";
  ticker.Beat();
  EXPECT_EQ(PricesOf(host, "EDGE").FLast, 10.1);
  EXPECT_EQ(PricesOf(host, "EDGE").FBid, 10.05);
  EXPECT_FALSE(ticker.IsRunning());
  ticker.Start();
  ticker.Beat();
  EXPECT_EQ(PricesOf(host, "EDGE").FLast, 10.05) << "started again";
  host.RunLoop();
}

TEST(MarketTicker, AFaultyTickFileIsRefusedWithItsLineAndReason) {
  TTestHost host(MakeMarket());
  const auto refusal = [&](const std::string& rows) -> std::string {
    try {
      ReadTickFile("time,symbol,last,bid,ask\n" + rows, host.Data());
    } catch (const TTickFileError& error) {
      return error.what();
    }
    return "taken";
  };
  EXPECT_EQ(refusal("09:30:00,EDGE,10,10,10.05\n"), "taken");
  EXPECT_EQ(refusal("09:30:00,EDGE,10,10,10.05\n09:29:59,EDGE,10,10,10\n"),
            "line 3: the time is before that of the tick above");
  EXPECT_EQ(refusal("9:30,EDGE,10,10,10\n"), "line 2: no time of the day: \"9:30\"");
  EXPECT_EQ(refusal("09:30:00,NONE,10,10,10\n"), "line 2: no such symbol: \"NONE\"");
  EXPECT_EQ(refusal("09:30:00,EDGE,1e999,10,10\n"), "line 2: last is no price above 0: \"1e999\"");
  EXPECT_EQ(refusal("09:30:00,EDGE,10,10.1,10\n"), "line 2: the bid is above the ask");
  EXPECT_EQ(refusal("09:30:00,EDGE,10\n"), "line 2: 5 fields wanted, there are 3");
  EXPECT_EQ(refusal(""), "line 2: there is no tick");
}

}  // namespace
}  // namespace margindesk
