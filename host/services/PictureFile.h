#pragma once

#include <string>

#include "controls/Bitmap.h"

namespace margindesk {

// Reads a PNG, JPEG, BMP or GIF file (of a GIF the first picture), at most 4096 pixels a side. False leaves
// the bitmap as it was.
bool DecodePictureFile(const std::string& fileName, TBitmap& bitmap);

}  // namespace margindesk
