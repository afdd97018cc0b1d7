#include <limits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/book/BookError.h"
#include "host/engine/OrderEngine.h"
#include "model/contract/OrderActionManager.h"
#include "tests/host/engine/EngineBook.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class OrderEngineTest : public testing::Test {
 protected:
  TOrderEngine& Engine() { return FHost.Engine(); }

  std::string Place(const TOrderFacts& facts, std::string* orderID = nullptr,
                    std::int32_t action = kActionOrder) {
    const auto order = ClientOrderOf(facts);
    const std::string refusal = Engine().Place(*order, action);
    if (orderID != nullptr) *orderID = order->GetOrderID();
    return refusal;
  }

  double Figure(std::string_view account, std::string_view currency, TFigure figure) {
    return FHost.Data().FindAccount(TCode(account))->FFigures.Find(TCode(currency))->GetFigure(figure);
  }

  TOrderState StateOf(const std::string& orderID) { return FHost.Data().FindOrder(orderID)->FState; }

  void SetQuote(std::string_view symbol, double bid, double ask) {
    FHost.Data().SetPrice(TCode(symbol), {bid, bid, ask, 0, 0});
    FHost.RunLoop();
  }

  static TEngineBook MakeBook() {
    TEngineBook book;
    book.FSpreadBands = {{TCode("HKEQ"), 0.01, 10, 0.01}, {TCode("HKEQ"), 10, 20, 0.02}};
    book.FProducts[0].FMarketCode = TCode("HKEQ");
    book.Position("A", "700", 1000).FExcludedQuantity = 300;
    book.Position("A", "FUND", 5);
    book.Account("S").FStatusFlags = 1024;
    book.Account("O").FStatusFlags = 2048;
    book.Account("poor");
    book.Figures("poor", "HKD");
    return book;
  }

  TTestHost FHost{MakeBook()};
};

TEST_F(OrderEngineTest, AnOrderIsRefusedForTheFirstRuleThatItBreaks) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  struct TCase {
    TOrderFacts FOrder;
    const char* FReason;
    std::int32_t FAction = kActionOrder;
  };
  const std::vector<TCase> cases = {
      {OrderFor("nobody", "700", kSideBuy, 10, 100), "Account nobody is unknown"},
      {OrderFor("A", "none", kSideBuy, 10, 100), "Symbol none is unknown"},
      {OrderFor("A", "IDX", kSideBuy, 10, 100), "IDX cannot be traded"},
      {OrderFor("A", "700", -1, 10, 100), "Buy or Sell"},
      {OrderFor("A", "700", kSideBuy, 10, 100), "not for 700", kActionOTCFund},
      {OrderFor("A", "FUND", kSideBuy, 10, 100), "not for FUND", kActionOTCBond},
      {OrderFor("S", "700", kSideBuy, 10, 100), "suspended"},
      {OrderFor("O", "700", kSideBuy, 10, 100), "may only sell"},
      {OrderFor("A", "700", kSideBuy, 10, 0), "quantity of the order for 700"},
      {OrderFor("A", "700", kSideBuy, 10, nan), "quantity of the order for 700"},
      {OrderFor("A", "700", kSideBuy, nan, 100), "price of the order for 700"},
      {OrderFor("A", "700", kSideBuy, -10, 100), "price of the order for 700"},
      {OrderFor("A", "700", kSideBuy, 0, 100), "price of the order for 700"},
      {OrderFor("A", "700", kSideBuy, infinite, 100), "price of the order for 700"},
      {OrderFor("A", "700", kSideBuy, 10, 1e300), "too large"},
      {OrderFor("A", "700", kSideBuy, 10, 150), "multiple of the lot size 100"},
      {OrderFor("A", "700", kSideBuy, 10.01, 100), "10.01 is not a price"},
      {OrderFor("A", "700", kSideBuy, 20.02, 100), "20.02 is not a price"},
      {OrderFor("A", "700", kSideSell, 12, 800), "Only 700 of 700"},
      {OrderFor("A", "BOND", kSideBuy, 98, 120000), "at least 100,000, in increments of 50,000",
       kActionOTCBond},
      {OrderFor("A", "FUND", kSideBuy, 0, 1), "subscription amount", kActionOTCFund},
      {OrderFor("A", "FUND", kSideBuy, 5000, 2), "must be 1", kActionOTCFund},
      {OrderFor("A", "FUND", kSideBuy, 999, 1), "at least 1,000", kActionOTCFund},
      {OrderFor("A", "FUND", kSideSell, 1, 6), "Only 5 of FUND", kActionOTCFund},
      {OrderFor("poor", "700", kSideBuy, 8, 100), "HKD 810.00 needed, HKD 0.00 available"},
      {OrderFor("A", "BOND", kSideBuy, 98, 2e6), "HKD 1,960,000.00 needed, HKD 1,000,000.00 available",
       kActionOTCBond},
  };
  for (const TCase& wrong : cases)
    EXPECT_THAT(Place(wrong.FOrder, nullptr, wrong.FAction), HasSubstr(wrong.FReason));
  EXPECT_TRUE(FHost.Data().GetOrders().empty());
  EXPECT_FALSE(FHost.Data().HasChanges());
  EXPECT_EQ(Place(OrderFor("A", "700", kSideSell, 12, 700)), "") << "what is not pledged";
  EXPECT_THAT(Place(OrderFor("A", "700", kSideSell, 12, 100)), HasSubstr("Only 0 of 700")) << "it is offered";
}

