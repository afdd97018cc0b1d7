#pragma once

#include <cstdint>

#include "model/contract/BaseOrderData.h"
#include "model/contract/Service.h"

namespace margindesk {

// Order actions (kAction... in Constdef.h); both calls return after the host has acted.
class TCustomOrderActionManager : public TService<TCustomOrderActionManager> {
 public:
  // Whether the order could be placed; with showMessage the host tells the user why not.
  virtual bool CheckOrderAction(const TCustomClientOrder& order, std::int32_t action, bool showMessage) = 0;
  // Takes the action with a list of orders (null for none) and the carrier order, into which the host writes
  // the identifier that it gave. False: nothing was done, and the host has told the user why. flag is true:
  // the caller waits for the answer.
  virtual bool TakeOrderAction(const TClientOrderList* orders, TCustomClientOrder& order, std::int32_t action,
                               bool flag) = 0;
};

extern template class TService<TCustomOrderActionManager>;

}  // namespace margindesk
