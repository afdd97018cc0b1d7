#include "model/contract/Baseview.h"

#include "host/framework/FrameMap.h"

namespace margindesk {

TIBaseView::TIBaseView(TComponent* owner) : TComponent(owner) {}

TIBaseView::~TIBaseView() { CloseAllFrames(FFrames); }

std::string TIBaseView::GetName() { return {}; }

std::int32_t TIBaseView::GetViewID() { return 0; }

std::int32_t TIBaseView::GetMenuLevel() { return 0; }

std::int32_t TIBaseView::GetMenuIndex(std::int32_t /*level*/) { return -1; }

std::int32_t TIBaseView::GetMenuID(std::int32_t /*level*/) { return 0; }

std::string TIBaseView::GetMenuCaption(std::int32_t /*level*/) { return {}; }

std::int32_t TIBaseView::GetMenuGroupIndex(std::int32_t /*level*/) { return 0; }

bool TIBaseView::GetIsVisible() { return true; }

bool TIBaseView::GetIsWindow() { return false; }

TFrame* TIBaseView::OpenNewInstance() { return nullptr; }

void TIBaseView::CloseInstance(TViewHandle handle) { CloseFrame(FFrames, handle); }

bool TIBaseView::GetWidth(TViewHandle handle, std::int32_t& width) {
  TViewFrame* frame = FindViewFrame(handle);
  return frame != nullptr && frame->GetWidth(width);
}

bool TIBaseView::GetHeight(TViewHandle handle, std::int32_t& height) {
  TViewFrame* frame = FindViewFrame(handle);
  return frame != nullptr && frame->GetHeight(height);
}

bool TIBaseView::GetViewCaption(TViewHandle handle, std::string& caption) {
  TViewFrame* frame = FindViewFrame(handle);
  return frame != nullptr && frame->GetViewCaption(caption);
}

void TIBaseView::HandleCaptionButtonClick(TViewHandle handle, std::int32_t buttonIndex) {
  TViewFrame* frame = FindViewFrame(handle);
  const auto* buttons = frame == nullptr ? nullptr : frame->GetViewCaptionButtons();
  if (buttons == nullptr || buttonIndex < 0) return;
  const auto index = static_cast<std::size_t>(buttonIndex);
  if (index >= buttons->size()) return;
  TCaptionButton* button = (*buttons)[index];
  if (button->FOnClick != nullptr) button->FOnClick(button->FOnClickObject, button);
}

bool TIBaseView::GetViewCaptionButtons(TViewHandle handle, std::vector<TCaptionButton*>& buttons) {
  TViewFrame* frame = FindViewFrame(handle);
  const auto* offered = frame == nullptr ? nullptr : frame->GetViewCaptionButtons();
  if (offered == nullptr) return false;
  buttons = *offered;
  return true;
}

bool TIBaseView::GetViewCaptionButtonImageList(TViewHandle handle, const TImageList*& images) {
  TViewFrame* frame = FindViewFrame(handle);
  const TImageList* offered = frame == nullptr ? nullptr : frame->GetViewCaptionButtonImageList();
  if (offered == nullptr) return false;
  images = offered;
  return true;
}

bool TIBaseView::GetViewIcon(TViewHandle /*handle*/, TBitmap& /*icon*/) { return false; }

TIBasePreferenceView* TIBaseView::GetPreferenceView() { return nullptr; }

bool TIBaseView::GetIsDialog() { return false; }

bool TIBaseView::GetIsSizeable() { return true; }

bool TIBaseView::GetCanDock() { return true; }

TDockPosition TIBaseView::GetDockPosition() { return TDockPosition::None; }

void TIBaseView::GetShortCutList(std::vector<TCustomViewShortcut>& shortcuts) { shortcuts = FShortcuts; }

bool TIBaseView::ExecuteShortcutAction(std::int32_t /*action*/) { return false; }

bool TIBaseView::SetSkin(TViewHandle /*handle*/, const std::string& /*skinName*/) { return false; }

bool TIBaseView::SetLanguage(TViewHandle handle, std::int32_t index) {
  TViewFrame* frame = FindViewFrame(handle);
  return frame != nullptr && frame->SetLanguage(index);
}

bool TIBaseView::SetFont(TViewHandle /*handle*/, const std::string& /*fontName*/, std::int32_t /*size*/,
                         std::int32_t /*charset*/) {
  return false;
}

void TIBaseView::ActiveView(TViewHandle /*handle*/) {}

void TIBaseView::DeactiveView(TViewHandle /*handle*/) {}

std::string TIBaseView::GetLayoutData(TViewHandle handle) {
  TViewFrame* frame = FindViewFrame(handle);
  std::string layout;
  if (frame == nullptr || !frame->GetLayoutData(layout)) return {};
  return layout;
}

bool TIBaseView::SetLayoutData(TViewHandle handle, const std::string& layout) {
  TViewFrame* frame = FindViewFrame(handle);
  return frame != nullptr && frame->SetLayoutData(layout);
}

bool TIBaseView::SetCustomData(TViewHandle /*handle*/, std::int32_t /*kind*/, TBaseData* /*object*/) {
  return false;
}

bool TIBaseView::ContainView(TViewHandle handle) { return FindFrame(handle) != nullptr; }

bool TIBaseView::SendMessage(TViewHandle /*handle*/, std::int32_t /*message*/, std::int64_t /*data*/) {
  return false;
}

bool TIBaseView::SetGroupID(TViewHandle handle, const std::string& groupID) {
  TViewFrame* frame = FindViewFrame(handle);
  return frame != nullptr && frame->SetGroupID(groupID);
}

bool TIBaseView::GetGroupID(TViewHandle handle, std::string& groupID) {
  TViewFrame* frame = FindViewFrame(handle);
  return frame != nullptr && frame->GetGroupID(groupID);
}

bool TIBaseView::GetIsDialogViewAfterMainShow() { return false; }

std::int32_t TIBaseView::GetDialogViewIndexAfterMainShow() { return -1; }

TViewHandle TIBaseView::AddView(std::unique_ptr<TFrame> frame) { return AddFrame(FFrames, std::move(frame)); }

bool TIBaseView::GetDefaultSize(std::int32_t& /*width*/, std::int32_t& /*height*/) { return false; }

bool TIBaseView::GetDefaultCaption(std::string& /*caption*/) { return false; }

void TIBaseView::InitializeShortcut() { FShortcuts.clear(); }

void TIBaseView::AddNewShortcut(const std::string& text, std::int32_t action) {
  FShortcuts.push_back({text, action});
}

TFrame* TIBaseView::FindFrame(TViewHandle handle) const noexcept { return FindFrameOf(FFrames, handle); }

TViewHandle TIBaseView::FindHandle(const TFrame* frame) const noexcept {
  return FindHandleOf(FFrames, frame);
}

std::vector<TViewHandle> TIBaseView::GetHandles() const {
  std::vector<TViewHandle> handles;
  handles.reserve(FFrames.size());
  for (const auto& [handle, frame] : FFrames) handles.push_back(handle);
  return handles;
}

TViewFrame* TIBaseView::FindViewFrame(TViewHandle handle) const noexcept {
  return dynamic_cast<TViewFrame*>(FindFrame(handle));
}

}  // namespace margindesk
