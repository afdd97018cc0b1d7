#include <gtest/gtest.h>

#include "host/services/SpreadTableRecord.h"
#include "marginsim/OrderRules.h"

namespace margindesk {
namespace {

TEST(OrderRules, WholeNumbersBecomeFiveDigitsAndLettersUpperCase) {
  EXPECT_EQ(PadSymbol(" 700 "), "00700");
  EXPECT_EQ(PadSymbol("123456"), "123456");
  EXPECT_EQ(PadSymbol("abc"), "ABC");
  EXPECT_EQ(PadSymbol("7a"), "7A");
}

TEST(OrderRules, QuantitiesAreCutToWholeLotsTowardZero) {
  EXPECT_EQ(SnapToLot(250, 100), 200);
  EXPECT_EQ(SnapToLot(-250, 100), -200);
  EXPECT_EQ(SnapToLot(300, 100), std::nullopt);
  EXPECT_EQ(SnapToLot(0.7, 0.1), std::nullopt) << "seven lots, if a bit less in binary";
  EXPECT_EQ(SnapToLot(2.5, 1e-8), 2) << "a lot of nothing is a lot of one";
  EXPECT_EQ(ParseLotSize("board"), 1);
}

TEST(OrderRules, ABondAmountIsTheMinimumAndWholeIncrements) {
  EXPECT_TRUE(IsBondAmount(10000, 10000, 5000));
  EXPECT_TRUE(IsBondAmount(10000 - 5e-8, 10000, 5000));
  EXPECT_FALSE(IsBondAmount(12500, 10000, 5000));
  EXPECT_FALSE(IsBondAmount(5000, 10000, 5000)) << "whole increments, but below the minimum";
  EXPECT_TRUE(IsBondAmount(1, 0, 5000));
  EXPECT_TRUE(IsBondAmount(1, 10000, 0));
}

TEST(OrderRules, OnlyRealPricesSpareAMultiplierOfZero) {
  EXPECT_EQ(ToRealPrice(250, 100), 2.5);
  EXPECT_EQ(ToDisplayPrice(2.5, 100), 250);
  EXPECT_EQ(ToRealPrice(250, 1e-7), 250);
  EXPECT_EQ(ToDisplayPrice(2.5, 0), 0);
}

class Spinning : public testing::Test {
 protected:
  Spinning() {
    FTable.Add({TCode("M"), 0, 10, 0.01});
    FTable.Add({TCode("M"), 10, 20, 0.02});
  }

  TSpreadTableRecord FTable;
  const TBandLimits FLower{10, 0};
  const TBandLimits FUpper{20, 10};
};

TEST_F(Spinning, OverABandsLimitGoesOneTickBeyondItIntoTheNextBand) {
  TPriceStep step = StepPrice(10.01, 10, FLower, true, &FTable);
  EXPECT_EQ(step.FPrice, 10.02);
  EXPECT_TRUE(step.FSnapped);
  EXPECT_EQ(step.FBand.value().FTick, 0.02);

  step = StepPrice(9.98, 10, FUpper, true, &FTable);
  EXPECT_EQ(step.FPrice, 9.99);
  EXPECT_EQ(step.FBand.value().FTick, 0.01);
}

TEST_F(Spinning, WithinABandGoesOneTickFromTheLastPrice) {
  EXPECT_EQ(StepPrice(5.1, 5, FLower, true, &FTable).FPrice, 5.01);
  EXPECT_EQ(StepPrice(4.9, 5, FLower, true, &FTable).FPrice, 4.99);
  EXPECT_EQ(StepPrice(5, 5, FLower, true, &FTable).FPrice, 5);
  EXPECT_EQ(StepPrice(10, 9.99, FLower, true, &FTable).FPrice, 10) << "a limit belongs to its band";
  const TPriceStep unknown = StepPrice(11.5, 11, std::nullopt, true, &FTable);
  EXPECT_EQ(unknown.FPrice, 11.02) << "unknown limits bound nothing";
  EXPECT_FALSE(unknown.FBand);
}

TEST_F(Spinning, ATypedPriceStaysAsItIsAndOnlyChangesTheBand) {
  const TPriceStep crossed = StepPrice(12.345, 5, FLower, false, &FTable);
  EXPECT_EQ(crossed.FPrice, 12.345);
  EXPECT_FALSE(crossed.FSnapped);
  EXPECT_EQ(crossed.FBand.value().FLowerLimit, 10);
  EXPECT_FALSE(StepPrice(5.005, 5, FLower, false, &FTable).FBand);
  const TPriceStep outside = StepPrice(99, 15, FUpper, false, &FTable);
  EXPECT_EQ(outside.FPrice, 99);
  EXPECT_FALSE(outside.FBand) << "no band holds it";
  EXPECT_EQ(StepPrice(12.345, 5, FLower, true, nullptr).FPrice, 12.345) << "nor is there a tick";
}

}  // namespace
}  // namespace margindesk
