// The columns of a view: its lists, the column dialog, the layout text and the template.
#include "model/contract/Datadef.h"
#include "plugin/AccountInfoInterface.h"
#include "tests/accountinfo/ViewFixture.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

struct AccountViewColumns : AccountView {
  // Picks the menu item for the dialog and answers it; an order of nothing leaves it unanswered.
  TCustomColumnRecord AskColumns(TOpenFrame& frame, const std::vector<std::string>& order = {},
                                 const std::vector<std::string>& visible = {}) {
    TCustomColumnRecord asked;
    FHost.Channels().SetResponder(kMessageCustomColumns, [&](void* record) {
      asked = *static_cast<TCustomColumnRecord*>(record);
      TCustomColumnResult result{order, visible};
      if (!order.empty()) asked.FCallback(nullptr, &result);
    });
    frame.CustomColMenu->Click();
    return asked;
  }
};

TEST_F(AccountViewColumns, AreConvertedFromOldKeysUnlessTheNewKeyIsThereToo) {
  SetConfig("Default_AccountInfoColumn", "OMS_PL,PL,OMS_NETAV,oms_trade_limit,OMS_CREDITLIMIT,equity,,X");
  SetConfig("Futures_AccountInfoColumn", "Equity");
  SetConfig("Stock_AccountInfoColumn", " ");
  TOpenFrame& frame = Open();
  EXPECT_EQ(Keys(frame.FDefaultColumnList), "PL TradingLimit CreditLimit Equity 1 2");
  EXPECT_EQ(Keys(frame.FFuturesColumnList), "TradingLimit Equity 1 2");
  EXPECT_EQ(Keys(frame.FStockColumnList), "TradingLimit 1 2") << "set, though to nothing";
  EXPECT_TRUE(frame.FFuturesColumnList[2]->FNumeric && !frame.FFuturesColumnList[3]->FNumeric);
}

TEST_F(AccountViewColumns, FollowTheTypeOfTheAccountAlsoWhenItIsLoadedWithAnotherOne) {
  SetConfig("Futures_AccountInfoColumn", "Equity,MarginLevel");
  AddType("F1", "F");
  FHost.RunLoop();
  TOpenFrame& frame = Open("A1");
  EXPECT_EQ(frame.FCurrentColumnType, 1);
  EXPECT_EQ(frame.Row("MarginLevel"), nullptr) << "there is no list for stocks";
  frame.Type("F1");
  EXPECT_NE(frame.Row("MarginLevel"), nullptr);
  frame.Type("GONE");
  EXPECT_EQ(frame.FCurrentColumnType, 0);
  frame.Type("A1");
  AddType("A1", "F");
  FHost.RunLoop();
  EXPECT_NE(frame.Row("MarginLevel"), nullptr);
}

TEST_F(AccountViewColumns, DialogNamesCustomColumnsByTheirSectionAndFindsColumnsByTheirResourceText) {
  SetConfig("Default_AccountInfoColumn", "TradingLimit,CreditLimit,CreditLimit(DDS),Equity");
  TOpenFrame& frame = Open();
  const TCustomColumnRecord asked = AskColumns(frame);
  const std::string credit = Text("Res_CreditLimit"), limit = Text("Res_TradingLimit");
  EXPECT_THAT(asked.FAllCaptions, ElementsAre(limit, credit, credit, Text("Res_Equity"),
                                              "Stock Borrow Collateral", "Relationship Manager"));
  EXPECT_EQ(asked.FVisibleCaptions, asked.FAllCaptions);
  EXPECT_EQ(asked.FReservedCaptions[0], limit);
  AskColumns(frame, {Text("Res_Equity"), credit, "Stock Borrow Collateral", limit, credit, "Nothing"},
             {limit, "equity"});
  const std::string arranged = "[Equity] [CreditLimit] TradingLimit CreditLimit(DDS) 1 2";
  EXPECT_EQ(Keys(frame.FDefaultColumnList), arranged);
  EXPECT_EQ(frame.Row("Equity"), nullptr);
  EXPECT_EQ(frame.GetColNameByAttr(frame.FDefaultColumnList[0]->FId), Text("Res_Equity"));
  AskColumns(frame, std::vector<std::string>(7, limit));
  AskColumns(frame, {limit}, {limit, credit});
  frame.HandleCustomColumn(nullptr, nullptr);
  EXPECT_EQ(Keys(frame.FDefaultColumnList), arranged);
}

TEST_F(AccountViewColumns, LayoutNamesTheColumnsItMovesAndLeavesTheOthersBehindThem) {
  SetConfig("Default_AccountInfoColumn", "TradingLimit,CashBalance,Equity");
  SetConfig("Stock_AccountInfoColumn", "Equity");
  TOpenFrame& frame = Open("A1");
  frame.SetLayoutData(
      R"(Account=A1,"DefaultColumn=Equity,1,80;TradingLimit,0,80","StockColumn=2,0,1;Equity,0,80")");
  EXPECT_EQ(Keys(frame.FDefaultColumnList), "Equity [TradingLimit] CashBalance 1 2");
  EXPECT_EQ(Keys(frame.FStockColumnList), "[2] [Equity] TradingLimit 1");
  EXPECT_EQ(frame.Row("Equity"), nullptr);
  const std::string arranged = "[CashBalance] Equity [TradingLimit] 1 2";
  frame.SetLayoutData("\"DefaultColumn= TradingLimit,1;equity,0,80; ;X,0,80;;CashBalance , true,w,5;\",A=1");
  EXPECT_EQ(Keys(frame.FDefaultColumnList), arranged) << "short, unknown and lower-case entries";
  frame.SetLayoutData("DefaultColumn=,\"DefaultColumn=1,0,80\"");
  EXPECT_EQ(Keys(frame.FDefaultColumnList), arranged) << "the first item of a name counts";
}

