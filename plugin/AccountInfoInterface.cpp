#include "plugin/AccountInfoInterface.h"

#include "accountinfo/view/AccountInfoView.h"
#include "model/ResourceText.h"
#include "plugin/MenuLevel.h"

namespace margindesk {

namespace {

constexpr std::int32_t kViewID = 601;
constexpr std::int32_t kWidth = 370;  // pixels
constexpr std::int32_t kHeight = 475;

constexpr TMenuLevel kMenu[] = {kAccountMenuLevel, {3100, kViewID, "Res_AccountInfo"}};

}  // namespace

std::string TIAccountInfo::GetName() { return "AccountInfoView_" + std::to_string(kViewID); }

std::int32_t TIAccountInfo::GetViewID() { return kViewID; }

std::int32_t TIAccountInfo::GetMenuLevel() { return static_cast<std::int32_t>(std::size(kMenu)); }

std::int32_t TIAccountInfo::GetMenuIndex(std::int32_t level) { return GetMenuLevelOf(kMenu, level).FIndex; }

std::int32_t TIAccountInfo::GetMenuID(std::int32_t level) { return GetMenuLevelOf(kMenu, level).FID; }

std::string TIAccountInfo::GetMenuCaption(std::int32_t level) {
  return GetMenuLevelCaption(GetMenuLevelOf(kMenu, level));
}

std::int32_t TIAccountInfo::GetMenuGroupIndex(std::int32_t /*level*/) { return 0; }

bool TIAccountInfo::GetIsVisible() { return true; }

TFrame* TIAccountInfo::OpenNewInstance() {
  auto frame = CreateViewFrame<TAccountInfoFrame>(nullptr);
  TFrame* const opened = frame.get();
  AddView(std::move(frame));
  return opened;
}

TIBasePreferenceView* TIAccountInfo::GetPreferenceView() {
  if (FMyPreferenceView == nullptr) FMyPreferenceView = std::make_unique<TIDataPreference>(nullptr);
  return FMyPreferenceView.get();
}

bool TIAccountInfo::GetDefaultSize(std::int32_t& width, std::int32_t& height) {
  width = kWidth;
  height = kHeight;
  return true;
}

bool TIAccountInfo::GetDefaultCaption(std::string& caption) {
  caption = GetResourceText("Res_AccountInfo");
  return true;
}

}  // namespace margindesk
