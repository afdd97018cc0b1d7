#pragma once

#include <QImage>
#include <QPixmap>

#include "controls/Bitmap.h"

namespace margindesk {

inline QPixmap MakePixmap(const TBitmap& bitmap) {
  if (bitmap.IsEmpty()) return {};
  const QImage image(bitmap.FPixels.data(), bitmap.FWidth, bitmap.FHeight, bitmap.FWidth * 4,
                     QImage::Format_RGBA8888);
  return QPixmap::fromImage(image);
}

}  // namespace margindesk
