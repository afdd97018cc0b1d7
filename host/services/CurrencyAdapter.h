#pragma once

#include <cstddef>

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

  std::size_t CountRegistrations() const noexcept;
  std::size_t CountRegistrationsOf(const void* owner) const noexcept;

 private:
  const THostData& FData;
  THandlerList FMultiCurrencyHandlers;
  THandlerList FListHandlers;
  THandlerList FRatioHandlers;
};

}  // namespace margindesk
