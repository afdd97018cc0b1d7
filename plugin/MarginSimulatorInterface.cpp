#include "plugin/MarginSimulatorInterface.h"

#include "marginsim/MarginSimulatorView.h"
#include "model/contract/UserAppProfile.h"
#include "plugin/MenuLevel.h"

namespace margindesk {

namespace {

constexpr std::int32_t kWidth = 1000;  // pixels
constexpr std::int32_t kHeight = 475;
constexpr TMenuLevel kMenu[] = {kAccountMenuLevel, {4000, kViewMarginSimulator, "Res_MarginSimulator"}};

}  // namespace

// Wanted: the name lacks a letter, and workspaces know it so.
std::string TIMarginSimulator::GetName() {
  return "MarginSimultorView_" + std::to_string(kViewMarginSimulator);
}

std::int32_t TIMarginSimulator::GetViewID() { return kViewMarginSimulator; }

std::int32_t TIMarginSimulator::GetMenuLevel() { return static_cast<std::int32_t>(std::size(kMenu)); }

std::int32_t TIMarginSimulator::GetMenuIndex(std::int32_t level) {
  return GetMenuLevelOf(kMenu, level).FIndex;
}

std::int32_t TIMarginSimulator::GetMenuID(std::int32_t level) { return GetMenuLevelOf(kMenu, level).FID; }

std::string TIMarginSimulator::GetMenuCaption(std::int32_t level) {
  return GetMenuLevelCaption(GetMenuLevelOf(kMenu, level));
}

std::int32_t TIMarginSimulator::GetMenuGroupIndex(std::int32_t /*level*/) { return 0; }

bool TIMarginSimulator::GetIsVisible() {
  return TCustomUserAppProfile::GetInstance().IsFunctionEnabled("MarginSim");
}

TFrame* TIMarginSimulator::OpenNewInstance() {
  auto frame = CreateViewFrame<TMarginSimulatorFrame>(nullptr);
  TFrame* const opened = frame.get();
  AddView(std::move(frame));
  return opened;
}

bool TIMarginSimulator::GetDefaultSize(std::int32_t& width, std::int32_t& height) {
  width = kWidth;
  height = kHeight;
  return true;
}

bool TIMarginSimulator::GetDefaultCaption(std::string& caption) {
  caption = GetResourceText("Res_MarginSimulator");
  return true;
}

}  // namespace margindesk
