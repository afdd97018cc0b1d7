// What explains an account: caption buttons with its details, hints with formulas, the company banner, and
// the way to the more-info view.
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "accountinfo/view/AccountInfoView.h"
#include "controls/Picture.h"
#include "model/ResourceText.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "model/contract/FileService.h"
#include "model/contract/GlobalChannelManager.h"

namespace margindesk {

std::unique_ptr<TFormulaMapList> FFormulaMapList;
std::unique_ptr<TPicture> FPic;
TBannerState FCompanyBanerCheckLink = TBannerState::NotFetched;

namespace {

constexpr std::int32_t kHintTicks = 10;
constexpr std::int32_t kLargestBannerHeight = 100;  // pixels
constexpr std::int32_t kLargestBannerWidth = 350;
constexpr std::int32_t kMoreInfoOpen = 2;
constexpr std::int32_t kStatusSuspended = 1024;
constexpr std::int32_t kStatusSellOnly = 2048;
constexpr std::string_view kGrossMargining = "2";

struct TMarginType {
  std::int32_t FCode;
  std::string_view FResourceKey;
};
constexpr TMarginType kMarginTypes[] = {{0, "Res_MarginType_Cash"},
                                        {1, "Res_MarginType_Margin"},
                                        {2, "Res_MarginType_Custodian"},
                                        {5, "Res_MarginType_DVP"}};

std::string MakeLine(std::string_view labelKey, std::string_view text) {
  return std::string(GetResourceText(labelKey)).append(": ").append(text);
}

// "" for an account without a margin type line.
std::string GetMarginTypeLine(const TCustomAccount& account) {
  std::string gross;
  if (account.GetAttributeValue("ClientFeature") == kGrossMargining) {
    gross = GetResourceText("res_MarginingBasis_Gross");  // wanted: this one key begins with a small letter
  }
  const auto* type = std::ranges::find(kMarginTypes, account.GetMarginType(), &TMarginType::FCode);
  if (type != std::end(kMarginTypes)) {
    if (!gross.empty()) gross.append("/");
    return MakeLine("Res_MarginType", gross.append(GetResourceText(type->FResourceKey)));
  }
  if (gross.empty()) return {};
  return MakeLine("Res_MarginType", gross.append(GetResourceText("Res_Client")));
}

std::string GetMobileLine(const TCustomAccount& account) {
  if (account.GetMobile().empty()) return {};
  const std::string& country = account.GetAttributeValue("MobileCCode");
  return MakeLine("Res_Mobile",
                  country.empty() ? account.GetMobile() : "(" + country + ")" + account.GetMobile());
}

std::string_view GetStatusKey(std::int32_t flags) {
  if ((flags & kStatusSuspended) != 0) return "Res_AcctStatus_Suspend";
  return (flags & kStatusSellOnly) != 0 ? "Res_AcctStatus_Sell" : "Res_AcctStatus_Normal";
}

std::string_view GetLanguageCode() {
  switch (TCustomLanguageManager::GetInstance().GetLanguageIndex()) {
    case kLanguageSimplifiedChinese:
      return "CHS";
    case kLanguageTraditionalChinese:
      return "ZHH";
    default:
      return "ENG";
  }
}

}  // namespace

void InitializeAccountInfoView() { FCompanyBanerCheckLink = TBannerState::NotFetched; }

void FinalizeAccountInfoView() {
  FPic.reset();
  FFormulaMapList.reset();
  FCompanyBanerCheckLink = TBannerState::NotFetched;
}

void TAccountInfoFrame::btnShowHideClick() {
  FShowHideMoreCaptionButton->FDown = FShowHideMoreCaptionButton->FDown == 0 ? 1 : 0;
  UpdateCaptionButtons();
  SendViewNotify(this, kViewLayoutChanged);
}

void TAccountInfoFrame::UpdateCaptionButtons() {
  const bool hidden = FShowHideMoreCaptionButton->FDown != 0;
  FShowHideMoreCaptionButton->FImageIndex =
      static_cast<std::int32_t>(hidden ? TCaptionButtonImage::More : TCaptionButtonImage::Less);
  FShowHideMoreCaptionButton->FHint = GetResourceText(hidden ? "Res_More" : "Res_Less");
  lgInput->SetVisible(!hidden);
  FMoreInfoCaptionButton->FHint = GetAccountOtherInfo();
  FSaveTemplateCaptionButton->FHint = GetResourceText("Res_SaveTemplate");
  FSaveTemplateCaptionButton->FImageIndex = static_cast<std::int32_t>(TCaptionButtonImage::SaveTemplate);
}

void TAccountInfoFrame::UpdateCaptionButtonList() {
  FShowHideMoreCaptionButton->FVisible = IsInputStripVisible();
  FMoreInfoCaptionButton->FVisible = !FCurrentAccount.IsEmpty();
  UpdateCaptionButtons();
  SendViewNotify(this, kViewLayoutChanged);
}

std::string TAccountInfoFrame::GetAccountOtherInfo() {
  const TCustomAccount* account = FindCurrentAccount();
  if (account == nullptr) return {};
  const std::string email =
      account->GetEmail().empty() ? std::string() : MakeLine("Res_Email", account->GetEmail());
  std::string details;
  for (const std::string& line : {GetMarginTypeLine(*account), GetMobileLine(*account), email}) {
    if (!line.empty()) details.append(line).append("\r\n");
  }
  return details + MakeLine("Res_AccountStatus", GetResourceText(GetStatusKey(account->GetStatusFlags())));
}

void TAccountInfoFrame::btnMoreInfoClick() { OpenMoreInfoView(kMoreInfoOpen); }

void TAccountInfoFrame::OpenMoreInfoView(std::int32_t mode) {
  TWebViewRecord record;
  record.FAccount = FCurrentAccount.Text();
  record.FSender = std::to_string(reinterpret_cast<std::uintptr_t>(this));
  record.FMode = mode;
  TCustomGlobalChannelManager::GetInstance().SendChannelMessage(kMessageMoreInfo, &record);
}

void TAccountInfoFrame::RefreshTimer(void* /*sender*/, void* /*data*/) {
  if (FShowingButtonHint && ++FShowingButtonHintCount == kHintTicks) HideHint();
}

void TAccountInfoFrame::HideHint() {
  if (!FShowingButtonHint) return;
  FShowingButtonHintCount = 0;
  FShowingButtonHint = false;
  HintCtrl->HideHint();
}

void TAccountInfoFrame::AccountInfoTreeMouseMove(std::int32_t x, std::int32_t y) { ProcessShowHint(x, y); }

void TAccountInfoFrame::AccountInfoTreeMouseLeave() { ProcessHideHint(); }

void TAccountInfoFrame::ProcessShowHint(std::int32_t x, std::int32_t y) {
  if (FMyDataControl == nullptr) return;
  const TVirtualTree::THitTest hit = AccountInfoTree->HitTest({x, y});
  if (hit.FColumn == nullptr || hit.FColumn->FTag != kCellCaption) {
    FCurrentShowHintAttr = -1;
    return;
  }
  if (hit.FNode == nullptr) return;
  if (hit.FNode->GetLevel() != 0) {
    FCurrentShowHintAttr = -1;
    return;
  }
  const std::int32_t attribute = GetNodeAttribute(hit.FNode);
  if (attribute == FCurrentShowHintAttr) return;
  FCurrentShowHintAttr = attribute;
  FShowingButtonHint = true;
  FShowingButtonHintCount = 0;
  const std::string text = GetFormulaByAttr(attribute);
  if (text.empty()) return HideHint();
  HintCtrl->ShowHint(AccountInfoTree->ClientToScreen({x, y}), "", text);
}

void TAccountInfoFrame::ProcessHideHint() {
  HideHint();
  FCurrentShowHintAttr = -1;
}

std::int32_t TAccountInfoFrame::GetNodeAttribute(const TVirtualTreeNode* node) {
  const TDataNode* data = node == nullptr ? nullptr : node->GetData();
  if (const auto* attribute = dynamic_cast<const TAccountDataNode*>(data)) return attribute->GetAttribute();
  if (const auto* value = dynamic_cast<const TAccountDataValueNode*>(data)) return value->GetAttribute();
  return -1;
}

std::string TAccountInfoFrame::GetFormulaByAttr(std::int32_t attribute) {
  const auto key = FKeyValueMapDic.find(attribute);
  if (key == FKeyValueMapDic.end() || FFormulaMapList == nullptr) return {};
  auto formulas = FFormulaMapList->find(GetLanguageCode());
  if (formulas == FFormulaMapList->end()) formulas = FFormulaMapList->find("ENG");
  if (formulas == FFormulaMapList->end()) return {};
  const auto formula = formulas->second.find(key->second);
  if (formula == formulas->second.end() || formula->second.empty()) return {};
  return GetColNameByAttr(attribute).append("=").append(formula->second);
}

void TAccountInfoFrame::ShowBanner() {
  if (FCompanyBanerCheckLink == TBannerState::NotFetched) return LoadPic();
  if (FCompanyBanerCheckLink == TBannerState::None) return;
  liCOM->SetVisible(true);
  imgCom->SetPicture(FPic->GetBitmap());
  UpdateImgSize();
}

void TAccountInfoFrame::LoadPic() {
  const auto& config = TCustomConfigManager::GetInstance();
  const std::string address = config.ReadString(config.GetUserSection(), "CompanyBannerURL");
  if (address.empty()) {
    FCompanyBanerCheckLink = TBannerState::None;
    return;
  }
  liCOM->SetVisible(true);
  TCustomFileService::GetInstance().DownloadFile(
      nullptr, address, MakeFileCompletionHandler<&TAccountInfoFrame::ProcessPic>(this));
}

void TAccountInfoFrame::ProcessPic(void* /*sender*/, const std::string& fileName, const std::string& /*text*/,
                                   bool success) {
  if (!success) {
    FCompanyBanerCheckLink =
        TBannerState::None;  // the place of the banner stays as the fetch left it: wanted
    return;
  }
  FCompanyBanerCheckLink = TBannerState::Fetched;
  if (!fileName.empty()) {
    const bool loaded = FPic->LoadFromFile(fileName);
    std::error_code ignored;
    std::filesystem::remove(fileName, ignored);
    if (!loaded) {  // no picture: the image stays as it was, and no later view waits for one
      FCompanyBanerCheckLink = TBannerState::None;
      return;
    }
    imgCom->SetPicture(FPic->GetBitmap());
  }
  UpdateImgSize();
}

void TAccountInfoFrame::UpdateImgSize() {
  imgCom->SetHeight(std::min(FPic->GetHeight(), kLargestBannerHeight));
  imgCom->SetWidth(std::min(FPic->GetWidth(), kLargestBannerWidth));
}

}  // namespace margindesk
