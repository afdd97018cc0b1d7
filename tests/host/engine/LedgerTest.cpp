#include <gtest/gtest.h>

#include "host/engine/Ledger.h"
#include "tests/host/engine/EngineBook.h"

namespace margindesk {
namespace {

double MarginOf(const THostData& data, const std::vector<std::pair<const char*, double>>& holdings) {
  std::vector<TExposedPosition> positions;
  for (const auto& [symbol, quantity] : holdings) {
    TExposedPosition& exposed = positions.emplace_back();
    exposed.FPosition.FSymbol = TCode(symbol);
    exposed.FPosition.FHoldingQuantity = quantity;
    exposed.FLends = true;
  }
  return ReckonExposure(data, positions).FInitial;
}

double FigureOf(const TLedger& ledger, std::string_view currency, TFigure figure) {
  for (const TFigureFacts& row : ledger.GetFigures()) {
    if (row.FCurrency == TCode(currency)) return FigureIn(row, figure);
  }
  ADD_FAILURE() << "no figures in " << currency;
  return 0;
}

TEST(MarginTest, EachKindOfProductNeedsWhatItsRuleSays) {
  const THostData data{TEngineBook()};
  EXPECT_DOUBLE_EQ(MarginOf(data, {{"700", 1000}}), 4000) << "0.4 of 10000";
  EXPECT_DOUBLE_EQ(MarginOf(data, {{"F1", 5}}), 590000);
  EXPECT_DOUBLE_EQ(MarginOf(data, {{"F1", 3}, {"F1", -3}}), 0) << "one contract held both ways";
  EXPECT_DOUBLE_EQ(MarginOf(data, {{"F1", 5}, {"F2", -2}}), 3 * 118000 + 2 * 24000);
  EXPECT_DOUBLE_EQ(MarginOf(data, {{"F1", 1}, {"MF", -5}}), 24000) << "five small ones make a large one";
  EXPECT_DOUBLE_EQ(MarginOf(data, {{"F1", 2}, {"MF", -5}}), 118000 + 24000);
  EXPECT_DOUBLE_EQ(MarginOf(data, {{"C27", 4}, {"P24", 4}}), 0) << "a long option needs none";
  // 0.07 x 1257115 less 92885 out of the money is below 0.03 x 1257115 = 37713.45; the premium is 7300.
  EXPECT_DOUBLE_EQ(MarginOf(data, {{"C27", -2}}), 2 * (7300 + 37713.45));
  // 87998.05 less 57115 out of the money is below 0.03 of the strike's 1200000; the premium is 10250.
  EXPECT_DOUBLE_EQ(MarginOf(data, {{"P24", -1}}), 10250 + 36000);
}

TEST(LedgerTest, APurchaseOnMarginMovesEveryFigureThatItConcernsAndTheTotalInTheBaseCurrency) {
  TEngineBook book;
  FigureOf(book.FFigures[2], TFigure::kBodDayTradeLimit) = 5000;
  FigureOf(book.FFigures[2], TFigure::kDayTradeLimit) = 5000;
  FigureOf(book.FFigures[2], TFigure::kCreditInterest) = 7.77;
  const THostData data(book);
  TLedger ledger(data, TCode("A"));
  EXPECT_EQ(ledger.ApplyFill(OrderFor("A", "AA", kSideBuy, 19, 100), {19, 100}), 3.47) << "1900 x 0.0013 + 1";
  const auto figure = [&](TFigure wanted) { return FigureOf(ledger, "USD", wanted); };
  EXPECT_DOUBLE_EQ(figure(TFigure::kCashBalance), 1e6 - 1903.47);
  EXPECT_DOUBLE_EQ(figure(TFigure::kMarginableAmount), 1200);
  EXPECT_DOUBLE_EQ(figure(TFigure::kInitialMargin), 800);
  EXPECT_DOUBLE_EQ(figure(TFigure::kMaintenanceMargin), 600);
  EXPECT_DOUBLE_EQ(figure(TFigure::kNetEquity), 100 - 3.47) << "worth 2000 now";
  EXPECT_DOUBLE_EQ(figure(TFigure::kTradingLimit), 1e6 - 703.47);
  EXPECT_NEAR(figure(TFigure::kPurchasingPower), -2.5 * 703.47, 1e-9) << "by its change alone";
  EXPECT_NEAR(figure(TFigure::kWebTradingLimit), -0.8 * 703.47, 1e-9);
  EXPECT_DOUBLE_EQ(figure(TFigure::kDayTradeLimit), 3100);
  EXPECT_DOUBLE_EQ(figure(TFigure::kOwnUnrealizedPL), 100);
  EXPECT_EQ(figure(TFigure::kCreditInterest), 7.77);
  EXPECT_DOUBLE_EQ(FigureOf(ledger, "", TFigure::kCashBalance), 1e6 - 8 * 1903.47);
  EXPECT_DOUBLE_EQ(FigureOf(ledger, "", TFigure::kCutLoss), 0.6 * 600 * 8);
  EXPECT_DOUBLE_EQ(FigureOf(ledger, "", TFigure::kMaxMargin), 6400);
  EXPECT_EQ(FigureOf(ledger, "HKD", TFigure::kCashBalance), 1e6);
}

TEST(LedgerTest, APositionIsClosedTurnedAndEmptiedAtItsAverageAndKeepsItsRow) {
  TEngineBook book;
  book.Position("B", "F1", 2).FAveragePrice = 25000;
  const THostData data(book);
  TLedger ledger(data, TCode("B"));
  ledger.ApplyFill(OrderFor("B", "F1", kSideSell, 25100, 3), {25100, 3});
  const TPositionFacts turned = ledger.GetChange().FPositions.at(0);
  EXPECT_EQ(turned.FHoldingQuantity, -1);
  EXPECT_TRUE(turned.FShort);
  EXPECT_EQ(turned.FAveragePrice, 25100);
  EXPECT_EQ(turned.FRealizedPL, 2 * 100 * 50);
  EXPECT_EQ(turned.FPLSecondPart, 3 * (25100 - 25168) * 50);
  EXPECT_DOUBLE_EQ(FigureOf(ledger, "HKD", TFigure::kCashBalance), 1e6 + 10000 - 45);
  ledger.ApplyFill(OrderFor("B", "F1", kSideBuy, 25100, 1), {25100, 1});
  const TPositionFacts empty = ledger.GetChange().FPositions.at(0);
  EXPECT_EQ(empty.FHoldingQuantity, 0);
  EXPECT_EQ(empty.FTodaySellQuantity, 3);
  EXPECT_EQ(empty.FCompletedBuyAmount, 25100 * 50);
}

TEST(LedgerTest, ACurrencyGainsARowAndAnExcludedOneLeavesTheTotalAlone) {
  const THostData data{TEngineBook()};
  TLedger ledger(data, TCode("A"));
  ledger.ApplyFill(OrderFor("A", "TW1", kSideBuy, 100, 10), {100, 10});
  EXPECT_EQ(FigureOf(ledger, "TWD", TFigure::kCashBalance), -1000);
  EXPECT_EQ(FigureOf(ledger, "", TFigure::kCashBalance), 1e6);
}

TEST(LedgerTest, OppositePositionsOfAGroupAreMarginedOnceInTheMastersConsolidatedFigures) {
  TEngineBook book;
  book.Position("A", "F1", -2);
  for (const char* currency : {"", "HKD"}) {
    book.FConsolidated.emplace_back().FAccount = TCode("M");
    book.FConsolidated.back().FCurrency = TCode(currency);
    FigureOf(book.FConsolidated.back(), TFigure::kInitialMargin) = 236000;
  }
  const THostData data(book);
  TLedger ledger(data, TCode("B"));
  ledger.ApplyFill(OrderFor("B", "F1", kSideBuy, 25168, 2), {25168, 2});
  EXPECT_EQ(FigureOf(ledger, "HKD", TFigure::kInitialMargin), 236000);
  EXPECT_EQ(FigureIn(ledger.GetChange().FConsolidated.at(1), TFigure::kInitialMargin), 0);
  EXPECT_EQ(FigureIn(ledger.GetChange().FConsolidated.at(0), TFigure::kInitialMargin), 0);
}

TEST(LedgerTest, ARestingOrderHoldsWhatItMayCostAndLetsGoOfTheSameWhateverPricesDid) {
  TEngineBook book;
  book.Position("B", "F1", 1).FAveragePrice = 25000;
  THostData data(book);
  TLedger ledger(data, TCode("B"));
  TOrderFacts close = OrderFor("B", "F1", kSideSell, 26000, 1);
  TOrderFacts open = close;
  TOrderFacts option = OrderFor("B", "C27", kSideSell, 200, 1);
  ledger.Reserve(close);
  ledger.Reserve(open);
  EXPECT_EQ(close.FHoldAmount, 0);
  EXPECT_EQ(open.FHoldAmount, 118000) << "the first one closes the position already";
  ledger.Reserve(option);
  EXPECT_GT(option.FHoldAmount, 37713);
  EXPECT_EQ(FigureOf(ledger, "HKD", TFigure::kTradingLimit), 1e6 - (118000 + option.FHoldAmount));
  data.SetPrice(TCode("IDX"), {30000, 0, 0, 0, 0});
  for (TOrderFacts* order : {&close, &open, &option}) ledger.Release(*order);
  EXPECT_NEAR(FigureOf(ledger, "HKD", TFigure::kHoldFund), 0, 1e-9);
}

}  // namespace
}  // namespace margindesk
