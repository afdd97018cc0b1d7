#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/PayOff.h"
#include "host/services/PayOffCase.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;

constexpr std::chrono::sys_days kToday{std::chrono::year(2026) / 11 / 23};

TEST(PayOff, ABullSpreadEarnsBetweenItsStrikesAndIsLimitedBothWays) {
  // 6 paid and 2 received: 4 at risk of the 10 between the strikes, ten units a contract.
  const TPayOffLegs legs{{1, 10, 6, 'C', 100, 0}, {-1, 10, 2, 'C', 110, 0}};
  const TPayOffFigures figures = ReckonPayOffFigures(legs);
  EXPECT_THAT(figures.FBreakEvens, ElementsAre(DoubleNear(104, 1e-9)));
  EXPECT_DOUBLE_EQ(figures.FHighest.value(), 60);
  EXPECT_DOUBLE_EQ(figures.FLowest.value(), -40);
  EXPECT_DOUBLE_EQ(ReckonPayOff(legs, 106), 20);
}

TEST(PayOff, AShortStraddleBreaksEvenTwiceAndCanLoseWithoutLimit) {
  const TPayOffFigures figures = ReckonPayOffFigures({{-1, 10, 5, 'C', 100, 0}, {-1, 10, 4, 'P', 100, 0}});
  EXPECT_THAT(figures.FBreakEvens, ElementsAre(DoubleNear(91, 1e-9), DoubleNear(109, 1e-9)));
  EXPECT_DOUBLE_EQ(figures.FHighest.value(), 90);
  EXPECT_FALSE(figures.FLowest.has_value());
  const TPayOffFigures touching = ReckonPayOffFigures({{1, 1, 10, 'C', 100, 0}, {-2, 1, 0, 'C', 110, 0}});
  EXPECT_THAT(touching.FBreakEvens, ElementsAre(110)) << "once, though it comes from below and goes back";
}

TEST(PayOff, AStockUnderAShortCallLosesDownToNothingAndEarnsUpToTheStrike) {
  const TPayOffFigures figures = ReckonPayOffFigures({{100, 1, 95, 0, 0, 0}, {-1, 100, 3, 'C', 100, 0}});
  EXPECT_THAT(figures.FBreakEvens, ElementsAre(DoubleNear(92, 1e-9)));
  EXPECT_DOUBLE_EQ(figures.FHighest.value(), 800);
  EXPECT_DOUBLE_EQ(figures.FLowest.value(), -9200);
}

TEST(PayOff, AnOptionAtTheMoneyIsPricedAsWorkedOutByHand) {
  // One year at 20 percent: d1 = 0.1, d2 = -0.1, N(0.1) = 0.5398278; 100 * (2 * 0.5398278 - 1).
  EXPECT_NEAR(ReckonOptionPrice('C', 100, 100, 1, 0.2), 7.96557, 1e-5);
  EXPECT_NEAR(ReckonOptionPrice('P', 100, 100, 1, 0.2), 7.96557, 1e-5);
  EXPECT_NEAR(FindVolatility('P', 7.96557, 100, 100, 1).value(), 0.2, 1e-6);
  EXPECT_EQ(FindVolatility('C', 9.9, 110, 100, 1), std::nullopt);  // below what exercising gives
  EXPECT_DOUBLE_EQ(ReckonOptionPrice('P', 90, 100, 0, 0.2), 10);
}

TEST(PayOff, DaysAreCountedByTheCalendarAndNoDateIsRefused) {
  EXPECT_DOUBLE_EQ(ReckonYears("2027-01-28", kToday).value(), 66.0 / 365);
  EXPECT_DOUBLE_EQ(ReckonYears("2026-01-28", kToday).value(), 0);
  EXPECT_FALSE(ReckonYears("2027-02-30", kToday).has_value());
  EXPECT_FALSE(ReckonYears("20270128xx", kToday).has_value());
}

TEST(PayOff, TheWholePositionOnAnUnderlyingTakesNothingThatOutlivesTheOption) {
  TTestBook book;
  book.Currency("HKD", 1);
  book.Product("HGI", "HKD", 25000);
  const auto derivative = [&](std::string_view symbol, std::int32_t type, char right,
                              std::string_view expiry) {
    TProductFacts& product = book.Product(symbol, "HKD", 400);
    product.FProductType = type;
    product.FOptionRight = right;
    product.FStrike = right == 0 ? 0 : 26000;
    product.FUnderlying = TCode("HGI");
    product.FContractSize = 50;
    product.FExpiry = expiry;
  };
  derivative("CALL", 3, 'C', "2027-01-28");
  derivative("PUT", 3, 'P', "2027-01-28");
  derivative("LATER", 3, 'P', "2027-03-30");
  derivative("WARRANT", 4, 'C', "2027-01-28");
  derivative("FUTURE", 2, 0, "2027-03-30");
  book.Account("A");
  for (const char* symbol : {"CALL", "PUT", "LATER", "WARRANT", "FUTURE"}) book.Position("A", symbol, -2);
  TTestHost host(book);

  const TPayOffCase all = MakePayOffCase(host.Data(), TCode("A"), "CALL", true, kToday);
  ASSERT_EQ(all.FLegs.size(), 3U);
  EXPECT_EQ(all.FLegs[0].FRight, 'C');
  EXPECT_DOUBLE_EQ(all.FSpot, 25000);
  EXPECT_TRUE(all.FImplied);
  EXPECT_NEAR(ReckonOptionPrice('C', 25000, 26000, 66.0 / 365, all.FVolatility), 400, 1e-6);
  EXPECT_EQ(MakePayOffCase(host.Data(), TCode("A"), "CALL", false, kToday).FLegs.size(), 1U);
  EXPECT_TRUE(MakePayOffCase(host.Data(), TCode("A"), "WARRANT", true, kToday).FLegs.empty());
}

}  // namespace
}  // namespace margindesk
