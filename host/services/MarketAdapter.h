#pragma once

#include "host/services/HostData.h"
#include "model/contract/MarketAdapter.h"

namespace margindesk {

// The products and spread tables of the host's data, which must outlive the adapter. Everything is loaded.
class TMarketAdapter final : public TCustomMarketAdapter {
 public:
  explicit TMarketAdapter(const THostData& data) : FData(data) {}

  const TCustomProduct* GetProduct(TCode symbol) const override { return FData.FindProduct(symbol); }
  const TCustomSpreadTable* GetSpreadTable(TCode marketCode) const override {
    return FData.FindSpreadTable(marketCode);
  }
  bool IsExchangeOpen(TCode exchange) const override {
    const TExchangeFacts* facts = FData.FindExchange(exchange);
    return facts != nullptr && facts->FOpen;
  }

 private:
  const THostData& FData;
};

}  // namespace margindesk
