#include "host/services/OrderAdapter.h"

#include <string_view>

#include "host/services/ClientOrderRecord.h"
#include "model/contract/Constdef.h"
#include "model/contract/LanguageManager.h"

namespace margindesk {

namespace {

constexpr std::int32_t kStatusPending = 1;
constexpr std::int32_t kStatusCompleted = 3;
constexpr std::int32_t kSideBuy = 0;
constexpr std::int32_t kProductBond = 6;
constexpr std::int32_t kProductFund = 10;

std::string ResourceText(std::string_view key) {
  return TCustomLanguageManager::GetInstance().GetLanguageText(Const_ResourceStringTag, key);
}

}  // namespace

std::unique_ptr<TCustomClientOrder> TOrderAdapter::NewClientOrder() {
  return std::make_unique<TClientOrderRecord>();
}

std::string TOrderAdapter::GetStatusText(const TCustomClientOrder& order) const {
  const auto* record = dynamic_cast<const TClientOrderRecord*>(&order);
  if (record == nullptr) return {};
  if (record->GetStatus() == kStatusPending) return ResourceText("Res_Status_Pend");
  if (record->GetStatus() == kStatusCompleted) return ResourceText("Res_Status_Comp");
  return {};
}

std::string TOrderAdapter::GetSideText(const TCustomClientOrder& order, const void* /*extra*/) const {
  const auto* record = dynamic_cast<const TClientOrderRecord*>(&order);
  if (record == nullptr) return {};
  return ResourceText(record->GetSide() == kSideBuy ? "Res_Side_Buy" : "Res_Side_Sell");
}

std::string TOrderAdapter::GetRemarkText(const TCustomClientOrder& order) const {
  const auto* record = dynamic_cast<const TClientOrderRecord*>(&order);
  const TProductRecord* product = FData.FindProduct(order.GetSymbol());
  if (record == nullptr || product == nullptr || !product->GetFacts().FProduct.FOverTheCounter) return {};
  switch (product->GetFacts().FProduct.FProductType) {
    case kProductBond:
      return ResourceText("Res_OrderRemark_OTCBond");
    case kProductFund:
      return ResourceText(record->GetSide() == kSideBuy ? "Res_OrderRemark_Subscription"
                                                        : "Res_OrderRemark_Redemption");
    default:
      return {};
  }
}

}  // namespace margindesk
