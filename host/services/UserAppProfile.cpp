#include "host/services/UserAppProfile.h"

#include <string>
#include <utility>

#include "model/contract/ConfigManager.h"

namespace margindesk {

namespace {

std::string ReadUserKey(std::string_view key) {
  const TCustomConfigManager& config = TCustomConfigManager::GetInstance();
  return config.ReadString(config.GetUserSection(), key);
}

}  // namespace

TUserAppProfile::TUserAppProfile(TPeriodExchanges periodExchanges)
    : FPeriodExchanges(std::move(periodExchanges)) {}

bool TUserAppProfile::IsFunctionEnabled(std::string_view functionName) const {
  return ReadUserKey(std::string("Function_").append(functionName)) != "N";
}

TCode TUserAppProfile::GetDefaultAccount() const { return TCode(ReadUserKey("DefaultAccount")); }

std::int32_t TUserAppProfile::GetUserType() const {
  const TCustomConfigManager& config = TCustomConfigManager::GetInstance();
  return config.ReadInteger(config.GetUserSection(), "UserType");
}

bool TUserAppProfile::GetUserTypeFlag() const {
  const TCustomConfigManager& config = TCustomConfigManager::GetInstance();
  return config.ReadBool(config.GetUserSection(), "UserTypeFlag");
}

bool TUserAppProfile::GetPeriodExchangeList(std::vector<TCode>& exchanges) const {
  exchanges.clear();
  if (!FPeriodExchanges) return false;
  exchanges = FPeriodExchanges();
  return true;
}

}  // namespace margindesk
