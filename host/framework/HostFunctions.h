#pragma once

#include <cstdint>
#include <string>

#include "model/contract/Baseview.h"
#include "model/contract/Code.h"
#include "model/contract/Service.h"

namespace margindesk {

// What stands behind the free functions of Icommon.h and Baseview.h and behind TPicture. The host installs
// its object; while none is installed the functions answer false and the empty code, and a view notification
// goes nowhere.
class THostFunctions : public TService<THostFunctions> {
 public:
  virtual bool IsChinaConnectOn() const = 0;
  virtual bool IsChinaConnectExchange(TCode exchange) const = 0;
  virtual TCode GetChinaConnectAccount(TCode account) const = 0;
  virtual bool OpenCustomView(void* sender, std::int32_t viewID, std::int32_t number, const TBaseData* data,
                              bool flag1, bool flag2) = 0;
  virtual void SendViewNotify(TFrame* view, std::int32_t code) = 0;
  // Reads a picture file. False leaves the bitmap as it was: no such file, or no picture that the host knows.
  virtual bool DecodePicture(const std::string& fileName, TBitmap& bitmap) = 0;
};

extern template class TService<THostFunctions>;

}  // namespace margindesk
