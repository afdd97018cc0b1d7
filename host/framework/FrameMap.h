#pragma once

#include <map>
#include <memory>

#include "controls/Frame.h"
#include "model/contract/Baseview.h"

namespace margindesk {

// Handles rise for as long as the process runs, so a map of frames is in the order of opening.
using TFrameMap = std::map<TViewHandle, std::unique_ptr<TFrame>>;

TViewHandle AddFrame(TFrameMap& frames, std::unique_ptr<TFrame> frame);  // 0 for no frame
TFrame* FindFrameOf(const TFrameMap& frames, TViewHandle handle) noexcept;
TViewHandle FindHandleOf(const TFrameMap& frames, const TFrame* frame) noexcept;  // 0 when unknown

// Frees a frame that is out of the map already: whatever it does as it goes, its handle is unknown.
void CloseFrame(TFrameMap& frames, TViewHandle handle);
void CloseAllFrames(TFrameMap& frames);  // the last opened first

}  // namespace margindesk
