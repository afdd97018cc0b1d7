#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/contract/Constdef.h"
#include "model/contract/PositionAdapter.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const TCode kA1("A1");
const TCode kA2("A2");
const TCode kM1("M1");

TTestBook TwoSubAccounts() {
  TTestBook book;
  book.Currency("HKD", 1);
  book.Product("5", "HKD", 60);
  book.Product("700", "HKD", 400);
  book.Account("M1").MasterType(0);
  book.Account("A1").Master("M1").Position("5", 100).Position("700", 200);
  book.Account("A2").Master("M1").Position("5", 300);
  return book;
}

TPositionFacts Position(TCode account, std::string_view symbol, double quantity) {
  TPositionFacts facts;
  facts.FAccount = account;
  facts.FSymbol = TCode(symbol);
  facts.FHoldingQuantity = quantity;
  return facts;
}

TPriceFacts LastPrice(double last) {
  TPriceFacts prices;
  prices.FLast = last;
  return prices;
}

TPositionMap PositionsOf(TCode account) {
  TPositionMap positions;
  TCustomPositionAdapter::GetInstance().GetPositionList(account, positions);
  return positions;
}

double HoldingOf(const TPositionMap& positions, std::string_view key) {
  const TCustomPositionData* position = positions.Find(key);
  return position == nullptr ? 0 : position->GetHoldingQuantity();
}

class PositionAdapterTest : public testing::Test {
 protected:
  void TearDown() override {
    FAdapter.UnregisterPositionListener(kA1, this);
    FAdapter.UnregisterPositionListener(kA2, this);
    FAdapter.UnregisterSubAccountPositionListener(kM1, this);
    FAdapter.RemovePositionMarketDataHandler(this);
  }

  TTestHost FHost{TwoSubAccounts()};
  TCustomPositionAdapter& FAdapter = TCustomPositionAdapter::GetInstance();
  TRecorder FRecorder;
};

TEST_F(PositionAdapterTest, ChangesOfOneTurnArriveTogetherAndNameWhatChanged) {
  FAdapter.RegisterPositionListener(kA1, FRecorder.Positions(), this, TCode());
  FHost.Data().UpsertPosition(Position(kA1, "5", 150));
  FHost.Data().UpsertPosition(Position(kA1, "9", 10));
  FHost.Data().UpsertPosition(Position(kA1, "5", 160));
  FHost.Data().UpsertPosition(Position(kA2, "5", 310));
  EXPECT_THAT(FRecorder.Take(), IsEmpty());
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1(5 9) A2(5)"));
  EXPECT_EQ(HoldingOf(PositionsOf(kA1), "5"), 160);
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), IsEmpty());
}

TEST_F(PositionAdapterTest, AMovedSubscriptionHearsTheNewAccountAlone) {
  FAdapter.RegisterPositionListener(kA1, FRecorder.Positions(), this, TCode());
  FAdapter.RegisterPositionListener(kA2, FRecorder.Positions(), this, kA1);
  FHost.Data().UpsertPosition(Position(kA1, "5", 1));
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), IsEmpty());
  FHost.Data().UpsertPosition(Position(kA2, "5", 2));
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A2(5)"));
}

TEST_F(PositionAdapterTest, AMasterHearsItsSubAccountsOnceATurn) {
  FAdapter.RegisterSubAccountPositionListener(kM1, FRecorder.Positions(), this);
  FHost.Data().UpsertPosition(Position(kA1, "700", 1));
  FHost.Data().UpsertPosition(Position(kA2, "5", 2));
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1(700) A2(5)"));
}

TEST_F(PositionAdapterTest, ARemovedPositionIsToldByItsAccount) {
  FAdapter.RegisterPositionListener(kA1, FRecorder.Positions(), this, TCode());
  EXPECT_TRUE(FHost.Data().RemovePosition(kA1, "5"));
  EXPECT_FALSE(FHost.Data().RemovePosition(kA1, "5"));
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1()"));
  EXPECT_THAT(PositionsOf(kA1).GetKeys(), ElementsAre("700"));
}

TEST_F(PositionAdapterTest, AChangeMadeByAHandlerArrivesInTheNextTurn) {
  FAdapter.RegisterPositionListener(kA1, FRecorder.Positions(), this, TCode());
  FRecorder.FOnNotice = [this] {
    FRecorder.FOnNotice = nullptr;
    FHost.Data().UpsertPosition(Position(kA1, "700", 7));
  };
  FHost.Data().UpsertPosition(Position(kA1, "5", 1));
  EXPECT_TRUE(FHost.Loop().RunOnce());
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1(5)"));
  EXPECT_TRUE(FHost.Loop().RunOnce());
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1(700)"));
}

TEST_F(PositionAdapterTest, AMapKeepsWhatItHoldsWhateverHappensToThePositions) {
  const TPositionMap before = PositionsOf(kA1);
  FHost.Data().UpsertPosition(Position(kA1, "5", 999));
  EXPECT_EQ(HoldingOf(before, "5"), 100);
  EXPECT_EQ(HoldingOf(PositionsOf(kA1), "5"), 999);
  FHost.Data().RemovePosition(kA1, "5");
  FHost.Data().Replace(THostContents());
  EXPECT_THAT(before.GetKeys(), ElementsAre("5", "700"));
  EXPECT_EQ(HoldingOf(before, "700"), 200);
  EXPECT_EQ(before.Find("700")->GetAccountID(), kA1);
  EXPECT_EQ(before.Find("700")->GetReferenceItem(), nullptr) << "the symbol is no longer known";
  EXPECT_TRUE(PositionsOf(kA1).IsEmpty());
}

