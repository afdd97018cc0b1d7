#include "host/services/CurrencyAdapter.h"

namespace margindesk {

void TCurrencyAdapter::AddMultiCurrencyInfoHandler(THandler handler, const void* owner) {
  FMultiCurrencyHandlers.Add(handler, owner);
}

void TCurrencyAdapter::RemoveMultiCurrencyInfoHandler(const void* owner) {
  FMultiCurrencyHandlers.RemoveOwner(owner);
}

void TCurrencyAdapter::AddCurrencyListHandler(THandler handler, const void* owner) {
  FListHandlers.Add(handler, owner);
}

void TCurrencyAdapter::RemoveCurrencyListHandler(const void* owner) { FListHandlers.RemoveOwner(owner); }

std::int32_t TCurrencyAdapter::GetCurrencyCount() const {
  return static_cast<std::int32_t>(FData.GetCurrencies().size());
}

TCode TCurrencyAdapter::GetCurrencyCode(std::int32_t index) const {
  if (index < 0 || index >= GetCurrencyCount()) return {};
  return FData.GetCurrencies()[static_cast<std::size_t>(index)];
}

void TCurrencyAdapter::AddCurrencyRatioHandler(THandler handler, const void* owner) {
  FRatioHandlers.Add(handler, owner);
}

void TCurrencyAdapter::RemoveCurrencyRatioHandler(const void* owner) { FRatioHandlers.RemoveOwner(owner); }

void TCurrencyAdapter::Publish(const THostChanges& changes) {
  if (changes.FMultiCurrency) FMultiCurrencyHandlers.Notify(this, nullptr);
  if (changes.FCurrencyList) FListHandlers.Notify(this, nullptr);
  if (changes.FCurrencyRatio) FRatioHandlers.Notify(this, nullptr);
}

}  // namespace margindesk
