#include "host/services/PictureFile.h"

#include <memory>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_ONLY_BMP
#define STBI_ONLY_GIF
#define STBI_MAX_DIMENSIONS 4096
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wall"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#include <stb/stb_image.h>
#pragma GCC diagnostic pop

namespace margindesk {

bool DecodePictureFile(const std::string& fileName, TBitmap& bitmap) {
  int width = 0;
  int height = 0;
  int channels = 0;
  constexpr int kChannels = 4;
  const std::unique_ptr<stbi_uc, void (*)(void*)> pixels(
      stbi_load(fileName.c_str(), &width, &height, &channels, kChannels), &stbi_image_free);
  if (pixels == nullptr) return false;
  const auto size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * kChannels;
  bitmap = {width, height, {pixels.get(), pixels.get() + size}};
  return true;
}

}  // namespace margindesk
