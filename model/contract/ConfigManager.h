#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/contract/Handlers.h"
#include "model/contract/Service.h"

namespace margindesk {

// The configuration store: text values by section and key; letter case counts in both. An empty value means
// not set.
class TCustomConfigManager : public TService<TCustomConfigManager> {
 public:
  // The handler is called after any change of the configuration that was written with notify; sender and data
  // null.
  virtual void AddConfigUpdateHandler(THandler handler, const void* owner) = 0;
  virtual void RemoveConfigUpdateHandler(const void* owner) = 0;

  virtual std::string ReadString(std::string_view section, std::string_view key) const = 0;  // "" when absent
  virtual std::int32_t ReadInteger(std::string_view section,
                                   std::string_view key) const = 0;  // 0 when no integer
  // "Y" or "y" is true, "N" or "n" false; what anything else and an absent key give is the host's.
  virtual bool ReadBool(std::string_view section, std::string_view key) const = 0;
  virtual std::string GetUserSection() const = 0;  // the signed-in user's section
  virtual void WriteString(std::string_view section, std::string_view key, std::string_view value,
                           bool notify) = 0;
  virtual bool CanApplyLayout() const = 0;  // whether a stored grid column layout may be applied now
};

extern template class TService<TCustomConfigManager>;

}  // namespace margindesk
