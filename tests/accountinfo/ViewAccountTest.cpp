// The account, the currencies and the aggregation of a view, and what it tells the host of them.
#include "tests/accountinfo/ViewFixture.h"

namespace margindesk {
namespace {

TEST_F(AccountView, TellsTheHostOfEveryAccountEntryAlsoOfTheSameAccount) {
  TOpenFrame& frame = Open();
  Asked();
  frame.Type("a1");
  EXPECT_EQ(Asked(), "1026 1024 info 1:A1");
  frame.Type("A1");
  EXPECT_EQ(Asked(), "1024 info 1:A1");
  frame.edtAccount->SetText("A2");
  frame.edtAccount->PressKey(kKeyEnter);
  EXPECT_EQ(Asked(), "1026 1024 info 1:A2");
  frame.cbLockAcct->SetChecked(true);
  frame.Type("A1");
  EXPECT_EQ(Asked(), "");
  frame.btnMoreInfo->Click();
  frame.cmbCurrency->SetItemIndex(2);
  EXPECT_EQ(Asked(), "info 2:A2 1024");
  frame.cmbFilterCurrency->SetItemIndex(2);
  frame.cmbCurrency->PressKey(kKeyBackspace);
  frame.cmbFilterCurrency->PressKey(kKeyBackspace);
  EXPECT_EQ(Asked(), "");
  EXPECT_EQ(frame.FMyDataControl->GetConvertCurrency(), Code("CNY"));
  EXPECT_EQ(frame.Filter(), "USD");
  frame.SetLanguage(3);
  EXPECT_EQ(Asked(), "1026");
  FFrames.clear();
  EXPECT_EQ(Asked(), "info 3:A2");
  EXPECT_EQ(FHost.CountRegistrations(), 0U);
}

TEST_F(AccountView, ShowsAndHidesTheInputStripByItsCaptionButton) {
  TOpenFrame& frame = Open();
  const TCaptionButton &strip = *frame.FCaptionButtonList[0], &details = *frame.FCaptionButtonList[1];
  const auto expect = [&](bool hidden) {
    EXPECT_TRUE(strip.FDown == hidden && strip.FImageIndex == hidden);
    EXPECT_NE(frame.lgInput->GetVisible(), hidden);
    EXPECT_EQ(strip.FHint, Text(hidden ? "Res_More" : "Res_Less"));
  };
  EXPECT_TRUE(strip.FVisible && !details.FVisible);
  frame.Type("A1");
  EXPECT_TRUE(details.FVisible);
  expect(false);
  Asked();
  strip.FOnClick(strip.FOnClickObject, nullptr);
  EXPECT_EQ(Asked(), "1026");
  expect(true);
  FHost.Language().SetLanguage(kLanguageSimplifiedChinese);
  frame.SetLanguage(0);
  expect(true);
  EXPECT_EQ(frame.liFilterCurrency->GetCaption(), Text("Res_Filter"));
  frame.btnShowHideClick();
  expect(false);
}

TEST_F(AccountView, RemembersTheFilterFromTheConvertListWhenTheListsChange) {
  TOpenFrame& frame = Open();
  const TComboBox& filter = *frame.cmbFilterCurrency;
  EXPECT_THAT(filter.GetItems(), testing::ElementsAre("All", "HK Dollar", "US Dollar", "Renminbi"));
  frame.cmbFilterCurrency->SetItemIndex(3);
  frame.cmbCurrency->SetItemIndex(1);
  FHost.Data().SetCurrency({Code("EUR"), 8, false, false});
  FHost.RunLoop();
  EXPECT_EQ(filter.GetItemCount(), 5);
  EXPECT_EQ(filter.GetText() + frame.cmbCurrency->GetText(), "RenminbiUS Dollar");
  FHost.Data().SetChinaConnect(true);
  frame.CurrencyListUpdate(nullptr, nullptr);
  EXPECT_THAT(filter.GetItems(), testing::ElementsAre("HK Dollar", "Renminbi"));
  EXPECT_EQ(filter.GetText() + frame.Filter(), "RenminbiCNY");
  frame.MultiCurrencyInfoUpdate(nullptr, nullptr);
  EXPECT_EQ(filter.GetText() + frame.Filter(), "HK Dollar") << "the convert list has HKD there: no filter";
  frame.SetLayoutData("FilterCurrency=CNY");
  EXPECT_EQ(frame.Filter(), "CNY");
  frame.cmbFilterCurrency->SetItemIndex(0);
  EXPECT_EQ(frame.Filter(), "");
}

TEST_F(AccountView, PutsTheFilterBackAfterALanguageSwitchAsFarAsTheConvertListReaches) {
  TOpenFrame& frame = Open();
  for (const auto& [chosen, after] : {std::pair{2, 2}, {3, -1}}) {
    frame.cmbFilterCurrency->SetItemIndex(chosen);
    frame.SetLanguage(0);
    EXPECT_EQ(frame.cmbFilterCurrency->GetItemIndex(), after);
  }
  EXPECT_EQ(frame.Filter(), "CNY") << "nothing is chosen in the box, and nothing is taken back";
  frame.SetLanguage(0);
  EXPECT_EQ(frame.cmbFilterCurrency->GetItemIndex(), 0);
  EXPECT_EQ(frame.Filter(), "");
}

TEST_F(AccountView, AggregatesAMasterAccountFromItsMenuAndSaysSoInTheCaption) {
  SetConfig("PVAllowAggregatedSubAcct", "Y");
  AddAccount("M", "", 10);
  AddAccount("N", "", 3);
  AddAccount("S", "M");
  FHost.RunLoop();
  TOpenFrame& frame = Open();
  for (const std::string_view account : {"", "S", "GONE", "M"}) {
    frame.Type(account);
    EXPECT_EQ(frame.AggregateMenu->GetVisible(), account == "M") << account;
  }
  Asked();
  frame.AggregateMenu->Click();
  EXPECT_EQ(Asked(), "1024");
  EXPECT_EQ(frame.AggregateMenu->GetCaption(), Text("Res_CancelAggregateSubAccount"));
  EXPECT_EQ(frame.Caption(), "Account Information - M [" + Text("Res_Aggregate_CrossOut") + "]");
  frame.Type("N");
  EXPECT_EQ(frame.Caption(), "Account Information - N [" + Text("Res_Aggregate_NonCrossOut") + "]");
  frame.Type("S");
  EXPECT_TRUE(frame.FMyDataControl->IsAggregate());
  EXPECT_EQ(frame.Caption(), "Account Information - S");
  frame.Type("M");
  frame.AggregateMenu->Click();
  EXPECT_EQ(frame.Caption(), "Account Information - M");
  EXPECT_EQ(frame.AggregateMenu->GetCaption(), Text("Res_AggregateSubAccount"));
  SetConfig("PVAllowAggregatedSubAcct", "N");
  EXPECT_FALSE(Open("M").AggregateMenu->GetVisible());
}

TEST_F(AccountView, GivesAClientTheDefaultAccountAndABoxOnlyWhereThereIsAChoice) {
  SetConfig("DefaultAccount", "A1");
  EXPECT_EQ(Open().Caption(), "Account Information");
  SetConfig("UserType", "2");
  Asked();
  TOpenFrame& fixed = Open();
  EXPECT_EQ(Asked().find("info"), std::string::npos) << "nobody entered it";
  EXPECT_FALSE(fixed.lgAccount->GetVisible());
  fixed.SetGroupID("g");
  fixed.SetLayoutData("Account=A2");
  EXPECT_EQ(fixed.Caption(), "Account Information - A1");
  EXPECT_EQ(FHost.Editors().GetAccountEditorCount(), 1U) << "of the first view alone";
  SetConfig("UserTypeFlag", "Y");
  EXPECT_EQ(Open().FMyDataControl->GetAccount(), Code("A1"));
  EXPECT_THAT(Asked(), testing::HasSubstr("info 1:A1"));
}

TEST_F(AccountView, FollowsTheScaleAndTheConfirmationOfClosingInTheConfiguration) {
  TOpenFrame& frame = Open();
  for (const auto& [size, points] :
       {std::pair{0, 8}, {101, 10}, {116, 11}, {135, 12}, {136, 13}, {400, 13}, {-5, 8}, {115, 10}}) {
    FHost.Config().WriteString("OMS_TRADEPLATFORM", "ScaleSize", std::to_string(size), true);
    const THintStyle& style = frame.HintCtrl->GetStyle();
    EXPECT_TRUE(style.FFont.GetPointSize() == points && style.FCaptionFont.GetPointSize() == points) << size;
  }
  EXPECT_EQ(frame.CloseToBestMenu->GetCaption(), "Close at Best(No Confirmation)");
  EXPECT_EQ(frame.OptionsPayOffMenu->GetCaption(), Text("Res_OptionsPayOff"));
  SetConfig("ConfirmationClosePosition", "Y");
  EXPECT_EQ(frame.CloseToBestMenu->GetCaption(), "Close at Best");
}

}  // namespace
}  // namespace margindesk
