#include "host/framework/FrameMap.h"
#include "model/contract/Baseview.h"

namespace margindesk {

TIBasePreferenceView::TIBasePreferenceView(TComponent* owner) : TComponent(owner) {}

TIBasePreferenceView::~TIBasePreferenceView() { CloseAllFrames(FFrames); }

std::string TIBasePreferenceView::GetName() { return {}; }

std::int32_t TIBasePreferenceView::GetViewID() { return 0; }

std::int32_t TIBasePreferenceView::GetWidth() { return 0; }

std::int32_t TIBasePreferenceView::GetHeight() { return 0; }

std::vector<TFrame*> TIBasePreferenceView::GetView() {
  std::vector<TFrame*> frames;
  frames.reserve(FFrames.size());
  for (const auto& [handle, frame] : FFrames) frames.push_back(frame.get());
  return frames;
}

bool TIBasePreferenceView::SetLanguage(TViewHandle handle, std::int32_t index) {
  TPreferenceFrame* page = FindPage(handle);
  return page != nullptr && page->SetLanguage(index);
}

bool TIBasePreferenceView::Execute(TViewHandle handle) {
  TPreferenceFrame* page = FindPage(handle);
  return page != nullptr && page->Execute();
}

bool TIBasePreferenceView::Reset(TViewHandle handle) {
  TPreferenceFrame* page = FindPage(handle);
  return page != nullptr && page->Reset();
}

bool TIBasePreferenceView::ResetFactory(TViewHandle handle) {
  TPreferenceFrame* page = FindPage(handle);
  return page != nullptr && page->ResetFactory();
}

bool TIBasePreferenceView::SendMessage(TViewHandle handle, std::int32_t flag, std::int64_t data) {
  TPreferenceFrame* page = FindPage(handle);
  return page != nullptr && page->SendMessage(flag, data);
}

TViewHandle TIBasePreferenceView::AddView(std::unique_ptr<TFrame> frame) {
  return AddFrame(FFrames, std::move(frame));
}

TViewHandle TIBasePreferenceView::FindHandle(const TFrame* frame) const noexcept {
  return FindHandleOf(FFrames, frame);
}

TPreferenceFrame* TIBasePreferenceView::FindPage(TViewHandle handle) const noexcept {
  return dynamic_cast<TPreferenceFrame*>(FindFrameOf(FFrames, handle));
}

}  // namespace margindesk
