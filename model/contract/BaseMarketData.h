#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "model/contract/BaseData.h"
#include "model/contract/Code.h"

namespace margindesk {

// Market data of one symbol that a list or a panel hands over as the user's choice.
class TCustomMarketData : public TBaseData {
 public:
  virtual TCode GetSymbol() const = 0;
};

// A subscription item: the numbered fields of one symbol. Reads are in slot order.
class TCustomSubItem : public TBaseData {
 public:
  virtual double GetFieldFloat(std::int32_t field) const = 0;             // 0 when the field is absent
  virtual const std::string& GetFieldText(std::int32_t field) const = 0;  // "" when the field is absent
  virtual bool HasField(std::int32_t field) const = 0;
  virtual std::int32_t GetStatus()
      const = 0;  // 1 ready, 0 nothing known yet, other values known but not current
  virtual TCode GetSymbolCode() const = 0;

  // The text of a field as a code, for the fields that are compared on the repaint path (20 exchange, 23
  // currency); an empty code when the field is absent.
  virtual TCode GetFieldCode(std::int32_t field) const = 0;
};

using TSubItemMap = std::map<TCode, TCustomSubItem*, TCodeTextLess>;

// A product of the market. The texts are empty when the market does not know the fact.
class TCustomProduct : public TBaseData {
 public:
  virtual TCode GetExchange() const = 0;
  virtual TCode GetCurrency() const = 0;
  virtual const std::string& GetLotSize() const = 0;      // units a lot, as text
  virtual const std::string& GetProductType() const = 0;  // the product type code as text: 6 bond, 10 fund
  virtual TCode GetMarketCode() const = 0;                // names the spread table
};

// A band of a spread table: the tick of the prices between its limits.
struct TSpreadBand {
  double FTick = 0;
  double FUpperLimit = 0;
  double FLowerLimit = 0;
};

// The spread (tick) table of a market. Prices are real prices in the product's currency.
class TCustomSpreadTable : public TBaseData {
 public:
  virtual std::int32_t GetKind() const = 0;  // 1: bands of ticks; other kinds offer no look-up
  // The band of a price, taken upward or downward where the price is a band's limit. False: no band holds the
  // price.
  virtual bool LookUpUpward(double price, TSpreadBand& band) const = 0;
  virtual bool LookUpDownward(double price, TSpreadBand& band) const = 0;
  // The price one tick above or below; the price itself where no band holds it.
  virtual double StepUp(double price) const = 0;
  virtual double StepDown(double price) const = 0;
};

}  // namespace margindesk
