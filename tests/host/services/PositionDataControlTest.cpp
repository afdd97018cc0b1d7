#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/ClientOrderRecord.h"
#include "model/AccountInfoConstDef.h"
#include "model/contract/Constdef.h"
#include "model/contract/OrderActionManager.h"
#include "model/contract/Positionviewdatacontrol.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Takes every order but those of symbol 700 and keeps it as a text.
class TOrderRecorder : public TCustomOrderActionManager {
 public:
  bool CheckOrderAction(const TCustomClientOrder& order, std::int32_t /*action*/, bool /*show*/) override {
    return order.GetSymbol().Text() != "700";
  }
  bool TakeOrderAction(const TClientOrderList* orders, TCustomClientOrder& order, std::int32_t action,
                       bool flag) override {
    EXPECT_TRUE(orders == nullptr && action == kActionOrder && flag);
    const auto& record = dynamic_cast<const TClientOrderRecord&>(order);
    FOrders.push_back(record.GetAccount().Text() + (record.GetSide() == kSideBuy ? " buy " : " sell ") +
                      FloatToText(record.GetQuantity()) + " " + record.GetSymbol().Text() + " @" +
                      FloatToText(record.GetPrice()) + record.GetExtraField(kOrderTypeField));
    return true;
  }
  std::vector<std::string> Take() { return std::exchange(FOrders, {}); }
  std::vector<std::string> FOrders;
};

class PositionGrid : public testing::Test {
 protected:
  PositionGrid() {
    FControl.SetOnChange(MakeDataChangeEvent<&PositionGrid::Count>(this));
    FControl.SetAccount(TCode("A1"));
    FChanges = 0;
  }

  static TTestBook Book() {
    TTestBook book;
    book.Currency("HKD", 1);
    book.Currency("USD", 8);
    book.Currency("TWD", 0.25).FExcluded = true;
    book.Exchange("HK");
    book.Exchange("SH").FChinaConnect = true;
    for (const char* symbol : {"5", "700", "AAPL", "2330", "600519"}) {
      book.Product(symbol, "HKD", 60).FExchange = TCode(symbol[0] == '6' ? "SH" : "HK");
      book.FPrices.back().second = {60, 59.5, 60.5, 0, 0};
    }
    book.FProducts[2].FCurrency = TCode("USD");
    book.FProducts[3].FCurrency = TCode("TWD");
    book.Account("M1").FMasterType = 1;
    book.Account("A1", "M1").FName = "Amber";
    book.Account("A2", "M1");
    book.Position("A1", "5", 100);
    book.Position("A1", "AAPL", -40);
    book.Position("A2", "5", 7);
    return book;
  }

  void Count(TBaseDataControl* /*sender*/) { ++FChanges; }
  static TPositionFacts Position(std::string_view symbol, double quantity) {
    return TTestBook().Position("A1", symbol, quantity);
  }
  void Put(const TPositionFacts& facts) { FHost.Data().UpsertPosition(facts), FHost.RunLoop(); }
  void Price(std::string_view symbol, double last) {
    FHost.Data().SetPrice(TCode(symbol), {last, 0, 0, 0, 0}), FHost.RunLoop();
  }
  void Configure(std::string_view key, std::string_view value) {
    FHost.Config().WriteString(FHost.Config().GetUserSection(), key, value, true);
  }
  void WhileAsked(const std::function<void()>& event) {  // and then yes
    FHost.MessageBox().SetPolicy([event](std::string_view) { return event(), true; });
  }
  std::vector<std::string> Keys() {
    std::vector<std::string> keys;
    for (std::int32_t row = 0; row < FControl.GetCount(); ++row) {
      keys.push_back(FControl.GetRowKey(row).substr(std::string_view("A1\n").size()));
    }
    return keys;
  }
  static std::string KeyOf(std::string_view position) { return "A1\n" + std::string(position); }
  std::string Text(std::string_view key, std::int32_t field) {
    return FControl.GetDisplayValue(FControl.FindRow(KeyOf(key)), field);
  }

  TTestHost FHost{Book()};
  TOrderRecorder FOrders;
  TServiceScope<TCustomOrderActionManager> FScope{FOrders};
  TPositionViewDataControl FControl{nullptr};
  int FChanges = 0;
};

