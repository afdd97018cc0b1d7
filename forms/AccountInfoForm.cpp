#include "forms/AccountInfoForm.h"

#include "forms/CaptionButtonImages.h"

namespace margindesk {

namespace {

constexpr std::int32_t kFormWidth = 370;  // pixels at 100 % scale
constexpr std::int32_t kFormHeight = 475;
constexpr std::int32_t kBannerWidth = 140;
constexpr std::int32_t kBannerHeight = 100;
constexpr std::int32_t kTreeHeight = 250;
constexpr std::int32_t kGridHeight = 120;
constexpr std::int32_t kEditWidth = 100;
constexpr std::int32_t kEditHeight = 21;
constexpr std::int32_t kButtonWidth = 75;
constexpr std::int32_t kButtonHeight = 25;
constexpr std::int32_t kHintFontHeight = -11;

void SetSize(TControl& control, std::int32_t width, std::int32_t height) {
  control.SetWidth(width);
  control.SetHeight(height);
}

TMenuItem* MakeMenuItem(TComponent* form, TPopupMenu& menu, std::string name, std::string caption) {
  auto* item = new TMenuItem(form, std::move(name));
  item->SetCaption(std::move(caption));
  menu.AddItem(item);
  return item;
}

}  // namespace

TAccountInfoForm::TAccountInfoForm(TComponent* owner)
    : TViewFrame(owner),
      lcAccountInfo(new TLayoutControl(this, "lcAccountInfo")),
      lcAccountInfoGrp_Root(new TLayoutGroup(this, "lcAccountInfoGrp_Root", TLayoutDirection::Vertical)),
      imgCom(new TImage(this, "imgCom")),
      liCOM(new TLayoutItem(this, "liCOM", imgCom)),
      lgInput(new TLayoutGroup(this, "lgInput", TLayoutDirection::Horizontal)),
      lgInputInfo(new TLayoutGroup(this, "lgInputInfo", TLayoutDirection::Vertical)),
      lgMoreInfo(new TLayoutGroup(this, "lgMoreInfo", TLayoutDirection::Vertical)),
      lgAccount(new TLayoutGroup(this, "lgAccount", TLayoutDirection::Horizontal)),
      edtAccount(new TAccountEdit(this, "edtAccount")),
      liAcctItem(new TLayoutItem(this, "liAcctItem", edtAccount)),
      cbLockAcct(new TCheckBox(this, "cbLockAcct")),
      liLockAcct(new TLayoutItem(this, "liLockAcct", cbLockAcct)),
      lgCurrency(new TLayoutGroup(this, "lgCurrency", TLayoutDirection::Horizontal)),
      cmbCurrency(new TComboBox(this, "cmbCurrency")),
      liCurrencyItem(new TLayoutItem(this, "liCurrencyItem", cmbCurrency)),
      cmbFilterCurrency(new TComboBox(this, "cmbFilterCurrency")),
      liFilterCurrency(new TLayoutItem(this, "liFilterCurrency", cmbFilterCurrency)),
      btnMoreInfo(new TButton(this, "btnMoreInfo")),
      liMoreInfo(new TLayoutItem(this, "liMoreInfo", btnMoreInfo)),
      AccountInfoTree(new TVirtualTree(this, "AccountInfoTree")),
      liAcctGridItem(new TLayoutItem(this, "liAcctGridItem", AccountInfoTree)),
      PositionGridView(new TGridTableView(this, "PositionGridView")),
      PositionGrid(new TGrid(this, "PositionGrid", PositionGridView)),
      liPosition(new TLayoutItem(this, "liPosition", PositionGrid)),
      PopupMenu(new TPopupMenu(this, "PopupMenu")),
      AggregateMenu(MakeMenuItem(this, *PopupMenu, "AggregateMenu", "Aggregate")),
      CustomColMenu(MakeMenuItem(this, *PopupMenu, "CustomColMenu", "Custom Column")),
      PositionPopupMenu(new TPopupMenu(this, "PositionPopupMenu")),
      CloseToBestMenu(MakeMenuItem(this, *PositionPopupMenu, "CloseToBestMenu", "Close To Best")),
      CloseToLastMenu(MakeMenuItem(this, *PositionPopupMenu, "CloseToLastMenu", "Close To Last")),
      CloseToMarketMenu(MakeMenuItem(this, *PositionPopupMenu, "CloseToMarketMenu", "Close To Market")),
      CloseAllPositionsMenu(
          MakeMenuItem(this, *PositionPopupMenu, "CloseAllPositionsMenu", "Close All Position")),
      DetailPositionMenu(MakeMenuItem(this, *PositionPopupMenu, "DetailPositionMenu", "Detail Position")),
      OptionsPayOffMenu(MakeMenuItem(this, *PositionPopupMenu, "OptionsPayOffMenu", "Options Pay-Off")),
      HintCtrl(new THintStyleController(this, "HintCtrl")),
      editRepos(new TEditRepository(this, "editRepos")),
      pbarML(new TProgressBarProperties(this, "pbarML")),
      txtValue(new TTextEditProperties(this, "txtValue")),
      imgList(new TImageList(this, "imgList")) {
  FDesignWidth = kFormWidth;
  FDesignHeight = kFormHeight;

  SetSize(*imgCom, kBannerWidth, kBannerHeight);
  imgCom->SetStretch(true);
  liCOM->SetVisible(false);

  edtAccount->SetUpperCase(true);
  edtAccount->SetTextHint("Account");
  SetSize(*edtAccount, kEditWidth, kEditHeight);
  liAcctItem->SetCaption("Account");
  liCurrencyItem->SetCaption("Convert");
  SetSize(*cmbCurrency, kEditWidth, kEditHeight);
  liFilterCurrency->SetCaption("Filter");
  cmbFilterCurrency->SetTextHint("Filter Currency");
  SetSize(*cmbFilterCurrency, kEditWidth, kEditHeight);
  btnMoreInfo->SetCaption("More Info");
  SetSize(*btnMoreInfo, kButtonWidth, kButtonHeight);

  SetSize(*AccountInfoTree, kFormWidth, kTreeHeight);
  AccountInfoTree->SetShowHeaders(false);
  AccountInfoTree->SetGridLines(true);
  AccountInfoTree->SetCellHints(true);
  AccountInfoTree->SetPopupMenu(PopupMenu);
  AggregateMenu->SetVisible(false);
  SetSize(*PositionGrid, kFormWidth, kGridHeight);
  PositionGridView->SetMultiSelect(true);
  PositionGridView->SetPopupMenu(PositionPopupMenu);
  PositionGrid->SetPopupMenu(PositionPopupMenu);

  HintCtrl->SetStyle({{"Tahoma", kHintFontHeight}, {"Tahoma", kHintFontHeight}});
  pbarML->FBeginColor = kColorYellow;
  pbarML->FOverloadValue = 10;
  txtValue->FAlignment = TAlignment::Right;
  editRepos->AddItem(pbarML);
  editRepos->AddItem(txtValue);
  AddCaptionButtonImages(*imgList);

  LayOut();
}

void TAccountInfoForm::LayOut() {
  lgAccount->AddItem(liAcctItem);
  lgAccount->AddItem(liLockAcct);
  lgCurrency->AddItem(liCurrencyItem);
  lgCurrency->AddItem(liFilterCurrency);
  lgInputInfo->AddItem(lgAccount);
  lgInputInfo->AddItem(lgCurrency);
  lgMoreInfo->AddItem(liMoreInfo);
  lgInput->AddItem(lgInputInfo);
  lgInput->AddItem(lgMoreInfo);
  for (TBaseLayoutItem* item :
       std::initializer_list<TBaseLayoutItem*>{liCOM, lgInput, liAcctGridItem, liPosition}) {
    lcAccountInfoGrp_Root->AddItem(item);
  }
  liCOM->SetAlignHorz(TLayoutAlignHorz::Left);
  liLockAcct->SetAlignHorz(TLayoutAlignHorz::Right);
  lgMoreInfo->SetAlignHorz(TLayoutAlignHorz::Right);
  liAcctGridItem->SetAlignVert(TLayoutAlignVert::Client);
  liPosition->SetAlignVert(TLayoutAlignVert::Bottom);
  lcAccountInfo->SetRoot(lcAccountInfoGrp_Root);
  SetSize(*lcAccountInfo, kFormWidth, kFormHeight);
}

}  // namespace margindesk