TEST_F(OrderEngineTest, WhatRestingOrdersHoldIsNoLongerThere) {
  EXPECT_EQ(Place(OrderFor("A", "BOND", kSideBuy, 90, 1e6), nullptr, kActionOTCBond), "");
  EXPECT_EQ(Figure("A", "", TFigure::kTradingLimit), 100000);
  EXPECT_THAT(Place(OrderFor("A", "BOND", kSideBuy, 90, 250000), nullptr, kActionOTCBond),
              HasSubstr("HKD 100,000.00 available"));
}

TEST_F(OrderEngineTest, MarketableOrdersFillAtTheMarketAndTheRestRestUntilItComesToThem) {
  std::string now;
  std::string early;
  std::string late;
  std::string better;
  EXPECT_EQ(Place(OrderFor("A", "AA", kSideBuy, 25, 10), &now), "");
  EXPECT_EQ(FHost.Data().GetFills(now).at(0).FPrice, 20.05) << "at the ask, not at the limit";
  EXPECT_EQ(Place(OrderFor("A", "AA", kSideBuy, 18, 10), &early), "");
  EXPECT_EQ(Place(OrderFor("A", "AA", kSideBuy, 18, 10), &late), "");
  EXPECT_EQ(Place(OrderFor("A", "AA", kSideBuy, 19, 10), &better), "");
  EXPECT_EQ(Figure("A", "USD", TFigure::kHoldFund), 180 + 180 + 190);
  SetQuote("AA", 18.4, 18.5);
  EXPECT_EQ(StateOf(better), TOrderState::kFilled);
  EXPECT_EQ(StateOf(early), TOrderState::kResting);
  FHost.Data().SetExchangeOpen(TCode("US"), false);
  SetQuote("AA", 17, 17.5);
  EXPECT_EQ(StateOf(early), TOrderState::kResting) << "the exchange is closed";
  FHost.Data().SetExchangeOpen(TCode("US"), true);
  FHost.RunLoop();
  EXPECT_EQ(StateOf(early), TOrderState::kFilled);
  EXPECT_EQ(StateOf(late), TOrderState::kFilled);
  EXPECT_EQ(Figure("A", "USD", TFigure::kHoldFund), 0);
  EXPECT_EQ(Figure("A", "USD", TFigure::kPendingBuyAmount), 0);
}

TEST_F(OrderEngineTest, TheBetterPriceComesFirstAndAfterItTheEarlierOrder) {
  std::vector<double> filled;
  TOrderEngine engine(
      FHost.Data(), FHost.Accounts(), FHost.Loop(),
      [&filled](const TBookChange& change) {
        if (!change.FFills.empty()) filled.push_back(change.FOrders[0].FQuantity);
      },
      &std::chrono::system_clock::now);
  for (const auto& [price, quantity] : {std::pair(18.0, 1.0), {17, 2}, {19, 3}, {18, 4}}) {
    EXPECT_EQ(engine.Place(*ClientOrderOf(OrderFor("A", "AA", kSideBuy, price, quantity)), kActionOrder), "");
  }
  FHost.Data().SetPrice(TCode("AA"), {10, 10, 10, 0, 0});
  engine.Match(FHost.Data().GetChanges().FSymbols);
  EXPECT_THAT(filled, ElementsAre(3, 1, 4, 2));
}

