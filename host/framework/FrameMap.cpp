#include "host/framework/FrameMap.h"

#include <atomic>
#include <utility>

namespace margindesk {

TViewHandle AddFrame(TFrameMap& frames, std::unique_ptr<TFrame> frame) {
  static std::atomic<TViewHandle> lastHandle = 0;
  if (frame == nullptr) return 0;
  const TViewHandle handle = ++lastHandle;
  frames.emplace(handle, std::move(frame));
  return handle;
}

TFrame* FindFrameOf(const TFrameMap& frames, TViewHandle handle) noexcept {
  const auto found = frames.find(handle);
  return found == frames.end() ? nullptr : found->second.get();
}

TViewHandle FindHandleOf(const TFrameMap& frames, const TFrame* frame) noexcept {
  for (const auto& [handle, known] : frames) {
    if (known.get() == frame) return handle;
  }
  return 0;
}

void CloseFrame(TFrameMap& frames, TViewHandle handle) { frames.extract(handle); }

void CloseAllFrames(TFrameMap& frames) {
  while (!frames.empty()) frames.extract(std::prev(frames.end()));
}

}  // namespace margindesk
