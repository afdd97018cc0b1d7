#include "host/services/ClientOrderRecord.h"

namespace margindesk {

void TClientOrderRecord::Assign(const TCustomClientOrder& other) {
  if (const auto* own = dynamic_cast<const TClientOrderRecord*>(&other)) {
    FFields = own->FFields;
    return;
  }
  Reset();
  FFields.FAccount = other.GetAccount();
  FFields.FSymbol = other.GetSymbol();
  FFields.FQuantity = other.GetQuantity();
  FFields.FPrice = other.GetPrice();
  FFields.FOrderID = other.GetOrderID();
}

void TClientOrderRecord::SetExtraField(std::string_view name, std::string_view value) {
  if (value.empty()) {
    const auto found = FFields.FExtraFields.find(name);
    if (found != FFields.FExtraFields.end()) FFields.FExtraFields.erase(found);
  } else {
    FFields.FExtraFields.insert_or_assign(std::string(name), std::string(value));
  }
}

const std::string& TClientOrderRecord::GetExtraField(std::string_view name) const {
  const auto found = FFields.FExtraFields.find(name);
  return found == FFields.FExtraFields.end() ? TCode().Text() : found->second;
}

}  // namespace margindesk
