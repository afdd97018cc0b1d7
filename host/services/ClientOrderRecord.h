#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "model/contract/BaseOrderData.h"

namespace margindesk {

// A client order. What the contract only sets, the host reads here.
class TClientOrderRecord final : public TCustomClientOrder {
 public:
  TCode GetAccount() const override { return FFields.FAccount; }
  TCode GetSymbol() const override { return FFields.FSymbol; }
  double GetQuantity() const override { return FFields.FQuantity; }
  double GetPrice() const override { return FFields.FPrice; }
  void SetAccount(TCode account) override { FFields.FAccount = account; }
  void SetSymbol(TCode symbol) override { FFields.FSymbol = symbol; }
  void SetQuantity(double quantity) override { FFields.FQuantity = quantity; }
  void SetPrice(double price) override { FFields.FPrice = price; }
  void SetStatus(std::int32_t status) override { FFields.FStatus = status; }
  void SetSide(std::int32_t side) override { FFields.FSide = side; }
  void SetPrincipal(std::int32_t principal) override { FFields.FPrincipal = principal; }
  void SetOpenClose(std::int32_t openClose) override { FFields.FOpenClose = openClose; }
  void Reset() override { FFields = TFields(); }
  // Of an order that is not the host's own, the fields that the contract lets it read.
  void Assign(const TCustomClientOrder& other) override;
  void SetExtraField(std::string_view name, std::string_view value) override;  // an empty value takes it out
  void SetSimulationKey(std::string_view key) override { FFields.FSimulationKey = key; }
  const std::string& GetOrderID() const override { return FFields.FOrderID; }

  std::int32_t GetStatus() const noexcept { return FFields.FStatus; }
  std::int32_t GetSide() const noexcept { return FFields.FSide; }
  std::int32_t GetPrincipal() const noexcept { return FFields.FPrincipal; }
  std::int32_t GetOpenClose() const noexcept { return FFields.FOpenClose; }
  const std::string& GetExtraField(std::string_view name) const;  // "" when it is not set
  const std::string& GetSimulationKey() const noexcept { return FFields.FSimulationKey; }
  void SetOrderID(std::string id) { FFields.FOrderID = std::move(id); }

 private:
  struct TFields {
    TCode FAccount;
    TCode FSymbol;
    double FQuantity = 0;
    double FPrice = 0;
    std::int32_t FStatus = 0;
    std::int32_t FSide = 0;
    std::int32_t FPrincipal = 0;
    std::int32_t FOpenClose = 0;
    std::map<std::string, std::string, std::less<>> FExtraFields;
    std::string FSimulationKey;
    std::string FOrderID;
  };

  TFields FFields;
};

}  // namespace margindesk