TEST_F(PositionAdapterTest, PositionsOfAnAccountAreOrderedByKeyAndTheLastOfAKeyCounts) {
  std::vector<TPositionFacts> positions = {Position(kA1, "9", 1), Position(kA1, "10", 2),
                                           Position(kA1, "9", 3)};
  positions[1].FKey = "z";
  FHost.Data().SetPositions(kA1, positions);
  EXPECT_THAT(PositionsOf(kA1).GetKeys(), ElementsAre("9", "z"));
  EXPECT_EQ(HoldingOf(PositionsOf(kA1), "9"), 3);
  EXPECT_EQ(HoldingOf(PositionsOf(kA1), "5"), 0);
  TPositionMap unknown = PositionsOf(kA1);
  FAdapter.GetPositionList(TCode("nobody"), unknown);
  EXPECT_TRUE(unknown.IsEmpty());
}

TEST_F(PositionAdapterTest, APriceReachesTheAccountsThatHoldTheSymbolNow) {
  FAdapter.AddPositionMarketDataHandler(FRecorder.Positions(), this);
  FHost.Data().SetPrice(TCode("5"), LastPrice(61));
  FHost.Data().SetPrice(TCode("5"), LastPrice(62));
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1(5) A2(5)"));

  FHost.Data().RemovePosition(kA1, "5");
  FHost.Data().UpsertPosition(Position(kA2, "700", 5));
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), IsEmpty()) << "no price changed";
  FHost.Data().SetPrice(TCode("5"), LastPrice(63));
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A2(5)"));
  FHost.Data().SetPrice(TCode("700"), LastPrice(401));
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1(700) A2(700)"));
}

TEST_F(PositionAdapterTest, AReopenedMarketCountsAsANewPrice) {
  TTestBook book = TwoSubAccounts();
  book.Exchange("HK", false);
  book.Product("700", "HKD", 400).Exchange("HK");
  FHost.Data().Replace(book.Contents());
  FHost.RunLoop();
  FAdapter.AddPositionMarketDataHandler(FRecorder.Positions(), this);
  FHost.Data().SetExchangeOpen(TCode("HK"), true);
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1(700)"));
  FHost.Data().SetExchangeOpen(TCode("HK"), true);
  FHost.RunLoop();
  EXPECT_THAT(FRecorder.Take(), IsEmpty()) << "it was open already";
}

TEST(PositionValueTest, APositionIsWorthItsQuantityAtThePriceTimesTheContractSize) {
  TTestBook book;
  book.Product("share", "HKD", 60).PreviousClose(50);
  book.Product("closed", "HKD", 0).PreviousClose(50);
  book.Product("silent", "HKD", 0).BidAsk(1, 2);
  book.Product("future", "HKD", 25000).ContractSize(50);
  book.Product("bond", "USD", 98.5).Type(6).ContractSize(0.01);
  book.Product("unlisted", "USD", 10).Unlisted();
  const TTestHost host(book);
  const auto value = [](std::string_view symbol, double quantity) {
    double result = -1;
    const bool valued =
        TCustomPositionAdapter::GetInstance().GetPositionMarketValue(TCode(symbol), quantity, result);
    EXPECT_EQ(valued, result != -1);
    return result;
  };
  EXPECT_EQ(value("share", 100), 6000);
  EXPECT_EQ(value("closed", 100), 5000);
  EXPECT_EQ(value("silent", 100), -1);
  EXPECT_EQ(value("future", -2), -2500000);
  EXPECT_EQ(value("bond", 200000), 197000);
  EXPECT_EQ(value("unlisted", 1), -1);
  EXPECT_EQ(value("nothing of the kind", 1), -1);
}

TEST(PositionRecordTest, APositionAnswersTheColumnsOfThePositionGrid) {
  TTestBook book;
  book.Product("5", "HKD", 60);
  book.Account("A1").Position("5", -300).PriceBased(58.5);
  TPositionFacts& facts = book.Contents().FPositions.back();
  facts.FBODQuantity = 1;
  facts.FVoucherQuantity = 2;
  facts.FTodayBuyQuantity = 3;
  facts.FTodaySellQuantity = 4;
  facts.FQuantity = 5;
  facts.FCoveredQuantity = 6;
  const TTestHost host(book);
  const TPositionMap positions = PositionsOf(kA1);
  const TCustomPositionData& position = *positions.Find("5");
  const std::pair<std::int32_t, double> quantities[] = {{9014, 1}, {1302, 2}, {479, 3},
                                                        {480, 4},  {95, 5},   {1105, 6}};
  for (const auto& [field, quantity] : quantities) {
    EXPECT_EQ(position.GetDataValue(field), TVariant::Float(quantity)) << field;
  }
  EXPECT_EQ(position.GetDataString(0), "5");
  EXPECT_EQ(position.GetDataString(11), "S");
  EXPECT_EQ(position.GetDataValue(kPositionAveragePrice), TVariant::Float(58.5));
  EXPECT_TRUE(position.GetDataValue(kPositionBuyAveragePrice).IsUnassigned());
  EXPECT_TRUE(position.GetDataValue(155).IsUnassigned());
  EXPECT_TRUE(position.IsPriceBasedPL());
}

}  // namespace
}  // namespace margindesk
