#include "host/framework/HostFunctions.h"

#include <cstddef>
#include <random>

#include "model/contract/Icommon.h"

namespace margindesk {

bool IsChinaConnectOn() {
  return THostFunctions::HasInstance() && THostFunctions::GetInstance().IsChinaConnectOn();
}

bool IsChinaConnectExchange(TCode exchange) {
  return THostFunctions::HasInstance() && THostFunctions::GetInstance().IsChinaConnectExchange(exchange);
}

TCode GetChinaConnectAccount(TCode account) {
  return THostFunctions::HasInstance() ? THostFunctions::GetInstance().GetChinaConnectAccount(account)
                                       : TCode();
}

bool OpenCustomView(void* sender, std::int32_t viewID, std::int32_t number, const TBaseData* data, bool flag1,
                    bool flag2) {
  return THostFunctions::HasInstance() &&
         THostFunctions::GetInstance().OpenCustomView(sender, viewID, number, data, flag1, flag2);
}

void SendViewNotify(TFrame* view, std::int32_t code) {
  if (THostFunctions::HasInstance()) THostFunctions::GetInstance().SendViewNotify(view, code);
}

std::string CreateNewGUID() {
  // x: a random digit, y: one of 8, 9, A and B. The digit 4 says that the rest is random.
  std::string guid = "{xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx}";
  std::random_device source;
  std::random_device::result_type bits = 0;
  std::size_t digitsLeft = 0;
  for (char& place : guid) {
    if (place != 'x' && place != 'y') continue;
    if (digitsLeft == 0) {
      bits = source();
      digitsLeft = 8;
    }
    const auto digit = place == 'y' ? 8 + bits % 4 : bits % 16;
    place = "0123456789ABCDEF"[digit];
    bits /= 16;
    --digitsLeft;
  }
  return guid;
}

}  // namespace margindesk
