#include "host/engine/OrderActionManager.h"

#include <string>

#include "model/contract/Constdef.h"
#include "model/contract/MessageBoxCtrl.h"

namespace margindesk {

namespace {

bool Accept(const std::string& refusal, bool showMessage) {
  if (!refusal.empty() && showMessage) TCustomMessageBoxCtrl::GetInstance().ShowMessage(refusal);
  return refusal.empty();
}

}  // namespace

bool TOrderActionManager::CheckOrderAction(const TCustomClientOrder& order, std::int32_t action,
                                           bool showMessage) {
  return Accept(FEngine.Check(order, action), showMessage);
}

bool TOrderActionManager::TakeOrderAction(const TClientOrderList* orders, TCustomClientOrder& order,
                                          std::int32_t action, bool /*flag*/) {
  return Accept(action == kActionSimulate ? FEngine.Simulate(orders, order) : FEngine.Place(order, action),
                true);
}

}  // namespace margindesk
