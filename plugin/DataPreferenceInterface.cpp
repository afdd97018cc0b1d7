#include "plugin/DataPreferenceInterface.h"

#include <memory>

#include "model/ResourceText.h"
#include "plugin/DataPreference.h"

namespace margindesk {

namespace {

constexpr std::int32_t kViewID = 601;       // wanted: that of the account information view
constexpr std::int32_t kDefaultSize = 500;  // pixels, while there is no page

template <class TFrames>
std::int32_t SizeOf(const TFrames& frames, std::int32_t (TDataPreferenceFrame::*size)()) {
  std::int32_t result = kDefaultSize;
  for (const auto& [handle, frame] : frames) {
    if (auto* page = dynamic_cast<TDataPreferenceFrame*>(frame.get())) result = (page->*size)();
  }
  return result;
}

}  // namespace

std::string TIDataPreference::GetName() { return GetResourceText("Res_DataFormat"); }

std::int32_t TIDataPreference::GetViewID() { return kViewID; }

std::int32_t TIDataPreference::GetWidth() { return SizeOf(GetFrames(), &TDataPreferenceFrame::GetWidth); }

std::int32_t TIDataPreference::GetHeight() { return SizeOf(GetFrames(), &TDataPreferenceFrame::GetHeight); }

std::vector<TFrame*> TIDataPreference::GetView() {
  if (GetFrames().empty()) AddView(std::make_unique<TDataPreferenceFrame>(nullptr));
  return TIBasePreferenceView::GetView();
}

}  // namespace margindesk
