// The data preference page, in the host's dialog and over its configuration.
#include "model/CommaText.h"
#include "plugin/AccountInfoInterface.h"
#include "plugin/DataPreference.h"
#include "tests/accountinfo/ViewFixture.h"

namespace margindesk {
namespace {

class DataPreference : public AccountView {
 public:
  DataPreference() {
    FHost.Views().AddClass("TIAccountInfo", *FPlugin);
    FHost.Config().AddConfigUpdateHandler(MakeHandler<&DataPreference::Count>(this), this);
  }
  ~DataPreference() override {
    FHost.Config().RemoveConfigUpdateHandler(this);
    FHost.Views().RemoveClass("TIAccountInfo");
  }
  auto& Page() { return dynamic_cast<TDataPreferenceFrame&>(*FHost.Preferences().GetPages()[0].FFrame); }
  TCheckBox& Box(const std::string& name) { return dynamic_cast<TCheckBox&>(*Page().FindComponent(name)); }
  TSpinEdit& Edit(const std::string& name) { return dynamic_cast<TSpinEdit&>(*Page().FindComponent(name)); }
  std::string Stored(std::string_view keys) {
    std::string text;
    for (const std::string& key : SplitCommaText(keys))
      text += "," + FHost.Config().ReadString(FHost.Config().GetUserSection(), key);
    return text.substr(1);
  }
  void Count(void* /*sender*/, void* /*data*/) { ++FAnnounced; }
  void Paint() {
    const TTreeColumn& column = *FView->AccountInfoTree->FindColumn(kCellValue);
    FPainted = FView->AccountInfoTree->GetDisplayText(FView->Row("TradingLimit"), column);
  }

