#pragma once

#include "host/services/HostData.h"
#include "model/contract/MarketAdapter.h"

namespace margindesk {

// The products of the host's data, which must outlive the adapter. The book holds no spread tables.
class TMarketAdapter final : public TCustomMarketAdapter {
 public:
  explicit TMarketAdapter(const THostData& data) : FData(data) {}

  const TCustomProduct* GetProduct(TCode symbol) const override { return FData.FindProduct(symbol); }
  const TCustomSpreadTable* GetSpreadTable(TCode /*marketCode*/) const override { return nullptr; }
  bool IsExchangeOpen(TCode exchange) const override {
    const TExchangeFacts* facts = FData.FindExchange(exchange);
    return facts != nullptr && facts->FOpen;
  }

 private:
  const THostData& FData;
};

}  // namespace margindesk
