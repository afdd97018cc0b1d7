#pragma once

#include <cstdint>
#include <string>

#include "controls/Bitmap.h"

namespace margindesk {

// A picture that can be read from a file.
class TPicture {
 public:
  std::int32_t GetWidth() const noexcept { return FBitmap.FWidth; }  // pixels
  std::int32_t GetHeight() const noexcept { return FBitmap.FHeight; }
  const TBitmap& GetBitmap() const noexcept { return FBitmap; }
  void SetBitmap(TBitmap bitmap) { FBitmap = std::move(bitmap); }

  // Reads a picture file of a kind that the host can decode. False leaves the picture as it was.
  bool LoadFromFile(const std::string& fileName);

 private:
  TBitmap FBitmap;
};

}  // namespace margindesk
