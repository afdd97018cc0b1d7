#pragma once

#include "host/services/HostData.h"
#include "model/contract/OrderAdapter.h"

namespace margindesk {

// Client orders and their texts, and the order options of the host's data, which must outlive the adapter.
class TOrderAdapter final : public TCustomOrderAdapter {
 public:
  explicit TOrderAdapter(const THostData& data) : FData(data) {}

  std::unique_ptr<TCustomClientOrder> NewClientOrder() override;
  std::string GetStatusText(const TCustomClientOrder& order) const override;
  std::string GetSideText(const TCustomClientOrder& order, const void* extra = nullptr) const override;
  // What is special about the order: a fund subscription or redemption, a bond over the counter. "" for the
  // rest.
  std::string GetRemarkText(const TCustomClientOrder& order) const override;
  std::int32_t GetOrderOptionCount(TCode exchange) const override;
  const std::string& GetOrderOption(TCode exchange, std::int32_t index) const override;

 private:
  const THostData& FData;
};

}  // namespace margindesk