TEST_F(PositionGrid, RowsFollowTheirAccountInKeyOrderAndKeepTheirKeys) {
  EXPECT_THAT(Keys(), ElementsAre("5", "AAPL"));
  Put(Position("700", 10));
  TPositionFacts flat = Position("2330", 0);
  Put(flat);
  EXPECT_THAT(Keys(), ElementsAre("5", "700", "AAPL")) << "a position that is 0 everywhere is none";
  flat.FTodayBuyQuantity = flat.FTodaySellQuantity = 10;
  Put(flat);
  EXPECT_THAT(Keys(), ElementsAre("2330", "5", "700", "AAPL")) << "traded today and flat";
  FHost.Data().RemovePosition(TCode("A1"), "5");
  FHost.RunLoop();
  EXPECT_EQ(FControl.FindRow(KeyOf("AAPL")), 2);
  EXPECT_EQ(FControl.FindRow(KeyOf("5")), -1);
  EXPECT_EQ(FControl.FindRow("A2\nAAPL"), -1) << "the same symbol of another account";
  FControl.SetAccount(TCode("nobody"));
  EXPECT_THAT(Keys(), IsEmpty());
}

TEST_F(PositionGrid, AMovedControlHearsTheNewAccountAloneAndAClosedOneLeavesNoRegistration) {
  const std::size_t before = FHost.CountRegistrations();
  auto control = std::make_unique<TPositionViewDataControl>(nullptr);
  control->SetAccount(TCode("A1"));
  const std::size_t registered = FHost.CountRegistrationsOf(control.get());
  control->SetAccount(TCode("M1"));
  EXPECT_EQ(FHost.CountRegistrationsOf(control.get()), registered);
  Put(Position("700", 1));
  EXPECT_EQ(control->GetCount(), 0) << "a change of another account";
  control->SetAggregate();
  EXPECT_EQ(control->GetCount(), 4) << "5, 700 and AAPL of A1, 5 of A2";
  EXPECT_EQ(control->GetDisplayValue(0, kFieldAccount) + control->GetDisplayValue(1, kFieldAccount), "A1A2");
  Put(Position("2330", 1));
  EXPECT_EQ(control->GetCount(), 5) << "a sub-account's position";
  control->CloseToMarket(2);  // the second row of symbol 5, which only its account tells apart
  EXPECT_THAT(FOrders.Take(), ElementsAre("A2 sell 7 5 @0Market"));
  control.reset();
  EXPECT_EQ(FHost.CountRegistrations(), before);
}

TEST_F(PositionGrid, FilterAndExchangeLinkSelectRowsAndOnlyPricesOfShownSymbolsReachTheView) {
  Price("700", 61);
  EXPECT_EQ(FChanges, 0);
  Price("5", 61);
  EXPECT_EQ(FChanges, 1);
  FControl.SetFilterCurrency(TCode("USD"));
  EXPECT_THAT(Keys(), ElementsAre("AAPL"));
  Price("5", 62);
  EXPECT_EQ(FChanges, 2) << "of the filter alone";
  Put(Position("600519", 9));
  FControl.SetShowChinaConnect("CNY");
  EXPECT_THAT(Keys(), ElementsAre("AAPL")) << "China Connect is off";
  FHost.Data().SetChinaConnect(true);
  FHost.RunLoop();
  EXPECT_THAT(Keys(), ElementsAre("600519"));
  FControl.SetShowChinaConnect("HKD");
  FControl.SetFilterCurrency(TCode());
  EXPECT_THAT(Keys(), ElementsAre("5", "600519", "AAPL")) << "nothing that is held is missing";
}

TEST_F(PositionGrid, ShowsAmountsInTheProductsCurrencyAndTotalsInTheConversionCurrency) {
  TPositionFacts facts = Position("AAPL", -40);
  facts.FAveragePrice = 62;
  facts.FPriceBased = facts.FShort = true;
  Put(facts);
  Put(Position("2330", 1000));  // of a currency that no total holds
  FControl.SetConvertCurrency(TCode("USD"));
  EXPECT_EQ(Text("AAPL", kFieldSide) + Text("AAPL", kFieldCurrency), "ShortUSD");
  EXPECT_EQ(Text("AAPL", kFieldMarketValue) + Text("AAPL", kFieldPL), "-2,400.0080.00");
  EXPECT_EQ(Text("5", kPositionConvertedMarketValue), "750.00");
  EXPECT_EQ(Text("5", kFieldAccountName) + Text("5", 12345), "Amber");
  EXPECT_DOUBLE_EQ(FControl.GetTotalMarketValue(), 750 - 2400);
}

