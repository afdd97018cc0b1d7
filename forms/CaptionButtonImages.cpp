#include "forms/CaptionButtonImages.h"

#include <array>
#include <string_view>

namespace margindesk {

namespace {

constexpr std::int32_t kSide = 16;  // pixels

using TDrawing = std::array<std::string_view, kSide>;

// '#' is drawn, '+' drawn half; everything else is see-through. In the order of TCaptionButtonImage.
constexpr TDrawing kDrawings[] = {
    // the input strip is shown: fold it up
    {"                ", "                ", "       ##       ", "      ####      ", "     ##  ##     ",
     "    ##    ##    ", "   ##      ##   ", "  ##        ##  ", "       ##       ", "      ####      ",
     "     ##  ##     ", "    ##    ##    ", "   ##      ##   ", "  ##        ##  ", "                ",
     "                "},
    // the input strip is hidden: fold it out
    {"                ", "                ", "  ##        ##  ", "   ##      ##   ", "    ##    ##    ",
     "     ##  ##     ", "      ####      ", "       ##       ", "  ##        ##  ", "   ##      ##   ",
     "    ##    ##    ", "     ##  ##     ", "      ####      ", "       ##       ", "                ",
     "                "},
    // account details
    {"                ", "    ++####++    ", "   +########+   ", "  +####  ####+  ", " +#####  #####+ ",
     " +############+ ", " #####    ##### ", " ######   ##### ", " ######   ##### ", " ######   ##### ",
     " +#####   ####+ ", " +###      ###+ ", "  +##########+  ", "   +########+   ", "    ++####++    ",
     "                "},
    // an input that cannot be used
    {"                ", "    ++####++    ", "   +########+   ", "  +####  ####+  ", " +#####  #####+ ",
     " +#####  #####+ ", " ######  ###### ", " ######  ###### ", " ######  ###### ", " ############## ",
     " +############+ ", " +#####  #####+ ", "  +####  ####+  ", "   +########+   ", "    ++####++    ",
     "                "},
    // save the columns as the template
    {"                ", " #############  ", " ##       #####  ", " ##       ###### ", " ##       ###### ",
     " ##       ###### ", " ############### ", " ############### ", " ##          ## ", " ##          ## ",
     " ##  ######  ## ", " ##          ## ", " ##  ######  ## ", " ##          ## ", " ############## ",
     "                "},
};

constexpr std::array<std::uint8_t, 3> kInk = {0x44, 0x50, 0x5C};

std::uint8_t GetOpacity(char mark) { return mark == '#' ? 0xFF : mark == '+' ? 0x80 : 0; }

TBitmap Draw(const TDrawing& drawing) {
  TBitmap bitmap{kSide, kSide, {}};
  bitmap.FPixels.reserve(static_cast<std::size_t>(kSide) * kSide * 4);
  for (const std::string_view row : drawing) {
    for (std::size_t x = 0; x < kSide; ++x) {
      bitmap.FPixels.insert(bitmap.FPixels.end(), kInk.begin(), kInk.end());
      bitmap.FPixels.push_back(x < row.size() ? GetOpacity(row[x]) : std::uint8_t{0});
    }
  }
  return bitmap;
}

}  // namespace

void AddCaptionButtonImages(TImageList& images) {
  for (const TDrawing& drawing : kDrawings) images.Add(Draw(drawing));
}

}  // namespace margindesk
