// What explains an account in a view, and its positions: details, hints, banner, margin bar and the actions
// of the position menu.
#include <filesystem>

#include "tests/accountinfo/ViewFixture.h"
#include "tests/support/WholeFile.h"

namespace margindesk {
namespace {

TEST_F(AccountView, NamesMarginTypeContactAndStatusOfTheAccount) {
  TOpenFrame& frame = Open("A1");
  const auto expect = [&](const TAccountFacts& facts, std::string_view details) {
    FHost.Data().SetAccount(facts);
    FHost.RunLoop();
    EXPECT_EQ(frame.FCaptionButtonList[1]->FHint, details);
  };
  TAccountFacts facts;
  facts.FAccount = Code("A1");
  expect(facts, "Account Type: Cash\r\nAccount Status: Normal");
  facts.FMarginType = 5;
  facts.FAttributes["ClientFeature"] = "2";
  facts.FMobile = "555";
  facts.FEmail = "a@b";
  facts.FStatusFlags = 3072;
  expect(facts, "Account Type: Gross/DVP\r\nMobile: 555\r\nEmail: a@b\r\nAccount Status: Suspended");
  facts.FMarginType = 9;
  facts.FAttributes["MobileCCode"] = "852";
  facts.FStatusFlags = 2049;
  expect(facts, "Account Type: Gross Client\r\nMobile: (852)555\r\nEmail: a@b\r\nAccount Status: Sell Only");
  facts.FAttributes["ClientFeature"] = "1";
  facts.FEmail = "";
  expect(facts, "Mobile: (852)555\r\nAccount Status: Sell Only");
  frame.Type("GONE");
  EXPECT_EQ(frame.FCaptionButtonList[1]->FHint, "");
}

TEST_F(AccountView, ShowsAFormulaByTheCaptionOfItsFieldForTenTicks) {
  SetConfig("Default_AccountInfoColumn", "TradingLimit,Equity,MarginLevel,Symbol,OnlineStatus");
  FFormulaMapList = std::make_unique<TFormulaMapList>();
  (*FFormulaMapList)["ENG"] = {{"OMS_TRADE_LIMIT", "A+B"}, {"OMS_NET_EQUITY", "C"}};
  TOpenFrame& frame = Open("A1");
  TVirtualTree& tree = *frame.AccountInfoTree;
  // The hint after the pointer has come to a cell.
  const auto hover = [&](const TVirtualTreeNode* node, std::int32_t tag = kCellCaption) {
    const TRect cell = tree.GetCellRect(*node, *tree.FindColumn(tag));
    tree.MouseMove({cell.FLeft + 1, cell.FTop + 1});
    return frame.HintCtrl->IsShowing() ? frame.HintCtrl->GetHintText() : std::string();
  };
  const auto tick = [&](int times) {
    while (times-- > 0) frame.RefreshTimer(nullptr, nullptr);
  };
  const std::string limit = Text("Res_TradingLimit") + "=A+B", equity = Text("Res_Equity") + "=C";
  EXPECT_EQ(hover(frame.Row("TradingLimit"), kCellValue), "");
  EXPECT_EQ(hover(frame.Row("TradingLimit")), limit);
  tick(9);
  EXPECT_EQ(hover(frame.Row("TradingLimit")), limit);
  tick(1);
  EXPECT_EQ(hover(frame.Row("TradingLimit")), "") << "gone on the tenth tick, and not anew in the same field";
  for (const std::string_view none : {"MarginLevel", "Symbol", "OnlineStatus"}) {
    EXPECT_EQ(hover(frame.Row("Equity")), equity);
    EXPECT_EQ(hover(frame.Row(none)), "") << none;
  }
  hover(frame.Row("Equity"));
  tree.MouseLeave();
  EXPECT_FALSE(frame.HintCtrl->IsShowing());
  tree.SetExpanded(*frame.Row("TradingLimit"), true);
  EXPECT_EQ(hover(tree.GetShownNodes()[1]), "") << "a currency row";
  FHost.Language().SetLanguage(kLanguageTraditionalChinese);
  EXPECT_EQ(frame.GetFormulaByAttr(kFieldTradingLimit), Text("Res_TradingLimit") + "=A+B");
  (*FFormulaMapList)["ZHH"] = {{"OMS_NET_EQUITY", "Z"}};
  EXPECT_EQ(frame.GetFormulaByAttr(kFieldTradingLimit), "") << "the language has a map without the key";
}

TEST_F(AccountView, FetchesTheBannerOnceForEveryViewAndNotAgainWhenThatFails) {
  const auto finishDownloads = [this] {
    const auto done = [this] { return FHost.Files().GetPendingCount() == 0; };
    EXPECT_TRUE(FHost.Loop().RunUntil(done, std::chrono::seconds(10)));
  };
  SetConfig("CompanyBannerURL", "file:///nowhere/banner.bmp");
  TOpenFrame& failed = Open();
  Open();
  FFrames.pop_back();  // while its fetch is under way
  finishDownloads();
  EXPECT_EQ(FCompanyBanerCheckLink, TBannerState::None);
  EXPECT_TRUE(failed.liCOM->GetVisible());
  EXPECT_FALSE(Open().liCOM->GetVisible());
  EXPECT_EQ(FHost.Files().GetPendingCount(), 0U);

  // A picture of 800 by 60 pixels.
  const std::string header("BM\0\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x20\3\0\0\x3c\0\0\0\1\0\x18\0", 30);
  const std::filesystem::path file = testing::TempDir() + "margindesk_view_banner.bmp";
  const std::int32_t width = failed.imgCom->GetWidth();
  WriteWholeFile(file, "no picture");
  failed.ProcessPic(nullptr, file.string(), "", true);
  EXPECT_TRUE(width > 0 && failed.imgCom->GetWidth() == width && !std::filesystem::exists(file));
  WriteWholeFile(file, header + std::string(24 + 800 * 60 * 3, '\0'));
  SetConfig("CompanyBannerURL", "file://" + file.string());
  InitializeAccountInfoView();
  TOpenFrame& first = Open();
  finishDownloads();
  std::filesystem::remove(file);
  EXPECT_EQ(FCompanyBanerCheckLink, TBannerState::Fetched);
  TOpenFrame& second = Open();
  EXPECT_EQ(FHost.Files().GetPendingCount(), 0U);
  EXPECT_TRUE(second.liCOM->GetVisible());
  for (const TImage* image : {first.imgCom, second.imgCom})
    EXPECT_TRUE(image->GetWidth() == 350 && image->GetHeight() == 60 && image->GetPicture().FWidth == 800);
}

TEST_F(AccountView, HasABarOnTheMarginLevelOfAnAccountAlone) {
  SetConfig("Default_AccountInfoColumn", "Equity,MarginLevel");
  TOpenFrame& frame = Open();
  TVirtualTree& tree = *frame.AccountInfoTree;
  const auto bar = [&](std::string_view key, std::int32_t tag) {
    return tree.GetEditProperties(frame.Row(key), *tree.FindColumn(tag)) == frame.pbarML;
  };
  EXPECT_FALSE(bar("MarginLevel", kCellValue)) << "no account";
  frame.Type("A1");
  EXPECT_TRUE(bar("MarginLevel", kCellValue));
  EXPECT_EQ(frame.pbarML->GetText(),
            tree.GetDisplayText(frame.Row("MarginLevel"), *tree.FindColumn(kCellValue)));
  EXPECT_FALSE(bar("MarginLevel", kCellCaption) || bar("Equity", kCellValue));
}

TEST_F(AccountView, ActsOnTheFocusedPositionWhileItIsThere) {
  AddPosition("A1", "AAA", 10);
  AddPosition("A1", "UUU", 20);
  FHost.RunLoop();
  const auto clickAll = [this](TOpenFrame& frame) {
    Asked();
    for (TMenuItem* item : {frame.DetailPositionMenu, frame.OptionsPayOffMenu}) item->Click();
    frame.PositionGridView->DoubleClickCell();
    return Asked();
  };
  TOpenFrame& without = Open("A1");
  EXPECT_FALSE(without.liPosition->GetVisible() || without.FMyPositionDataControl != nullptr);
  for (TMenuItem* item : without.PositionPopupMenu->GetItems()) item->Click();
  EXPECT_EQ(clickAll(without), "");
  SetConfig("AcctInfo_PosCol", "SYMBOL,Net");
  TOpenFrame& frame = Open("A1");
  TGridTableView& grid = *frame.PositionGridView;
  ASSERT_EQ(grid.GetRecordCount(), 2);
  EXPECT_EQ(clickAll(frame), "") << "no row has the focus";
  grid.SetFocusedRecordIndex(1);
  EXPECT_EQ(clickAll(frame), "channel 10:A1 view 620:A1 channel 11:UUU");
  FHost.Data().RemovePosition(Code("A1"), "UUU");
  FHost.RunLoop();
  EXPECT_EQ(clickAll(frame), "");
  SetConfig("OrderBookOpenNewPV", "Y");
  TOpenFrame& opening = Open("A1");
  opening.PositionGridView->SetFocusedRecordIndex(0);
  EXPECT_EQ(clickAll(opening), "view 602:A1 view 620:A1 channel 11:AAA");
}

}  // namespace
}  // namespace margindesk