  int FAnnounced = 0;
  TOpenFrame* FView = nullptr;
  std::string FPainted;
  std::unique_ptr<TIAccountInfo> FPlugin = std::make_unique<TIAccountInfo>(nullptr);
};

TEST_F(DataPreference, WritesNothingWhileUntouchedAndShowsWhatTheFormatterDoes) {
  EXPECT_EQ(FPlugin->GetPreferenceView()->GetWidth(), 500) << "before there is a page";
  const TPreferencePage page = FHost.Preferences().GetPages().at(0);
  EXPECT_EQ(std::tuple(page.FName, page.FWidth, page.FHeight), std::tuple("Data Format", 469, 474));
  EXPECT_FALSE(Page().FRows[kRowQuotedPrice].FGroup->IsShown() || Page().cmbAvgPriceMode->GetEnabled());
  EXPECT_TRUE(Box("cbFxRatioDecimal").GetChecked() && !Box("cbFxRatioDecimal").GetEnabled());
  Page().Execute();
  EXPECT_EQ(FAnnounced, 0);
  const auto amount = [this] { return FHost.Formatter().FormatValue(1.5, kFormatAmount, {}, false); };
  SetConfig("AmountPrecision", "3");
  for (const auto& [zeros, shown] : {std::pair("", "1.500"), {"maybe", "1.500"}, {"N", "1.5"}}) {
    SetConfig("AmountDecimal", zeros);
    EXPECT_EQ(amount(), shown);
    EXPECT_EQ(Box("cbAmountDecimal").GetChecked(), amount() == "1.500") << zeros;
    const int announced = FAnnounced;
    Page().Execute();
    EXPECT_EQ(FAnnounced, announced) << zeros;
  }
  SetConfig("AmountPrecision", "");
  EXPECT_EQ(amount(), "1.50") << "a row that is not set sets nothing";
}

TEST_F(DataPreference, SavesEveryRowAtOnceAlthoughEachWriteLoadsThePageAgain) {
  for (const auto& [row, decimals] : std::map<std::string, std::optional<double>>{
           {"Amount", 2}, {"Qty", {}}, {"AvgPrice", 9}, {"QuotedPrice", 3}, {"FxRatio", 5}}) {
    Box("cb" + row).SetChecked(true);
    EXPECT_TRUE(Edit("edt" + row).GetEnabled() && Box("cb" + row + "Decimal").GetEnabled()) << row;
    Edit("edt" + row).SetNumber(decimals);
  }
  Box("cbFxRatioDecimal").SetChecked(false);
  Page().cbAvgPriceMode->SetChecked(true);
  Page().cmbAvgPriceMode->SetItemIndex(3);
  Page().Execute();
  const std::string all =
      "AmountPrecision,AmountDecimal,QtyPrecision,DefaultPrecision,QuotedPricePrecision,CurrencyPrecision,"
      "CurrencyDecimal,AvgPriceMode";
  EXPECT_EQ(Stored(all), "2,,0,8,3,5,N,3");
  for (const char* box : {"cbAmount", "cbAmountDecimal", "cbFxRatio"}) Box(box).SetChecked(false);
  Page().cbAvgPriceMode->SetChecked(false);
  const int announced = FAnnounced;
  FHost.Preferences().Apply();
  EXPECT_EQ(FAnnounced, announced + 1) << "the dialog announces once";
  EXPECT_EQ(Stored(all), ",N,0,8,3,,N,") << "zeros are written on their own";
}

TEST_F(DataPreference, StoresTheTextOfTheLastRowWhenTheModeIsSetAndNoneIsChosen) {
  Page().cbAvgPriceMode->SetChecked(true);
  Page().cmbAvgPriceMode->SetItemIndex(-1);
  Box("cbFxRatio").SetChecked(true);
  Edit("edtFxRatio").SetNumber(4);
  Page().Execute();
  EXPECT_EQ(Stored("AvgPriceMode"), "4") << "the decimals";
  Box("cbFxRatioDecimal").SetChecked(false);
  Page().Execute();
  EXPECT_EQ(Stored("AvgPriceMode"), "N");
}

TEST_F(DataPreference, FollowsTheStoreTheLanguageAndTheDialogsCancel) {
  Page();
  SetConfig("QtyPrecision", "many");
  SetConfig("AvgPriceMode", "2");
  EXPECT_TRUE(Box("cbQty").GetChecked() && Edit("edtQty").GetNumber() == 0.0);
  FHost.Language().SetLanguage(kLanguageTraditionalChinese);
  EXPECT_TRUE(FHost.Preferences().SetLanguage(0));
  EXPECT_EQ(Page().cmbAvgPriceMode->GetText(), Text("Res_AvgPriceMode_BuyDefaultSellDown"));
  EXPECT_EQ(Box("cbQtyDecimal").GetCaption(), "顯示零值小數(例如 10.00)");
  Edit("edtQty").SetNumber(6);
  EXPECT_TRUE(FHost.Preferences().Cancel());
  EXPECT_TRUE(Box("cbQty").GetChecked() && Edit("edtQty").GetNumber() == 0.0);
  EXPECT_EQ(Stored("QtyPrecision"), "many");
  FHost.Views().RemoveClass("TIAccountInfo");
  FPlugin.reset();
  EXPECT_TRUE(FHost.Preferences().Apply() && FHost.Preferences().GetPages().empty());
}

TEST_F(DataPreference, IsObeyedByAnOpenViewThatRepaintsOnTheSameNotification) {
  SetConfig("Default_AccountInfoColumn", "TradingLimit");
  AddFigures("A1", "", {{TFigure::kTradingLimit, 1234.5}});
  FView = &Open("A1");
  Paint();
  EXPECT_EQ(FPainted, "1,234.50");
  FView->AccountInfoTree->SetOnUpdate(MakeEvent<&DataPreference::Paint>(this));
  Box("cbAmount").SetChecked(true);
  Page().Execute();
  EXPECT_EQ(FPainted, "1,235");
  FView->AccountInfoTree->SetOnUpdate({});
}

}  // namespace
}  // namespace margindesk
