#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/contract/Code.h"
#include "model/contract/Service.h"

namespace margindesk {

// The signed-in user.
class TCustomUserAppProfile : public TService<TCustomUserAppProfile> {
 public:
  virtual bool IsFunctionEnabled(
      std::string_view functionName) const = 0;  // "MarginSim", "OEOpenC", "OEPrin"
  virtual TCode GetDefaultAccount() const = 0;
  virtual std::int32_t GetUserType() const = 0;  // 2: a client who sees accounts of his own
  virtual bool GetUserTypeFlag() const = 0;      // such a client may choose among several accounts
  // Replaces the list by the exchanges whose trading periods are shown. False, and an empty list: there are
  // none.
  virtual bool GetPeriodExchangeList(std::vector<TCode>& exchanges) const = 0;
};

extern template class TService<TCustomUserAppProfile>;

}  // namespace margindesk
