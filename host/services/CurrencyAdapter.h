#pragma once

#include "host/services/HostData.h"
#include "model/contract/CurrencyAdapter.h"

namespace margindesk {

// The currencies of the host's data, which must outlive the adapter.
class TCurrencyAdapter final : public TCustomCurrencyAdapter {
 public:
  explicit TCurrencyAdapter(const THostData& data) : FData(data) {}

  void AddMultiCurrencyInfoHandler(THandler handler, const void* owner) override;
  void RemoveMultiCurrencyInfoHandler(const void* owner) override;
  void AddCurrencyListHandler(THandler handler, const void* owner) override;
  void RemoveCurrencyListHandler(const void* owner) override;
  TCode GetBaseCurrency() const override { return FData.GetBaseCurrency(); }
  bool IsMultiCurrency() const override { return FData.IsMultiCurrency(); }
  std::int32_t GetCurrencyCount() const override;
  TCode GetCurrencyCode(std::int32_t index) const override;
  double GetCurrencyRatio(TCode currency) const override { return FData.GetRatio(currency); }
  bool IsCurrencyExcluded(TCode currency) const override { return FData.IsExcluded(currency); }
  void AddCurrencyRatioHandler(THandler handler, const void* owner) override;
  void RemoveCurrencyRatioHandler(const void* owner) override;

  // Calls the handlers that the changes concern.
  void Publish(const THostChanges& changes);

  // Calls visit(kind, key, list) for every list of registrations.
  template <class TVisit>
  void VisitHandlers(TVisit&& visit) const {
    visit("multi_currency", "", FMultiCurrencyHandlers);
    visit("currency_list", "", FListHandlers);
    visit("currency_ratios", "", FRatioHandlers);
  }

 private:
  const THostData& FData;
  THandlerList FMultiCurrencyHandlers;
  THandlerList FListHandlers;
  THandlerList FRatioHandlers;
};

}  // namespace margindesk
