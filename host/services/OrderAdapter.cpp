#include "host/services/OrderAdapter.h"

#include "host/services/ClientOrderRecord.h"
#include "model/ResourceText.h"
#include "model/contract/Constdef.h"

namespace margindesk {

std::unique_ptr<TCustomClientOrder> TOrderAdapter::NewClientOrder() {
  return std::make_unique<TClientOrderRecord>();
}

std::string TOrderAdapter::GetStatusText(const TCustomClientOrder& order) const {
  const auto* record = dynamic_cast<const TClientOrderRecord*>(&order);
  if (record == nullptr) return {};
  if (record->GetStatus() == kStatusPending) return GetResourceText("Res_Status_Pend");
  if (record->GetStatus() == kStatusCompleted) return GetResourceText("Res_Status_Comp");
  return {};
}

std::string TOrderAdapter::GetSideText(const TCustomClientOrder& order, const void* /*extra*/) const {
  const auto* record = dynamic_cast<const TClientOrderRecord*>(&order);
  if (record == nullptr) return {};
  return GetResourceText(record->GetSide() == kSideBuy ? "Res_Side_Buy" : "Res_Side_Sell");
}

std::string TOrderAdapter::GetRemarkText(const TCustomClientOrder& order) const {
  const auto* record = dynamic_cast<const TClientOrderRecord*>(&order);
  const TProductRecord* product = FData.FindProduct(order.GetSymbol());
  if (record == nullptr || product == nullptr || !product->GetFacts().FProduct.FOverTheCounter) return {};
  switch (product->GetFacts().FProduct.FProductType) {
    case kProductTypeBond:
      return GetResourceText("Res_OrderRemark_OTCBond");
    case kProductTypeFund:
      return GetResourceText(record->GetSide() == kSideBuy ? "Res_OrderRemark_Subscription"
                                                           : "Res_OrderRemark_Redemption");
    default:
      return {};
  }
}

std::int32_t TOrderAdapter::GetOrderOptionCount(TCode exchange) const {
  return static_cast<std::int32_t>(FData.GetOrderOptions(exchange).size());
}

const std::string& TOrderAdapter::GetOrderOption(TCode exchange, std::int32_t index) const {
  const std::vector<std::string>& options = FData.GetOrderOptions(exchange);
  const auto place = static_cast<std::size_t>(index);  // far out of range for a negative index
  return place < options.size() ? options[place] : TCode().Text();
}

}  // namespace margindesk