TEST_F(OrderEngineTest, WhileChinaConnectIsOnItsOrdersMoveTheLinkedAccountsFigures) {
  TEngineBook book = MakeBook();
  book.FAccounts[1].FChinaConnectAccount = TCode("L");
  book.Account("L").FMarginType = 1;
  for (const char* currency : {"", "CNY"}) TEngineBook::Limit(book.Figures("L", currency), 1e6);
  book.FChinaConnect = true;
  FHost.Data().Replace(book);
  EXPECT_EQ(Place(OrderFor("A", "601", kSideBuy, 6, 100)), "");
  EXPECT_EQ(Place(OrderFor("A", "AA", kSideBuy, 20.05, 100)), "");
  EXPECT_DOUBLE_EQ(Figure("L", "CNY", TFigure::kCashBalance), -505);
  EXPECT_DOUBLE_EQ(Figure("L", "", TFigure::kCashBalance), -1010);
  EXPECT_DOUBLE_EQ(Figure("A", "USD", TFigure::kCashBalance), 1e6 - 2005 - 3.61);
  EXPECT_EQ(FHost.Data().FindAccount(TCode("A"))->FFigures.Find(TCode("CNY")), nullptr);
  EXPECT_EQ(FHost.Data().FindAccount(TCode("A"))->FPositions->Find("601")->FHoldingQuantity, 100);
}

TEST_F(OrderEngineTest, AFundIsBoughtForAnAmountAtItsPrice) {
  std::string subscription;
  EXPECT_EQ(Place(OrderFor("A", "FUND", kSideBuy, 1000, 1), &subscription, kActionOTCFund), "");
  const TFillFacts& fill = FHost.Data().GetFills(subscription).at(0);
  EXPECT_EQ(fill.FPrice, 12.5);
  EXPECT_EQ(fill.FQuantity, 80);
  EXPECT_EQ(Figure("A", "HKD", TFigure::kCashBalance), 1e6 - 1000);
}

TEST_F(OrderEngineTest, AnOrderIsPlacedOnceAndCancelledOnce) {
  auto& manager = TCustomOrderActionManager::GetInstance();
  const auto order = ClientOrderOf(OrderFor("A", "700", kSideBuy, 8, 100));
  EXPECT_TRUE(manager.TakeOrderAction(nullptr, *order, kActionOrder, true));
  EXPECT_FALSE(manager.TakeOrderAction(nullptr, *order, kActionOrder, true));
  EXPECT_THAT(FHost.Messages(), ElementsAre(HasSubstr("placed already, as number " + order->GetOrderID())));
  EXPECT_THAT(Engine().Cancel(TCode("B"), order->GetOrderID()), HasSubstr("Account B has no order"));
  EXPECT_EQ(Engine().Cancel(TCode("A"), order->GetOrderID()), "");
  EXPECT_THAT(Engine().Cancel(TCode("A"), order->GetOrderID()), HasSubstr("no longer be cancelled"));
  EXPECT_EQ(Figure("A", "HKD", TFigure::kHoldFund), 0);
  EXPECT_EQ(Figure("A", "HKD", TFigure::kTradingLimit), 1e6);
}

TEST_F(OrderEngineTest, ABookThatFailsLeavesEverythingAsItWas) {
  bool fails = true;
  TOrderEngine engine(
      FHost.Data(), FHost.Accounts(), FHost.Loop(),
      [&fails](const TBookChange& /*change*/) {
        if (fails) throw TBookError("book.db", "the disk is full");
      },
      &std::chrono::system_clock::now);
  const auto order = ClientOrderOf(OrderFor("A", "AA", kSideBuy, 18, 10));
  EXPECT_THAT(engine.Place(*order, kActionOrder), HasSubstr("the disk is full"));
  EXPECT_EQ(order->GetOrderID(), "");
  EXPECT_FALSE(FHost.Data().HasChanges());
  EXPECT_TRUE(FHost.Data().GetOrders().empty());
  fails = false;
  EXPECT_EQ(engine.Place(*order, kActionOrder), "");
  fails = true;
  FHost.Data().SetPrice(TCode("AA"), {17, 17, 17, 0, 0});
  for (int i = 0; i < 3; ++i) engine.Match(FHost.Data().GetChanges().FSymbols);
  EXPECT_EQ(StateOf(order->GetOrderID()), TOrderState::kResting);
  EXPECT_EQ(FHost.Messages().size(), 1U) << "not with every price";
  fails = false;
  engine.Match(FHost.Data().GetChanges().FSymbols);
  EXPECT_EQ(StateOf(order->GetOrderID()), TOrderState::kFilled);
}

}  // namespace
}  // namespace margindesk
