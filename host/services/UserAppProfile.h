#pragma once

#include <functional>
#include <vector>

#include "model/contract/UserAppProfile.h"

namespace margindesk {

// The signed-in user, as the user section of the configuration describes them: keys "Function_" and the
// function's name ("N" takes the function away, anything else and nothing leave it), "DefaultAccount",
// "UserType" (an integer) and "UserTypeFlag" ("Y" or "N"). They are read at each call.
class TUserAppProfile : public TCustomUserAppProfile {
 public:
  // The exchanges with a trading period, in the order of their rows.
  using TPeriodExchanges = std::function<std::vector<TCode>()>;

  explicit TUserAppProfile(TPeriodExchanges periodExchanges = {});

  bool IsFunctionEnabled(std::string_view functionName) const override;
  TCode GetDefaultAccount() const override;
  std::int32_t GetUserType() const override;
  bool GetUserTypeFlag() const override;
  // Replaces what the list held. False, and an empty list, without a provider.
  bool GetPeriodExchangeList(std::vector<TCode>& exchanges) const override;

 private:
  const TPeriodExchanges FPeriodExchanges;
};

}  // namespace margindesk
