#include "host/services/OrderActionManager.h"

#include "model/contract/Constdef.h"
#include "model/contract/LanguageManager.h"
#include "model/contract/MessageBoxCtrl.h"

namespace margindesk {

namespace {

void TellRefusal() {
  TCustomMessageBoxCtrl::GetInstance().ShowMessage(
      TCustomLanguageManager::GetInstance().GetLanguageText(Const_ResourceStringTag, "Res_OrdersNotTaken"));
}

}  // namespace

bool TOrderActionManager::CheckOrderAction(const TCustomClientOrder& /*order*/, std::int32_t /*action*/,
                                           bool showMessage) {
  if (showMessage) TellRefusal();
  return false;
}

bool TOrderActionManager::TakeOrderAction(const TClientOrderList* /*orders*/, TCustomClientOrder& /*order*/,
                                          std::int32_t /*action*/, bool /*flag*/) {
  TellRefusal();
  return false;
}

}  // namespace margindesk
