#pragma once

#include "controls/Bitmap.h"
#include "controls/Control.h"

namespace margindesk {

// A picture on a form.
class TImage : public TControl {
 public:
  using TControl::TControl;

  const TBitmap& GetPicture() const noexcept { return FPicture; }
  void SetPicture(TBitmap picture) {
    FPicture = std::move(picture);
    Updated();
  }
  bool GetStretch() const noexcept { return FStretch; }  // to the control's size
  void SetStretch(bool stretch) { Assign(FStretch, stretch); }

 private:
  TBitmap FPicture;
  bool FStretch = false;
};

}  // namespace margindesk
