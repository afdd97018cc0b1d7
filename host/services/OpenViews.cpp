#include "host/services/OpenViews.h"

#include <algorithm>
#include <utility>

#include "model/contract/Constdef.h"

namespace margindesk {

TOpenViews::TOpenViews(THostCalls& calls) : FCalls(calls) {
  FCalls.SetViewSink([this](TFrame* frame, std::int32_t code) { TakeNotice(frame, code); });
}

TOpenViews::~TOpenViews() {
  CloseAll();
  FCalls.SetViewSink({});
}

void TOpenViews::AddClass(const std::string& className, TIBaseView& plugin) {
  RemoveClass(className);
  FPlugins.emplace_back(className, &plugin);
}

void TOpenViews::RemoveClass(const std::string& className) {
  // A view that is told of the end of another one opens none of a class that is going.
  const bool wasClosing = std::exchange(FClosing, true);
  for (;;) {
    const auto last = std::find_if(FViews.rbegin(), FViews.rend(),
                                   [&](const TOpenView& view) { return view.FClass == className; });
    if (last == FViews.rend()) break;
    Close(last->FHandle);
  }
  std::erase_if(FPlugins, [&](const auto& known) { return known.first == className; });
  FClosing = wasClosing;
}

std::vector<std::string> TOpenViews::GetClasses() const {
  std::vector<std::string> classes;
  for (const auto& [className, plugin] : FPlugins) classes.push_back(className);
  return classes;
}

TIBaseView* TOpenViews::FindClass(const std::string& className) const {
  const auto known = std::ranges::find(FPlugins, className, &std::pair<std::string, TIBaseView*>::first);
  return known == FPlugins.end() ? nullptr : known->second;
}

TViewHandle TOpenViews::Open(const std::string& className) {
  TIBaseView* const plugin = FindClass(className);
  if (FClosing || plugin == nullptr) return 0;
  TFrame* const frame = plugin->OpenNewInstance();
  const TViewHandle handle = frame == nullptr ? 0 : plugin->FindHandle(frame);
  if (handle == 0) return 0;
  FViews.push_back({className, handle, frame, className});
  UpdateCaption(handle);
  if (FListener != nullptr) FListener->ViewOpened(*Find(handle));
  return handle;
}

bool TOpenViews::Close(TViewHandle handle) {
  TIBaseView* const plugin = FindPlugin(handle);
  if (plugin == nullptr) return false;
  if (FListener != nullptr) FListener->ViewClosing(handle);
  std::erase_if(FViews, [&](const TOpenView& view) { return view.FHandle == handle; });
  plugin->CloseInstance(handle);
  return true;
}

void TOpenViews::CloseAll() {
  const bool wasClosing = std::exchange(FClosing, true);
  while (!FViews.empty()) Close(FViews.back().FHandle);
  FClosing = wasClosing;
}

const TOpenView* TOpenViews::Find(TViewHandle handle) const noexcept {
  const auto found = std::ranges::find(FViews, handle, &TOpenView::FHandle);
  return found == FViews.end() ? nullptr : &*found;
}

TViewHandle TOpenViews::FindHandle(const TFrame* frame) const noexcept {
  const auto found = std::ranges::find(FViews, frame, &TOpenView::FFrame);
  return found == FViews.end() ? 0 : found->FHandle;
}

TIBaseView* TOpenViews::FindPlugin(TViewHandle handle) const {
  const TOpenView* const view = Find(handle);
  return view == nullptr ? nullptr : FindClass(view->FClass);
}

std::string TOpenViews::GetGroup(TViewHandle handle) const {
  std::string group;
  if (TIBaseView* const plugin = FindPlugin(handle)) plugin->GetGroupID(handle, group);
  return group;
}

bool TOpenViews::SetGroup(TViewHandle handle, const std::string& group) {
  TIBaseView* const plugin = FindPlugin(handle);
  if (plugin == nullptr || !plugin->SetGroupID(handle, group)) return false;
  return true;
}

std::string TOpenViews::GetLayout(TViewHandle handle) const {
  TIBaseView* const plugin = FindPlugin(handle);
  return plugin == nullptr ? std::string() : plugin->GetLayoutData(handle);
}

bool TOpenViews::SetLayout(TViewHandle handle, const std::string& layout) {
  TIBaseView* const plugin = FindPlugin(handle);
  if (plugin == nullptr || !plugin->SetLayoutData(handle, layout)) return false;
  return true;
}

void TOpenViews::SetLanguage(std::int32_t index) {
  std::vector<TViewHandle> handles;
  for (const TOpenView& view : FViews) handles.push_back(view.FHandle);
  for (const TViewHandle handle : handles) {
    if (TIBaseView* const plugin = FindPlugin(handle)) plugin->SetLanguage(handle, index);
    UpdateCaption(handle);
  }
}

void TOpenViews::TakeNotice(const TFrame* frame, std::int32_t code) {
  const TViewHandle handle = FindHandle(frame);
  if (handle == 0 || (code != kViewAccountChanged && code != kViewLayoutChanged)) return;
  UpdateCaption(handle);
}

void TOpenViews::UpdateCaption(TViewHandle handle) {
  TIBaseView* const plugin = FindPlugin(handle);
  if (plugin == nullptr) return;
  std::string caption;
  if (!plugin->GetViewCaption(handle, caption) && !plugin->GetDefaultCaption(caption)) return;
  const auto view = std::ranges::find(FViews, handle, &TOpenView::FHandle);
  if (view == FViews.end()) return;
  view->FCaption = std::move(caption);
  if (FListener != nullptr) FListener->ViewCaptionChanged(handle);
}

}  // namespace margindesk
