#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "model/contract/BaseOrderData.h"
#include "model/contract/Service.h"

namespace margindesk {

// Client orders, their texts in the current language, and the order options of the exchanges.
class TCustomOrderAdapter : public TService<TCustomOrderAdapter> {
 public:
  virtual std::unique_ptr<TCustomClientOrder> NewClientOrder() = 0;  // blank
  virtual std::string GetStatusText(const TCustomClientOrder& order) const = 0;
  virtual std::string GetSideText(const TCustomClientOrder& order, const void* extra = nullptr) const = 0;
  virtual std::string GetRemarkText(const TCustomClientOrder& order) const = 0;
  virtual std::int32_t GetOrderOptionCount(TCode exchange) const = 0;  // 0 for an unknown exchange
  virtual const std::string& GetOrderOption(TCode exchange, std::int32_t index) const = 0;  // "" out of range
};

extern template class TService<TCustomOrderAdapter>;

}  // namespace margindesk
