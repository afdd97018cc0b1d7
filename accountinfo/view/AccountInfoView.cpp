// The making and the end of a view, and what the host asks of it: caption, language, group, configuration.
#include "accountinfo/view/AccountInfoView.h"

#include <algorithm>
#include <exception>

#include "accountinfo/data/AccountInfoDataControl.h"
#include "accountinfo/view/AcctPositionViewDataControl.h"
#include "controls/Picture.h"
#include "model/ResourceText.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/EditorManager.h"
#include "model/contract/FileService.h"
#include "model/contract/Icommon.h"
#include "model/contract/TimerControl.h"

namespace margindesk {

namespace {

constexpr std::int32_t kViewWidth = 370;  // pixels

// The steps of the display scale in percent, and the points of a hint's fonts at each; beyond the last but
// one the last holds.
struct TScaleStep {
  std::int32_t FPercent;
  std::int32_t FHintPoints;
};
constexpr TScaleStep kScaleSteps[] = {{100, 8}, {115, 10}, {125, 11}, {135, 12}, {150, 13}};

const TScaleStep& GetScaleStep(std::int32_t percent) {
  const auto* step = std::ranges::find_if(
      kScaleSteps, [percent](const TScaleStep& candidate) { return percent <= candidate.FPercent; });
  return step == std::end(kScaleSteps) ? *std::prev(step) : *step;
}

template <auto Click>
void OnCaptionButton(void* frame, void* /*button*/) {
  (static_cast<TAccountInfoFrame*>(frame)->*Click)();
}

}  // namespace

TAccountInfoFrame::TAccountInfoFrame(TComponent* owner)
    : TAccountInfoForm(owner),
      FShowHideMoreCaptionButton(new TCaptionButton(this)),
      FMoreInfoCaptionButton(new TCaptionButton(this)),
      FSaveTemplateCaptionButton(new TCaptionButton(this)) {
  if (FPic == nullptr) FPic = std::make_unique<TPicture>();
  FShowHideMoreCaptionButton->FOnClick = &OnCaptionButton<&TAccountInfoFrame::btnShowHideClick>;
  FShowHideMoreCaptionButton->FOnClickObject = this;
  FMoreInfoCaptionButton->FImageIndex = static_cast<std::int32_t>(TCaptionButtonImage::Details);
  FSaveTemplateCaptionButton->FOnClick = &OnCaptionButton<&TAccountInfoFrame::btnSaveTemplateClick>;
  FSaveTemplateCaptionButton->FOnClickObject = this;
  FCaptionButtonList = {FShowHideMoreCaptionButton, FMoreInfoCaptionButton, FSaveTemplateCaptionButton};
  FIsFirstTime = true;
  ConnectControls();
}

void TAccountInfoFrame::Construct() {
  const auto& config = TCustomConfigManager::GetInstance();
  FEnableAggregated = config.ReadBool(config.GetUserSection(), "PVAllowAggregatedSubAcct");

  UpdateCaptionButtons();
  GetColumnList();
  InitializeHead();
  InitializeView();
  UpdateCaptionButtonList();
  SetLayoutTemplate();
  CreateDataSource();

  if (auto* control = dynamic_cast<TAccountInfoDataControl*>(FMyDataControl)) {
    control->SetShow3LvInfo(FIsShow3LvInfo);
  }
  AccountInfoTree->SetDataSource(FMyDataSource.get());
  if (liPosition->GetVisible() && FMyPositionDataSource != nullptr) {
    PositionGridView->SetDataSource(FMyPositionDataSource.get());
    if (FMyPositionDataControl != nullptr) {
      FMyPositionDataControl->SetConvertCurrency(TCustomCurrencyAdapter::GetInstance().GetBaseCurrency());
      FMyPositionDataControl->SetShowChinaConnect(FCurrentCurrency.Text());
    }
  }
  ChooseInitialAccount();
  if (!FCurrentCurrency.IsEmpty()) FMyDataControl->SetCurrency(FCurrentCurrency);
  UpdateViewColumn();
  ShowBanner();
  SetLanguage(3);

  TCustomAccountAdapter::GetInstance().AddAccountInfoLoadHandler(
      MakeHandler<&TAccountInfoFrame::LoadAccountUpdate>(this), this);
  TCustomTimerControl::GetInstance().AddTimerHandler(this,
                                                     MakeHandler<&TAccountInfoFrame::RefreshTimer>(this));
  TCustomConfigManager::GetInstance().AddConfigUpdateHandler(
      MakeHandler<&TAccountInfoFrame::ConfigUpdate>(this), this);
  ConfigUpdate(nullptr, nullptr);

  if (FCurrentAccount.IsEmpty()) return;
  if (FMyDataControl->GetAccount() != FCurrentAccount) FMyDataControl->SetAccount(FCurrentAccount);
  if (FMyPositionDataControl != nullptr) FMyPositionDataControl->SetAccount(FCurrentAccount);
}

TAccountInfoFrame::~TAccountInfoFrame() {
  TCustomAccountAdapter::GetInstance().RemoveAccountInfoLoadHandler(this);
  TCustomConfigManager::GetInstance().RemoveConfigUpdateHandler(this);
  FMyDataControl = nullptr;
  FMyDataSource.reset();
  FMyPositionDataControl = nullptr;
  FMyPositionDataSource.reset();
  if (FAccountBoxRegistered) TEditorManager::GetInstance().RemoveAccountEditor(*edtAccount);
  TCustomCurrencyAdapter::GetInstance().RemoveMultiCurrencyInfoHandler(this);
  TCustomCurrencyAdapter::GetInstance().RemoveCurrencyListHandler(this);
  TCustomTimerControl::GetInstance().RemoveTimerHandler(this);
  TCustomFileService::GetInstance().CancelHandlersOf(this);
  OpenMoreInfoView(3);  // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall): a derived view is gone by now
}

void TAccountInfoFrame::ConnectControls() {
  edtAccount->SetOnKeyPress(MakeEvent<&TAccountInfoFrame::edtAccountKeyPress>(this));
  edtAccount->SetOnExit(MakeEvent<&TAccountInfoFrame::edtAccountExit>(this));
  cbLockAcct->SetOnChange(MakeEvent<&TAccountInfoFrame::cbLockAcctPropertiesChange>(this));
  cmbCurrency->SetOnChange(MakeEvent<&TAccountInfoFrame::cmbCurrencyPropertiesChange>(this));
  cmbCurrency->SetOnKeyPress(MakeEvent<&TAccountInfoFrame::cmbCurrencyKeyPress>(this));
  cmbFilterCurrency->SetOnChange(MakeEvent<&TAccountInfoFrame::cmbFilterCurrencyPropertiesChange>(this));
  cmbFilterCurrency->SetOnKeyPress(MakeEvent<&TAccountInfoFrame::cmbCurrencyKeyPress>(this));
  btnMoreInfo->SetOnClick(MakeEvent<&TAccountInfoFrame::btnMoreInfoClick>(this));
  AggregateMenu->SetOnClick(MakeEvent<&TAccountInfoFrame::AggregateMenuClick>(this));
  CustomColMenu->SetOnClick(MakeEvent<&TAccountInfoFrame::CustomColMenuClick>(this));
  AccountInfoTree->SetOnMouseMove(MakeEvent<&TAccountInfoFrame::AccountInfoTreeMouseMove>(this));
  AccountInfoTree->SetOnMouseLeave(MakeEvent<&TAccountInfoFrame::AccountInfoTreeMouseLeave>(this));
  CloseToBestMenu->SetOnClick(MakeEvent<&TAccountInfoFrame::CloseToBestMenuClick>(this));
  CloseToLastMenu->SetOnClick(MakeEvent<&TAccountInfoFrame::CloseToLastMenuClick>(this));
  CloseToMarketMenu->SetOnClick(MakeEvent<&TAccountInfoFrame::CloseToMarketMenuClick>(this));
  CloseAllPositionsMenu->SetOnClick(MakeEvent<&TAccountInfoFrame::CloseAllPositionsMenuClick>(this));
  DetailPositionMenu->SetOnClick(MakeEvent<&TAccountInfoFrame::DetailPositionMenuClick>(this));
  OptionsPayOffMenu->SetOnClick(MakeEvent<&TAccountInfoFrame::OptionsPayOffMenuClick>(this));
  PositionGridView->SetOnCellDblClick(MakeEvent<&TAccountInfoFrame::PositionGridViewCellDblClick>(this));
}

void TAccountInfoFrame::CreateDataSource() {
  FMyDataSource = std::make_unique<TCustomTreeDataSource>(FDefaultColumnList,
                                                          &CreateTreeDataControl<TAccountInfoDataControl>);
  FMyDataControl = static_cast<TAccountInfoDataControl*>(FMyDataSource->GetDataControl());
  if (!liPosition->GetVisible()) return;
  FMyPositionDataSource =
      std::make_unique<TCustomGridDataSource>(&CreateGridDataControl<TAcctPositionViewDataControl>);
  FMyPositionDataControl =
      static_cast<TAcctPositionViewDataControl*>(FMyPositionDataSource->GetDataControl());
}

bool TAccountInfoFrame::SetLanguage(std::int32_t /*index*/) {
  edtAccount->SetTextHint(GetResourceText("Res_Account"));
  cmbCurrency->SetTextHint(GetResourceText("Res_Currency"));
  btnMoreInfo->SetCaption(GetResourceText("Res_MoreInfo"));
  CustomColMenu->SetCaption(GetResourceText("Res_CustomColumn"));
  cbLockAcct->SetHint(GetResourceText("Res_Account_Lock"));
  liAcctItem->SetCaption(GetResourceText("Res_Account"));
  liCurrencyItem->SetCaption(GetResourceText("Res_Convert"));
  liFilterCurrency->SetCaption(GetResourceText("Res_Filter"));
  UpdatePositionGridHeader();
  SetRightClickMenuCaption();
  if (!FCurrencyList.empty()) {
    const TControlUpdate update(*cmbCurrency);
    const std::int32_t index = std::max(cmbCurrency->GetItemIndex(), 0);
    FillCurrencyTexts(*cmbCurrency, FCurrencyList);
    if (index < cmbCurrency->GetItemCount()) cmbCurrency->SetItemIndex(index);
  }
  if (!FFilterCurrencyList.empty()) {
    const TControlUpdate update(*cmbFilterCurrency);
    const std::int32_t index = std::max(cmbFilterCurrency->GetItemIndex(), 0);
    FillCurrencyTexts(*cmbFilterCurrency, FFilterCurrencyList);
    if (!IsChinaConnectOn()) cmbFilterCurrency->InsertItem(0, GetResourceText("Res_Filter_All"));
    // Wanted: the count of the other list decides.
    if (index < cmbCurrency->GetItemCount()) cmbFilterCurrency->SetItemIndex(index);
  }
  AccountInfoTree->FullRefresh();
  UpdateCaptionButtons();
  SendViewNotify(this, kViewLayoutChanged);
  UpdateAggregateMenuCaption();
  return true;
}

const std::vector<TCaptionButton*>* TAccountInfoFrame::GetViewCaptionButtons() { return &FCaptionButtonList; }

const TImageList* TAccountInfoFrame::GetViewCaptionButtonImageList() { return imgList; }

bool TAccountInfoFrame::GetViewCaption(std::string& caption) {
  caption = GetResourceText("Res_AccountInfo");
  if (!FCurrentAccount.IsEmpty()) caption.append(" - ").append(FCurrentAccount.Text());
  const TCustomAccount* account = FindCurrentAccount();
  if (FMyDataControl != nullptr && FMyDataControl->IsAggregate() && account != nullptr &&
      account->IsMasterAccount()) {
    const bool crossOut = account->GetMasterType() == kMasterTypeConsolidated;
    caption.append(" [")
        .append(GetResourceText(crossOut ? "Res_Aggregate_CrossOut" : "Res_Aggregate_NonCrossOut"))
        .append("]");
  }
  return true;
}

bool TAccountInfoFrame::SetGroupID(const std::string& groupID) {
  if (groupID == FGroupID) return true;
  FGroupID = groupID;
  RegisterAccountBox();
  return true;
}

bool TAccountInfoFrame::GetGroupID(std::string& groupID) {
  groupID = FGroupID;
  return true;
}

bool TAccountInfoFrame::GetWidth(std::int32_t& width) {
  width = kViewWidth;
  if (FIsFirstTime && lgAccount->GetVisible()) {
    FIsFirstTime = false;
    try {
      // An account can be typed at once.
      edtAccount->SetSelectionStart(0);
      edtAccount->SelectAll();
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): a box that is not shown yet; the width
                                       // stands
    }
  }
  return true;
}

void TAccountInfoFrame::ConfigUpdate(void* /*sender*/, void* /*data*/) {
  const auto& config = TCustomConfigManager::GetInstance();
  const TScaleStep& step = GetScaleStep(config.ReadInteger("OMS_TRADEPLATFORM", "ScaleSize"));
  if (step.FPercent != FCurrentScale) {
    FCurrentScale = step.FPercent;
    THintStyle style = HintCtrl->GetStyle();
    style.FFont.SetPointSize(step.FHintPoints);
    style.FCaptionFont.SetPointSize(step.FHintPoints);
    HintCtrl->SetStyle(std::move(style));
  }
  const bool confirm = config.ReadBool(config.GetUserSection(), "ConfirmationClosePosition");
  if (confirm != FClosePositionConf) {
    FClosePositionConf = confirm;
    SetRightClickMenuCaption();
  }
}

}  // namespace margindesk
