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
  book.Exchange("HK", false);
  book.Product("5", "HKD", 60);
  book.Product("700", "HKD", 400).FExchange = TCode("HK");
  book.Account("M1").FMasterType = 0;
  book.Account("A1", "M1");
  book.Account("A2", "M1");
  book.Position("A1", "5", 100);
  book.Position("A1", "700", 200);
  book.Position("A2", "5", 300);
  return book;
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

  void Upsert(std::string_view account, std::string_view symbol, double quantity) {
    FHost.Data().UpsertPosition(TTestBook().Position(account, symbol, quantity));
  }
  void SetLast(std::string_view symbol, double last) { FHost.Data().SetPrice(TCode(symbol), {last}); }
  std::vector<std::string> Heard() {
    FHost.RunLoop();
    return FRecorder.Take();
  }

  TTestHost FHost{TwoSubAccounts()};
  TCustomPositionAdapter& FAdapter = TCustomPositionAdapter::GetInstance();
  TRecorder FRecorder;
};

TEST_F(PositionAdapterTest, ChangesOfOneTurnArriveTogetherAndAMovedSubscriptionHearsTheNewAccount) {
  FAdapter.RegisterPositionListener(kA1, FRecorder.Positions(), this, TCode());
  Upsert("A1", "5", 150);
  Upsert("A1", "9", 10);
  Upsert("A1", "5", 160);
  Upsert("A2", "5", 310);
  EXPECT_THAT(FRecorder.Take(), IsEmpty());
  EXPECT_THAT(Heard(), ElementsAre("A1(5 9 ) A2(5 ) "));
  EXPECT_EQ(HoldingOf(PositionsOf(kA1), "5"), 160);
  EXPECT_THAT(Heard(), IsEmpty());
  EXPECT_TRUE(FHost.Data().RemovePosition(kA1, "5"));
  EXPECT_FALSE(FHost.Data().RemovePosition(kA1, "5"));
  EXPECT_THAT(Heard(), ElementsAre("A1() "));
  FAdapter.RegisterPositionListener(kA2, FRecorder.Positions(), this, kA1);
  Upsert("A1", "5", 1);
  EXPECT_THAT(Heard(), IsEmpty());
  Upsert("A2", "5", 2);
  EXPECT_THAT(Heard(), ElementsAre("A2(5 ) "));
}

TEST_F(PositionAdapterTest, AMasterHearsItsSubAccountsAndAHandlersOwnChangeInTheNextTurn) {
  FAdapter.RegisterSubAccountPositionListener(kM1, FRecorder.Positions(), this);
  FRecorder.FOnNotice = [this] { Upsert("A1", "9", 7); };
  Upsert("A1", "700", 1);
  Upsert("A2", "5", 2);
  EXPECT_TRUE(FHost.Loop().RunOnce());
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1(700 ) A2(5 ) "));
  EXPECT_TRUE(FHost.Loop().RunOnce());
  EXPECT_THAT(FRecorder.Take(), ElementsAre("A1(9 ) "));
}

TEST_F(PositionAdapterTest, AMapKeepsWhatItHoldsWhateverHappensToThePositions) {
  const TPositionMap before = PositionsOf(kA1);
  Upsert("A1", "5", 999);
  EXPECT_EQ(HoldingOf(before, "5"), 100);
  EXPECT_EQ(HoldingOf(PositionsOf(kA1), "5"), 999);
  FHost.Data().RemovePosition(kA1, "5");
  FHost.Data().Replace({});
  EXPECT_THAT(before.GetKeys(), ElementsAre("5", "700"));
  EXPECT_EQ(HoldingOf(before, "700"), 200);
  EXPECT_EQ(before.Find("700")->GetReferenceItem(), nullptr) << "the symbol is no longer known";
  EXPECT_TRUE(PositionsOf(kA1).IsEmpty());
}

TEST_F(PositionAdapterTest, APriceAndAReopenedMarketReachTheAccountsThatHoldTheSymbolNow) {
  FAdapter.AddPositionMarketDataHandler(FRecorder.Positions(), this);
  SetLast("5", 61);
  SetLast("5", 62);
  EXPECT_THAT(Heard(), ElementsAre("A1(5 ) A2(5 ) "));
  FHost.Data().RemovePosition(kA1, "5");
  Upsert("A2", "700", 5);
  EXPECT_THAT(Heard(), IsEmpty()) << "no price changed";
  SetLast("5", 63);
  EXPECT_THAT(Heard(), ElementsAre("A2(5 ) "));
  for (const auto& expected : {std::vector<std::string>{"A1(700 ) A2(700 ) "}, {}}) {  // open, open already
    FHost.Data().SetExchangeOpen(TCode("HK"), true);
    EXPECT_EQ(Heard(), expected);
  }
}

TEST(PositionValueTest, APositionIsWorthItsQuantityAtThePriceTimesTheContractSize) {
  TTestBook book;
  book.Product("share", "HKD", 60);
  book.FPrices.back().second.FPreviousClose = 50;
  book.Product("closed", "HKD", 0);
  book.FPrices.back().second.FPreviousClose = 50;
  book.Product("silent", "HKD", 0);
  book.FPrices.back().second.FBid = 1;
  book.Product("future", "HKD", 25000).FContractSize = 50;
  book.Product("bond", "USD", 98.5).FContractSize = 0.01;
  book.Product("unlisted", "USD", 10).FListed = false;
  const TTestHost host(book);
  constexpr double kNone = -1;
  struct TCase {
    const char* FSymbol;
    double FQuantity;
    double FValue;
  };
  for (const TCase& example : {TCase{"share", 100, 6000},
                               {"closed", 100, 5000},
                               {"silent", 100, kNone},
                               {"future", -2, -2500000},
                               {"bond", 200000, 197000},
                               {"unlisted", 1, kNone},
                               {"unknown", 1, kNone}}) {
    double value = kNone;
    const auto& adapter = TCustomPositionAdapter::GetInstance();
    EXPECT_EQ(adapter.GetPositionMarketValue(TCode(example.FSymbol), example.FQuantity, value),
              example.FValue != kNone);
    EXPECT_EQ(value, example.FValue) << example.FSymbol;
  }
}

TEST(PositionRecordTest, APositionAnswersTheColumnsOfThePositionGrid) {
  TTestBook book;
  book.Account("A1");
  book.FPositions = {{kA1, "", TCode("5"), 0, 0, 0, 0, 0, 0, 0, true, true, 1, 2, 3, 4, 5, 6, 58.5, 0, 0}};
  const TTestHost host(book);
  const TPositionMap positions = PositionsOf(kA1);
  const TCustomPositionData& position = *positions.Find("5");
  const std::pair<std::int32_t, double> quantities[] = {
      {9014, 1}, {1302, 2}, {479, 3}, {480, 4}, {95, 5}, {1105, 6}, {kPositionAveragePrice, 58.5}};
  for (const auto& [field, quantity] : quantities) {
    EXPECT_EQ(position.GetDataValue(field), TVariant::Float(quantity)) << field;
  }
  EXPECT_EQ(position.GetDataString(0), "5");
  EXPECT_EQ(position.GetDataString(11), "S");
  EXPECT_TRUE(position.GetDataValue(kPositionBuyAveragePrice).IsUnassigned());
  EXPECT_TRUE(position.GetDataValue(155).IsUnassigned());
}

}  // namespace
}  // namespace margindesk
