#include "host/services/AccountRecord.h"

#include <algorithm>

#include "model/AccountInfoConstDef.h"

namespace margindesk {

namespace {

template <class TMap>
const std::string& TextUnder(const TMap& texts, std::string_view key) {
  const auto found = texts.find(key);
  return found == texts.end() ? TCode().Text() : found->second;
}

}  // namespace

const TAccountDataRecord* TAccountDataList::Find(TCode currency) const noexcept {
  for (const auto& record : FRecords) {
    if (record->GetFacts().FCurrency == currency) return record.get();
  }
  return nullptr;
}

void TAccountDataList::Set(const TFigureFacts& facts) {
  for (const auto& record : FRecords) {
    if (record->GetFacts().FCurrency == facts.FCurrency) return record->SetFacts(facts);
  }
  FRecords.push_back(std::make_unique<TAccountDataRecord>(facts, FAccount));
  if (!facts.FCurrency.IsEmpty()) FCurrencies.push_back(facts.FCurrency);
}

void TAccountDataList::Clear() {
  FCurrencies.clear();
  FRecords.clear();
}

const std::string& TAccountRecord::GetAttributeValue(std::string_view name) const {
  return TextUnder(FFacts.FAttributes, name);
}

const std::string& TAccountRecord::GetCustomValue(std::string_view key) const {
  return TextUnder(FFacts.FCustomValues, key);
}

double TAccountRecord::GetCustomBalance(TCode currency, std::string_view key) const {
  const auto found = FFacts.FCustomBalances.find(key);
  if (found == FFacts.FCustomBalances.end()) return 0;
  const auto balance = std::ranges::find(found->second, currency, &std::pair<TCode, double>::first);
  return balance == found->second.end() ? 0 : balance->second;
}

std::int32_t TAccountRecord::GetAccountCurrencyCount() const {
  return static_cast<std::int32_t>(FFigures.GetCurrencies().size());
}

TCode TAccountRecord::GetAccountCurrency(std::int32_t index) const {
  if (index < 0 || index >= GetAccountCurrencyCount()) return {};
  return FFigures.GetCurrencies()[static_cast<std::size_t>(index)];
}

const TCustomAccountData* TAccountRecord::GetSimulatedAccountData(std::string_view simulationKey,
                                                                  TCode currency) const {
  const auto found = FSimulations.find(simulationKey);
  return found == FSimulations.end() ? nullptr : found->second.Find(currency);
}

void TAccountRecord::GetCurrencyList(std::vector<TCode>& currencies) const {
  currencies.insert(currencies.end(), FFigures.GetCurrencies().begin(), FFigures.GetCurrencies().end());
}

TVariant TAccountRecord::GetDataValue(std::int32_t field) const {
  switch (field) {
    case kFieldAccount:
      return TVariant::Text(FAccount.Text());
    case kFieldUser:
      return TVariant::Text(FFacts.FUser);
    case kFieldAccountName:
      return TVariant::Text(FFacts.FName);
    case kFieldBODUpdateTime:
      return TVariant::Text(FFacts.FBODUpdateTime);
    case kFieldMarginClass:
      return TVariant::Text(FFacts.FMarginClass);
    default:
      return {};
  }
}

}  // namespace margindesk
