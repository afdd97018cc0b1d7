// The making and the end of a simulator view, its buttons, and how changed figures look.
#include "marginsim/MarginSimulatorView.h"

#include "marginsim/MarginSimulatorDataControl.h"
#include "model/ResourceText.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Constdef.h"
#include "model/contract/GlobalChannelManager.h"
#include "model/contract/LookAndFeelService.h"

namespace margindesk {

namespace {

constexpr std::int32_t kViewWidth = 800;  // pixels
constexpr std::string_view kDiffColorKey = "coMarginSimulateDiffBgColor";
constexpr TColor kDefaultDiffColor = 255;  // pure red

}  // namespace

TMarginSimulatorFrame::TMarginSimulatorFrame(TComponent* owner)
    : TAccountInfoFrame(owner), TMarginSimulatorForm(static_cast<TAccountInfoForm&>(*this)) {
  ConnectOrderControls();
}

void TMarginSimulatorFrame::Construct() {
  TAccountInfoFrame::Construct();
  InitializeGrid();
  OrderGridView->SetRecordCount(1);
  epiInvalidInput->FImageIndex = static_cast<std::int32_t>(TCaptionButtonImage::Invalid);
  SetLanguage(3);
  ConfigUpdate(nullptr, nullptr);
  TCustomConfigManager::GetInstance().AddConfigUpdateHandler(
      MakeHandler<&TMarginSimulatorFrame::ConfigUpdate>(this), this);
  auto& channels = TCustomGlobalChannelManager::GetInstance();
  channels.AddChannelHandler(kChannelLayoutLoaded, MakeHandler<&TMarginSimulatorFrame::LoadLayoutComp>(this),
                             this);
  channels.AddChannelHandler(kChannelMainFormShown, MakeHandler<&TMarginSimulatorFrame::MainFormShow>(this),
                             this);
  liPosition->SetVisible(false);
}

TMarginSimulatorFrame::~TMarginSimulatorFrame() {
  TCustomConfigManager::GetInstance().RemoveConfigUpdateHandler(this);
  auto& channels = TCustomGlobalChannelManager::GetInstance();
  channels.RemoveChannelHandler(kChannelLayoutLoaded, this);
  channels.RemoveChannelHandler(kChannelMainFormShown, this);
  ClearSubscribeList();
}

void TMarginSimulatorFrame::ConnectOrderControls() {
  btnSimulate->SetOnClick(MakeEvent<&TMarginSimulatorFrame::btnSimulateClick>(this));
  btnSubmit->SetOnClick(MakeEvent<&TMarginSimulatorFrame::btnSubmitClick>(this));
  btnClear->SetOnClick(MakeEvent<&TMarginSimulatorFrame::btnClearClick>(this));
  AccountInfoTree->SetOnGetContentStyle(
      MakeEvent<&TMarginSimulatorFrame::AccountInfoTreeStylesGetContentStyle>(this));
  OrderGridView->SetOnEditing(MakeEvent<&TMarginSimulatorFrame::OrderGridViewEditing>(this));
  OrderGridView->SetOnEditKeyDown(MakeEvent<&TMarginSimulatorFrame::OrderGridViewEditKeyDown>(this));
  epPrice->FOnChange = MakeEvent<&TMarginSimulatorFrame::PriceChange>(this);
  epQuantity->FOnChange = MakeEvent<&TMarginSimulatorFrame::QuantityChange>(this);
  epOpenClose->FOnChange = MakeEvent<&TMarginSimulatorFrame::OpenCloseChange>(this);
  epPrincipal->FOnChange = MakeEvent<&TMarginSimulatorFrame::PrincipalChange>(this);
  epiSide->FOnChange = MakeEvent<&TMarginSimulatorFrame::epiSidePropertiesChange>(this);
  epiSide->FOnPopup = MakeEvent<&TMarginSimulatorFrame::epiSidePropertiesPopup>(this);
  epiStatus->FOnChange = MakeEvent<&TMarginSimulatorFrame::epiStatusPropertiesChange>(this);
  epiStatus->FOnPopup = MakeEvent<&TMarginSimulatorFrame::epiStatusPropertiesPopup>(this);
}

void TMarginSimulatorFrame::CreateDataSource() {
  FMyDataSource = std::make_unique<TCustomTreeDataSource>(
      FDefaultColumnList, &CreateTreeDataControl<TMarginSimulatorDataControl>);
  FMyDataControl = static_cast<TMarginSimulatorDataControl*>(FMyDataSource->GetDataControl());
}

TMarginSimulatorDataControl* TMarginSimulatorFrame::GetSimulatorControl() const noexcept {
  return static_cast<TMarginSimulatorDataControl*>(FMyDataControl);
}

void TMarginSimulatorFrame::SetAggregateMenu() { AggregateMenu->SetVisible(false); }

bool TMarginSimulatorFrame::GetViewCaption(std::string& caption) {
  caption = GetResourceText("Res_MarginSimulator");
  if (!FCurrentAccount.IsEmpty()) caption.append(" - ").append(FCurrentAccount.Text());
  return true;
}

bool TMarginSimulatorFrame::GetWidth(std::int32_t& width) {
  TAccountInfoFrame::GetWidth(width);
  width = kViewWidth;
  return true;
}

void TMarginSimulatorFrame::btnSimulateClick() {
  TMarginSimulatorDataControl* const control = GetSimulatorControl();
  if (control == nullptr || !AddSimulateOrder(false)) return;
  control->SetAccountInfoMode(TAccountInfoMode::aimSimulate);
  control->SimulateOrder();
}

void TMarginSimulatorFrame::btnSubmitClick() {
  TMarginSimulatorDataControl* const control = GetSimulatorControl();
  if (control == nullptr || FSubmitting) return;
  const std::weak_ptr<const bool> life = FLife;
  FSubmitting = true;
  const bool submitted = AddSimulateOrder(true) && control->SubmitOrder();
  if (life.expired()) return;  // the view may have closed under a message or the question
  FSubmitting = false;
  if (submitted) btnClearClick();
}

void TMarginSimulatorFrame::btnClearClick() {
  {
    const TControlUpdate update(*OrderGridView);
    OrderGridView->CancelEditor();
    OrderGridView->SetRecordCount(1);
    for (const TGridColumn& column : OrderGridView->GetColumns()) {
      OrderGridView->SetValue(0, column.FTag, TVariant::Null());
    }
  }
  if (TMarginSimulatorDataControl* const control = GetSimulatorControl()) {
    control->SetAccountInfoMode(TAccountInfoMode::aimNormal);
  }
}

void TMarginSimulatorFrame::AccountInfoTreeStylesGetContentStyle(const TTreeColumn& column,
                                                                 const TVirtualTreeNode* node,
                                                                 const TStyle*& style) {
  if (column.FTag != kCellValue) return;
  style = sSame;
  TMarginSimulatorDataControl* const control = GetSimulatorControl();
  if (control == nullptr || node == nullptr || node->GetData() == nullptr) return;
  std::string original;
  if (control->IsValueChanged(node->GetData(), kCellValue, original)) style = sDiff;
}

void TMarginSimulatorFrame::ProcessShowHint(std::int32_t x, std::int32_t y) {
  TAccountInfoFrame::ProcessShowHint(x, y);
  TMarginSimulatorDataControl* const control = GetSimulatorControl();
  if (control == nullptr) return;
  if (control->GetAccountInfoMode() != TAccountInfoMode::aimSimulate) {
    FCurrentHintNode = nullptr;
    return;
  }
  const TVirtualTree::THitTest hit = AccountInfoTree->HitTest({x, y});
  if (hit.FColumn == nullptr) return;
  if (hit.FColumn->FTag != kCellValue) {
    FCurrentHintNode = nullptr;
    return;
  }
  if (hit.FNode == nullptr || hit.FNode->GetData() == FCurrentHintNode) return;
  std::string original;
  if (!control->IsValueChanged(hit.FNode->GetData(), kCellValue, original)) return;
  FCurrentHintNode = hit.FNode->GetData();
  FShowingButtonHint = true;
  FShowingButtonHintCount = 0;
  if (original.empty()) return HideHint();
  HintCtrl->ShowHint(AccountInfoTree->ClientToScreen({x, y}), "", FHintRes + ": " + original);
}

void TMarginSimulatorFrame::ProcessHideHint() {
  TAccountInfoFrame::ProcessHideHint();
  FCurrentHintNode = nullptr;
}

void TMarginSimulatorFrame::ConfigUpdate(void* /*sender*/, void* /*data*/) {
  const auto& look = TCustomLookAndFeelService::GetInstance();
  const bool chosen =
      !TCustomConfigManager::GetInstance().ReadString(look.GetSkinName(), kDiffColorKey).empty();
  const TColor color = chosen ? look.GetColor(nullptr, kDiffColorKey) : kDefaultDiffColor;
  if (color == sDiff->GetColor()) return;
  sDiff->SetColor(color);
  AccountInfoTree->FullRefresh();
}

void TMarginSimulatorFrame::RefreshTimer(void* sender, void* data) {
  TAccountInfoFrame::RefreshTimer(sender, data);
  const std::int32_t record = std::exchange(FPendingDeleteRecordIndex, -1);
  if (record >= 0 && record < OrderGridView->GetRecordCount() - 1) OrderGridView->DeleteRecord(record);
}

}  // namespace margindesk
