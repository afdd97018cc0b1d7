#pragma once

#include "model/contract/OrderActionManager.h"

namespace margindesk {

// The order actions of a host without an order engine: none can be taken, and the user is told so.
class TOrderActionManager final : public TCustomOrderActionManager {
 public:
  bool CheckOrderAction(const TCustomClientOrder& order, std::int32_t action, bool showMessage) override;
  bool TakeOrderAction(const TClientOrderList* orders, TCustomClientOrder& order, std::int32_t action,
                       bool flag) override;
};

}  // namespace margindesk
