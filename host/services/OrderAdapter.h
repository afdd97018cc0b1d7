#pragma once

#include "host/services/HostData.h"
#include "model/contract/OrderAdapter.h"

namespace margindesk {

// Client orders and their texts. The book holds no order options, so no exchange has any.
class TOrderAdapter final : public TCustomOrderAdapter {
 public:
  explicit TOrderAdapter(const THostData& data) : FData(data) {}

  std::unique_ptr<TCustomClientOrder> NewClientOrder() override;
  std::string GetStatusText(const TCustomClientOrder& order) const override;
  std::string GetSideText(const TCustomClientOrder& order, const void* extra = nullptr) const override;
  // What is special about the order: a fund subscription or redemption, a bond over the counter. "" for the
  // rest.
  std::string GetRemarkText(const TCustomClientOrder& order) const override;
  std::int32_t GetOrderOptionCount(TCode /*exchange*/) const override { return 0; }
  const std::string& GetOrderOption(TCode /*exchange*/, std::int32_t /*index*/) const override {
    return TCode().Text();
  }

 private:
  const THostData& FData;
};

}  // namespace margindesk
