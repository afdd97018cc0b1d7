#pragma once

#include <cstdint>

#include "model/contract/Code.h"
#include "model/contract/Handlers.h"
#include "model/contract/Service.h"

namespace margindesk {

// The host's currencies and their ratios. The handlers are called with data null.
class TCustomCurrencyAdapter : public TService<TCustomCurrencyAdapter> {
 public:
  virtual void AddMultiCurrencyInfoHandler(THandler handler,
                                           const void* owner) = 0;  // multi-currency mode changed
  virtual void RemoveMultiCurrencyInfoHandler(const void* owner) = 0;
  virtual void AddCurrencyListHandler(THandler handler,
                                      const void* owner) = 0;  // the list of currencies changed
  virtual void RemoveCurrencyListHandler(const void* owner) = 0;
  virtual TCode GetBaseCurrency() const = 0;
  virtual bool IsMultiCurrency() const = 0;
  virtual std::int32_t GetCurrencyCount() const = 0;
  virtual TCode GetCurrencyCode(std::int32_t index) const = 0;  // empty out of range
  // The factor that brings an amount of the currency into the base currency; 1 for the empty currency, 0 when
  // unknown.
  virtual double GetCurrencyRatio(TCode currency) const = 0;
  virtual bool IsCurrencyExcluded(TCode currency) const = 0;  // left out of every total
  // Ratios changed; the base data controls listen to it.
  virtual void AddCurrencyRatioHandler(THandler handler, const void* owner) = 0;
  virtual void RemoveCurrencyRatioHandler(const void* owner) = 0;
};

extern template class TService<TCustomCurrencyAdapter>;

}  // namespace margindesk
