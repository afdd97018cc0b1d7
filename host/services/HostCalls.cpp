#include "host/services/HostCalls.h"

#include "host/services/PictureFile.h"

namespace margindesk {

bool THostCalls::IsChinaConnectExchange(TCode exchange) const {
  const TExchangeFacts* facts = FData.FindExchange(exchange);
  return facts != nullptr && facts->FChinaConnect;
}

TCode THostCalls::GetChinaConnectAccount(TCode account) const {
  const TAccountRecord* record = FData.FindAccount(account);
  return record == nullptr ? TCode() : record->FFacts.FChinaConnectAccount;
}

bool THostCalls::OpenCustomView(void* sender, std::int32_t viewID, std::int32_t number, const TBaseData* data,
                                bool flag1, bool flag2) {
  return FOpener && FOpener(sender, viewID, number, data, flag1, flag2);
}

void THostCalls::SendViewNotify(TFrame* view, std::int32_t code) {
  if (FSink) FSink(view, code);
}

bool THostCalls::DecodePicture(const std::string& fileName, TBitmap& bitmap) {
  return DecodePictureFile(fileName, bitmap);
}

}  // namespace margindesk
