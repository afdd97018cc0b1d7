#pragma once

#include <cstdint>
#include <vector>

#include "controls/Bitmap.h"
#include "controls/Control.h"

namespace margindesk {

// Pictures by index, for the buttons of a form.
class TImageList : public TControl {
 public:
  using TControl::TControl;

  std::int32_t Add(TBitmap image) {
    FImages.push_back(std::move(image));
    return GetCount() - 1;
  }
  std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FImages.size()); }
  // The picture at an index, or null out of range.
  const TBitmap* GetImage(std::int32_t index) const noexcept {
    if (index < 0 || index >= GetCount()) return nullptr;
    return &FImages[static_cast<std::size_t>(index)];
  }

 private:
  std::vector<TBitmap> FImages;
};

}  // namespace margindesk
