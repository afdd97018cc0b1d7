#pragma once

#include "controls/ImageList.h"

namespace margindesk {

// Adds the five pictures of TCaptionButtonImage, in its order, 16 by 16 pixels.
void AddCaptionButtonImages(TImageList& images);

}  // namespace margindesk
