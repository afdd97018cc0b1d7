// The account, the currencies and the aggregation of a view.
#include <algorithm>

#include "accountinfo/view/AccountInfoView.h"
#include "accountinfo/view/AcctPositionViewDataControl.h"
#include "model/ResourceText.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/EditorManager.h"
#include "model/contract/Icommon.h"
#include "model/contract/UserAppProfile.h"

namespace margindesk {

namespace {

constexpr std::int32_t kClient = 2;  // the user type of a client who sees accounts of his own

// A client with one account has no account to choose.
bool CanChooseAccount() {
  const auto& profile = TCustomUserAppProfile::GetInstance();
  return profile.GetUserType() != kClient || profile.GetUserTypeFlag();
}

}  // namespace

void TAccountInfoFrame::InitializeView() {
  const auto& config = TCustomConfigManager::GetInstance();
  FMoreInfoViewValid = !config.ReadString(config.GetUserSection(), "AcctInfo_URL").empty();
  if (!FMoreInfoViewValid) {
    std::vector<std::string> keys;
    TCustomLanguageManager::GetInstance().GetSectionKeys("MoreInfo", keys);
    FMoreInfoViewValid = !keys.empty();
  }
  liMoreInfo->SetVisible(FMoreInfoViewValid);

  if (CanChooseAccount()) {
    RegisterAccountBox();
  } else {
    lgAccount->SetVisible(false);
    lgCurrency->SetAlignVert(TLayoutAlignVert::Center);
  }
  auto& currencies = TCustomCurrencyAdapter::GetInstance();
  currencies.AddMultiCurrencyInfoHandler(MakeHandler<&TAccountInfoFrame::MultiCurrencyInfoUpdate>(this),
                                         this);
  currencies.AddCurrencyListHandler(MakeHandler<&TAccountInfoFrame::CurrencyListUpdate>(this), this);
  InitializeCurrencyList();

  const std::string threeLevels = config.ReadString(config.GetUserSection(), "AcctInfoShow3LvInfo");
  FIsShow3LvInfo = threeLevels.empty() || (threeLevels[0] != 'N' && threeLevels[0] != 'n');
}

void TAccountInfoFrame::RegisterAccountBox() {
  if (!CanChooseAccount()) return;
  FAccountBoxRegistered = true;
  TEditorManager::GetInstance().RegisterAccountEditor(*edtAccount, FGroupID, false, true);
}

void TAccountInfoFrame::ChooseInitialAccount() {
  const auto& profile = TCustomUserAppProfile::GetInstance();
  if (profile.GetUserType() == kClient) {
    if (!profile.GetUserTypeFlag()) return SetAccount(profile.GetDefaultAccount());
    if (!edtAccount->GetHint().empty()) return;
    edtAccount->SetText(profile.GetDefaultAccount().Text());
    edtAccount->SendMessage(kAccountEditorMessage, 0, 0);
  } else if (!FCurrentAccount.IsEmpty()) {
    // Whoever chose it was here before the data controls.
    const TCode account = std::exchange(FCurrentAccount, TCode());
    SetAccount(account);
  }
}

bool TAccountInfoFrame::IsInputStripVisible() const {
  return lgAccount->GetVisible() || lgCurrency->GetVisible() || lgMoreInfo->GetVisible();
}

std::int32_t TAccountInfoFrame::FindCurrency(const std::vector<TCode>& list, TCode currency) {
  const auto found = std::ranges::find(list, currency);
  return found == list.end() || currency.IsEmpty() ? -1 : static_cast<std::int32_t>(found - list.begin());
}

void TAccountInfoFrame::FillCurrencyTexts(TComboBox& combo, const std::vector<TCode>& currencies) {
  combo.Clear();
  for (const TCode currency : currencies) {
    combo.AddItem(TCustomLanguageManager::GetInstance().GetLanguageText("Currency", currency.Text()));
  }
}

void TAccountInfoFrame::InitializeCurrencyList() {
  const bool stripVisible = IsInputStripVisible();
  const bool inputVisible = lgAccount->GetVisible() || lgCurrency->GetVisible();
  lgInputInfo->SetVisible(inputVisible);
  lgMoreInfo->SetAlignHorz(inputVisible ? TLayoutAlignHorz::Right : TLayoutAlignHorz::Left);
  // A strip that the user has hidden stays hidden.
  const bool hidden = FShowHideMoreCaptionButton->FDown != 0;
  lgInput->SetVisible(!hidden && (lgInputInfo->GetVisible() || lgMoreInfo->GetVisible()));

  const auto codeAt = [this](std::int32_t index) {
    return index >= 0 && static_cast<std::size_t>(index) < FCurrencyList.size()
               ? FCurrencyList[static_cast<std::size_t>(index)]
               : TCode();
  };
  const TCode converted = codeAt(cmbCurrency->GetItemIndex());
  // Wanted: the filter is remembered from the convert list, also where the two lists differ.
  const TCode filtered = codeAt(cmbFilterCurrency->GetItemIndex() - 1);

  const TControlUpdate convertUpdate(*cmbCurrency);
  const TControlUpdate filterUpdate(*cmbFilterCurrency);
  const bool chinaConnect = IsChinaConnectOn();
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  cmbCurrency->Clear();
  cmbFilterCurrency->Clear();
  FCurrencyList.clear();
  FFilterCurrencyList.clear();
  for (std::int32_t i = 0; i < currencies.GetCurrencyCount(); ++i) {
    FCurrencyList.push_back(currencies.GetCurrencyCode(i));
  }
  FFilterCurrencyList = chinaConnect ? std::vector{TCode("HKD"), TCode("CNY")} : FCurrencyList;
  FillCurrencyTexts(*cmbCurrency, FCurrencyList);
  FillCurrencyTexts(*cmbFilterCurrency, FFilterCurrencyList);
  if (!chinaConnect) cmbFilterCurrency->InsertItem(0, GetResourceText("Res_Filter_All"));

  cmbCurrency->SetItemIndex(std::max(FindCurrency(FCurrencyList, converted), 0));
  const std::int32_t filterIndex = FindCurrency(FFilterCurrencyList, filtered);
  cmbFilterCurrency->SetItemIndex(filterIndex < 0 ? 0 : filterIndex + (chinaConnect ? 0 : 1));
  if (IsInputStripVisible() != stripVisible) UpdateCaptionButtonList();
}

void TAccountInfoFrame::CurrencyListUpdate(void* /*sender*/, void* /*data*/) { InitializeCurrencyList(); }

void TAccountInfoFrame::MultiCurrencyInfoUpdate(void* /*sender*/, void* /*data*/) {
  InitializeCurrencyList();
}

void TAccountInfoFrame::cmbCurrencyPropertiesChange() {
  const std::int32_t index = cmbCurrency->GetItemIndex();
  if (index < 0 || static_cast<std::size_t>(index) >= FCurrencyList.size()) return;
  const TCode currency = FCurrencyList[static_cast<std::size_t>(index)];
  if (currency == FCurrentCurrency) return;
  FCurrentCurrency = currency;
  if (FMyDataControl != nullptr) FMyDataControl->SetCurrency(currency);
  SendViewNotify(this, kViewAccountChanged);
}

void TAccountInfoFrame::cmbFilterCurrencyPropertiesChange() {
  const std::int32_t index = cmbFilterCurrency->GetItemIndex();
  const std::int32_t place = IsChinaConnectOn() ? index : index - 1;
  if (index < 0 || place >= static_cast<std::int32_t>(FFilterCurrencyList.size())) return;
  // Wanted: the first item is no filter, also while China Connect puts HKD there.
  const TCode currency = index == 0 ? TCode() : FFilterCurrencyList[static_cast<std::size_t>(place)];
  if (currency == FFilterCurrency) return;
  FFilterCurrency = currency;
  if (FMyDataControl != nullptr) FMyDataControl->SetFilterCurr(currency);
}

void TAccountInfoFrame::cmbCurrencyKeyPress(char32_t& key) {
  if (key == kKeyBackspace) key = kKeyNone;
}

void TAccountInfoFrame::edtAccountKeyPress(char32_t& key) {
  if (key == kKeyEnter) edtAccountExit();
}

void TAccountInfoFrame::edtAccountExit() {
  SetAccount(TCode(edtAccount->GetHint()));
  SendViewNotify(this, kViewAccountChanged);
  OpenMoreInfoView(1);
}

void TAccountInfoFrame::cbLockAcctPropertiesChange() { edtAccount->SetEnabled(!cbLockAcct->GetChecked()); }

void TAccountInfoFrame::SetAccount(TCode account) {
  if (account == FCurrentAccount) return;
  FCurrentAccount = account;
  UpdateViewColumn();
  if (FMyDataControl != nullptr) FMyDataControl->SetAccount(account);
  if (FMyPositionDataControl != nullptr) FMyPositionDataControl->SetAccount(account);
  UpdateCaptionButtonList();
  SetAggregateMenu();
}

const TCustomAccount* TAccountInfoFrame::FindCurrentAccount() const {
  return FCurrentAccount.IsEmpty() ? nullptr
                                   : TCustomAccountAdapter::GetInstance().GetAccount(FCurrentAccount);
}

std::int32_t TAccountInfoFrame::GetAccountColumnType(const TCustomAccount* account) const {
  if (account == nullptr) return 0;
  return account->GetAccountType() == "S" ? 1 : account->GetAccountType() == "F" ? 2 : 0;
}

void TAccountInfoFrame::LoadAccountUpdate(void* /*sender*/, void* data) {
  const auto* accounts = static_cast<const TAccountMap*>(data);
  if (accounts == nullptr || FCurrentAccount.IsEmpty()) return;
  const auto loaded = accounts->find(FCurrentAccount);
  if (loaded == accounts->end()) return;
  UpdateCaptionButtonList();
  if (GetAccountColumnType(loaded->second) != FCurrentColumnType) UpdateViewColumn();
}

void TAccountInfoFrame::SetAggregateMenu() {
  const TCustomAccount* account = FindCurrentAccount();
  AggregateMenu->SetVisible(FEnableAggregated && account != nullptr && account->IsMasterAccount());
  UpdateAggregateMenuCaption();
}

void TAccountInfoFrame::AggregateMenuClick() {
  if (FMyDataControl == nullptr) return;
  FMyDataControl->SetAggregate();
  UpdateAggregateMenuCaption();
  SendViewNotify(this, kViewAccountChanged);
}

void TAccountInfoFrame::UpdateAggregateMenuCaption() {
  if (FMyDataControl == nullptr) return;
  AggregateMenu->SetCaption(GetResourceText(FMyDataControl->IsAggregate() ? "Res_CancelAggregateSubAccount"
                                                                          : "Res_AggregateSubAccount"));
}

}  // namespace margindesk