TEST_F(PositionGrid, AveragesAreRoundedByTheUsersModeAndAnExactOneIsLeftAlone) {
  const auto average = [this](const char* mode, double holding, double price) {
    Configure("AvgPriceMode", mode);
    TPositionFacts facts = Position("5", holding);
    facts.FAveragePrice = price;
    Put(facts);
    return Text("5", kPositionAveragePrice);
  };
  Configure("DefaultPrecision", "2");
  EXPECT_EQ(average("", 1, 67.431) + average("0", -1, 67.436), "67.4367.44");
  EXPECT_EQ(average("1", 1, 67.431) + average("1", 1, 99.991) + average("1", -1, 67.431), "67.44100.0067.43");
  EXPECT_EQ(average("2", -1, 67.439) + average("2", 1, 67.439), "67.4367.44");
  EXPECT_EQ(average("3", 1, 67.43) + average("3", -1, 1.1) + average("3", 1, -0.0049), "67.431.100.00");
  EXPECT_EQ(average("3", -1, 0.29), "0.29") << "0.29 * 100 is below 29";
}

TEST_F(PositionGrid, ClosesWhatIsAvailableOnTheOtherSideAndAtThePriceThatWasChosen) {
  TPositionFacts facts = Position("5", 100);
  facts.FExcludedQuantity = 10;
  facts.FVoucherQuantity = 20;
  Put(facts);
  facts = Position("AAPL", -40);
  facts.FCoveredQuantity = 30;  // what covers a short position does not keep it from being bought back
  Put(facts);
  FControl.CloseToBest(0);
  FControl.CloseToBest(1);
  FControl.CloseToLast(0);
  FControl.CloseToMarket(1);
  FControl.CloseToMarket(2);
  EXPECT_THAT(FOrders.Take(), ElementsAre("A1 sell 70 5 @59.5", "A1 buy 40 AAPL @60.5", "A1 sell 70 5 @60",
                                          "A1 buy 40 AAPL @0Market"));
  Price("5", 60);
  FControl.CloseToBest(0);
  FHost.Data().RemovePosition(TCode("A1"), "AAPL");
  FControl.CloseToMarket(1);  // its row is still there, for nothing was published yet
  EXPECT_THAT(FHost.Messages(), ElementsAre(HasSubstr("No price is known for 5"), HasSubstr("no quantity")));
  EXPECT_THAT(FOrders.Take(), IsEmpty());
}

TEST_F(PositionGrid, AsksFirstWhereTheUserWantsItAndClosesNoMoreThanIsHeldAfterTheAnswer) {
  Configure("ConfirmationClosePosition", "Y");
  Put(Position("700", 10));
  FControl.CloseToBest(0);
  WhileAsked([this] { Put(Position("5", 30)); });
  FControl.CloseToMarket(0);
  FControl.CloseAllPositions();
  EXPECT_THAT(FHost.Messages(), ElementsAre("Close at Best: Sell 100 5 at 59.500 for account A1?",
                                            "Close at Market: Sell 100 5 at Market Price for account A1?",
                                            "Close all 3 positions of account A1 at market?"));
  EXPECT_THAT(FOrders.Take(),
              ElementsAre("A1 sell 30 5 @0Market", "A1 sell 30 5 @0Market", "A1 buy 40 AAPL @0Market"));
  WhileAsked([this] { Put(Position("5", -30)); });
  FControl.CloseToMarket(0);
  EXPECT_THAT(FOrders.Take(), IsEmpty()) << "the position turned round under the question";
  auto control = std::make_unique<TPositionViewDataControl>(nullptr);
  control->SetAccount(TCode("A1"));
  WhileAsked([&control] { control.reset(); });
  control->CloseToMarket(0);
  EXPECT_THAT(FOrders.Take(), IsEmpty()) << "the view went under the question";
}

}  // namespace
}  // namespace margindesk
