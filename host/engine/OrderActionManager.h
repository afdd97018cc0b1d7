#pragma once

#include "host/engine/OrderEngine.h"
#include "model/contract/OrderActionManager.h"

namespace margindesk {

// The order actions, taken by an engine, which must outlive the manager. The user is told of every refusal.
class TOrderActionManager final : public TCustomOrderActionManager {
 public:
  explicit TOrderActionManager(TOrderEngine& engine) : FEngine(engine) {}

  bool CheckOrderAction(const TCustomClientOrder& order, std::int32_t action, bool showMessage) override;
  bool TakeOrderAction(const TClientOrderList* orders, TCustomClientOrder& order, std::int32_t action,
                       bool flag) override;

 private:
  TOrderEngine& FEngine;
};

}  // namespace margindesk
