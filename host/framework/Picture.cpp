#include "controls/Picture.h"

#include "host/framework/HostFunctions.h"

namespace margindesk {

bool TPicture::LoadFromFile(const std::string& fileName) {
  return THostFunctions::HasInstance() && THostFunctions::GetInstance().DecodePicture(fileName, FBitmap);
}

}  // namespace margindesk
