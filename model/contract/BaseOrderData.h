#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/contract/BaseData.h"
#include "model/contract/Code.h"

namespace margindesk {

// An order as a client fills it in. The order adapter makes it; whoever asked owns it.
class TCustomClientOrder : public TBaseData {
 public:
  virtual TCode GetAccount() const = 0;
  virtual TCode GetSymbol() const = 0;
  virtual double GetQuantity() const = 0;  // units
  virtual double GetPrice() const = 0;     // real price, in the product's currency
  virtual void SetAccount(TCode account) = 0;
  virtual void SetSymbol(TCode symbol) = 0;
  virtual void SetQuantity(double quantity) = 0;
  virtual void SetPrice(double price) = 0;
  virtual void SetStatus(std::int32_t status) = 0;           // 0 not given, 1 pending, 3 completed
  virtual void SetSide(std::int32_t side) = 0;               // 0 buy, 1 sell
  virtual void SetPrincipal(std::int32_t principal) = 0;     // 0 not applicable, 11 client, 12 house, 13 RT
  virtual void SetOpenClose(std::int32_t openClose) = 0;     // 0 not applicable, 1 open, 2 close
  virtual void Reset() = 0;                                  // as newly made
  virtual void Assign(const TCustomClientOrder& other) = 0;  // a deep copy of every field
  // A field without a setter of its own ("AllCheckFlag": "Y" sends the order without asking again).
  virtual void SetExtraField(std::string_view name, std::string_view value) = 0;
  virtual void SetSimulationKey(std::string_view key) = 0;
  // What the host gave the order: its order number, or the key of the simulation it carried. Empty before.
  virtual const std::string& GetOrderID() const = 0;
};

using TClientOrderList = std::vector<std::unique_ptr<TCustomClientOrder>>;

}  // namespace margindesk