TEST_F(AccountViewColumns, LayoutTextOfAViewMakesAnotherViewLikeIt) {
  SetConfig("Default_AccountInfoColumn", "Equity");
  SetConfig("Stock_AccountInfoColumn", "CashBalance");
  SetConfig("Futures_AccountInfoColumn", "PL");
  TOpenFrame& frame = Open();
  EXPECT_THAT(frame.Layout(), StartsWith("Account=,Account-Lock=0,Currency=HKD,ShowHideState=0,"));
  frame.Type("A1");
  frame.cbLockAcct->SetChecked(true);
  frame.cmbCurrency->SetItemIndex(1);
  frame.cmbFilterCurrency->SetItemIndex(3);
  frame.btnShowHideClick();
  AskColumns(frame, {Text("Res_CashBalance")});
  const std::string layout =
      "Account=A1,Account-Lock=1,Currency=USD,FilterCurrency=CNY,ShowHideState=1,"
      "\"DefaultColumn=TradingLimit,1,80;Equity,1,80;1,1,80;2,1,80;\","
      "\"StockColumn=CashBalance,0,80;TradingLimit,1,80;1,1,80;2,1,80;\","
      "\"FuturesColumn=TradingLimit,1,80;PL,1,80;1,1,80;2,1,80;\"";
  EXPECT_EQ(frame.Layout(), layout);
  TOpenFrame& other = Open();
  other.SetLayoutData(layout);
  EXPECT_EQ(other.Layout(), layout);
  EXPECT_EQ(other.FMyDataControl->GetConvertCurrency(), Code("USD"));
  EXPECT_FALSE(other.edtAccount->GetEnabled() || other.lgInput->GetVisible());
  // A locked box takes the account of a layout; the text of nothing takes account and hidden strip away.
  other.SetLayoutData("Account=A2 Currency=ZZZ,FilterCurrency=ZZZ,ShowHideState=x");
  EXPECT_THAT(other.Layout(), StartsWith("Account=A2,Account-Lock=1,Currency=USD,FilterCurrency=CNY,"));
  other.SetLayoutData("");
  EXPECT_THAT(other.Layout(), StartsWith("Account=,Account-Lock=1,Currency=USD,FilterCurrency=CNY,Show"));
  EXPECT_TRUE(other.lgInput->GetVisible());
  for (TBaseLayoutItem* hidden : std::initializer_list<TBaseLayoutItem*>{
           other.lgAccount, other.lgCurrency, other.lgMoreInfo, other.liCurrencyItem, other.liFilterCurrency})
    hidden->SetVisible(false);
  other.SetLayoutData("Account=A1,ShowHideState=1,Currency=HKD,FilterCurrency=USD");
  EXPECT_THAT(other.Layout(), StartsWith("Account=,Account-Lock=1,Currency=USD,FilterCurrency=CNY,\"Def"));
  EXPECT_TRUE(other.lgInput->GetVisible());
}

TEST_F(AccountViewColumns, LayoutWithALockThatIsNeitherYesNorNoStopsThere) {
  TIAccountInfo plugin(nullptr);
  TOpenViews& views = FHost.Views();
  views.AddClass("TIAccountInfo", plugin);
  const TViewHandle view = views.Open("TIAccountInfo");
  for (const auto& [value, locked] : {std::pair{"TRUE", '1'}, {"0", '0'}, {"-2.5", '1'}, {"False", '0'}}) {
    views.SetLayout(view, std::string("Account=A1,Account-Lock=") + value);
    EXPECT_THAT(views.GetLayout(view), StartsWith(std::string("Account=A1,Account-Lock=") + locked)) << value;
  }
  const std::string faulty = "Account=A2,Account-Lock=maybe,Currency=USD,\"DefaultColumn=Equity,0,1;\"";
  EXPECT_THROW(views.SetLayout(view, faulty), EConvertError);
  EXPECT_THAT(views.GetLayout(view), StartsWith("Account=A2,Account-Lock=0,Currency=HKD,ShowHideState=0,"
                                                "\"DefaultColumn=TradingLimit,1,80"));
  FHost.CloseViews();
}

TEST_F(AccountViewColumns, TemplateIsSavedOnAYesAloneAndArrangesEveryNewView) {
  SetConfig("Stock_AccountInfoColumn", "Equity,PL");
  TOpenFrame& frame = Open("A1");
  frame.cmbCurrency->SetItemIndex(1);
  AskColumns(frame, {Text("Res_PL"), Text("Res_TradingLimit")}, {Text("Res_PL")});
  const auto stored = [&] { return FHost.Config().ReadString("LayoutTemplate", "AccountInfo"); };
  frame.btnSaveTemplateClick();
  EXPECT_EQ(stored(), "");
  FHost.MessageBox().SetPolicy([](std::string_view text) { return text == Text("Res_Conf_SaveTemplate"); });
  frame.btnSaveTemplateClick();
  EXPECT_THAT(stored(),
              testing::EndsWith("#,#StockColumn=PL,1,80;TradingLimit,0,80;Equity,1,80;1,1,80;2,1,80;#"));
  SetConfig("Stock_AccountInfoColumn", "Equity,CashBalance");
  TOpenFrame& other = Open();
  EXPECT_EQ(Keys(other.FStockColumnList), "[TradingLimit] Equity 1 2 CashBalance") << "PL is not listed now";
  EXPECT_THAT(other.Layout(), StartsWith("Account=,Account-Lock=0,Currency=HKD,"));
}

}  // namespace
}  // namespace margindesk
