// The account tree's cells: which data a row shows, its values and its texts.
#include "host/framework/PositionFigures.h"
#include "model/AccountInfoConstDef.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/AccountDataControl.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/Formatter.h"
#include "model/contract/LanguageManager.h"

namespace margindesk {

namespace {

// The currency that a row stands for: an attribute row has none of its own.
struct TNodeRow {
  std::int32_t FAttribute = -1;
  TCode FCurrency;
  bool FConverted = false;  // shown in the conversion currency whatever its currency is
  bool FIsAttributeRow = false;
};

TNodeRow ReadNode(const TDataNode* node) {
  if (const auto* value = dynamic_cast<const TAccountDataValueNode*>(node)) {
    return {value->GetAttribute(), value->GetCurrency(), false, false};
  }
  if (const auto* converted = dynamic_cast<const TConvertAccountDataValueNode*>(node)) {
    return {converted->GetAttribute(), converted->GetCurrency(), true, false};
  }
  if (const auto* attribute = dynamic_cast<const TAccountDataNode*>(node)) {
    return {attribute->GetAttribute(), TCode(), true, true};
  }
  return {};
}

bool IsDisplayTextField(std::int32_t field) { return field == kFieldRPQ || field == kFieldCIES; }

}  // namespace

std::string TCustomAccountInfoDataControl::MakeNodeKey(std::int32_t field, TCode currency) {
  std::string key = IntegerToText(field);
  if (!currency.IsEmpty()) key.append(1, '-').append(currency.Text());
  return key;
}

double TCustomAccountInfoDataControl::ToConversionCurrency(double amount, TCode currency) const {
  return ConvertAmount(amount, currency, FConvertCurrency);
}

std::string TCustomAccountInfoDataControl::GetCurrencyName(TCode currency) {
  const std::string& name =
      TCustomLanguageManager::GetInstance().GetLanguageText("Currency", currency.Text());
  return name.empty() ? currency.Text() : name;
}

const std::string& TCustomAccountInfoDataControl::GetNotAvailableText() const {
  return TCustomLanguageManager::GetInstance().GetLanguageText(Const_ResourceStringTag, "Res_NotAvailable");
}

const std::string& TCustomAccountInfoDataControl::GetMissingMarginLevelText() const {
  return TCustomLanguageManager::GetInstance().GetLanguageText(Const_ResourceStringTag,
                                                               "Res_MarginLevel_None");
}

const TCustomAccountData* TCustomAccountInfoDataControl::GetNodeData(const TDataNode* node) const {
  const TCustomAccount* account = TCustomAccountAdapter::GetInstance().GetAccount(FAccount);
  if (account == nullptr) return nullptr;
  const TNodeRow row = ReadNode(node);
  if (!row.FIsAttributeRow) return account->GetCurrencyData(row.FCurrency);
  const TCustomAccountData* data = account->GetCurrencyData(FFilterCurrency);
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  if (data != nullptr || !FFilterCurrency.IsEmpty() || currencies.IsMultiCurrency()) return data;
  // A single-currency back office may keep no total row beside its one currency.
  return account->GetCurrencyData(currencies.GetBaseCurrency());
}

TVariant TCustomAccountInfoDataControl::GetValue(TDataNode* node, std::int32_t column) {
  const TNodeRow row = ReadNode(node);
  if (row.FAttribute < 0) return {};
  if (column == kCellCaption) return TVariant::Text(GetDisplayValue(node, column));
  if (column != kCellValue) return {};
  const TCustomAccountData* data = GetNodeData(node);
  TVariant value = FAggregate ? GetAggregatedAccountCurrencyData(data, row.FAttribute)
                              : GetAccountCurrencyData(data, row.FAttribute);
  if (row.FConverted && !row.FIsAttributeRow && value.IsNumber() && row.FAttribute != kFieldFxRatio) {
    value = TVariant::Float(ToConversionCurrency(value.AsFloat(), row.FCurrency));
  }
  return value;
}

std::string TCustomAccountInfoDataControl::GetDisplayValue(TDataNode* node, std::int32_t column) {
  const TNodeRow row = ReadNode(node);
  if (row.FAttribute < 0) return {};
  if (column == kCellCaption) {
    return row.FIsAttributeRow ? GetResourceHeader(row.FAttribute) : GetCurrencyName(row.FCurrency);
  }
  if (column != kCellValue) return {};
  // A derived control may read other data in the place of the row's and ask without the flag; the row is in
  // the conversion currency all the same.
  FShowsConvertedRow = row.FConverted;
  std::string text = GetAccountCurrencyDisplayData(GetNodeData(node), row.FAttribute, row.FConverted);
  FShowsConvertedRow = false;
  return text;
}

TVariant TCustomAccountInfoDataControl::GetFieldValue(const TCustomAccountData* data,
                                                      std::int32_t field) const {
  if (data == nullptr) return {};
  return data->GetDataValue(field);
}

TVariant TCustomAccountInfoDataControl::GetAccountCurrencyData(const TCustomAccountData* data,
                                                               std::int32_t field) {
  if (data == nullptr) return {};
  if (field == kFieldAccount) return TVariant::Text(data->GetAccountID().Text());
  if (field == kFieldCurrency) return TVariant::Text(data->GetCurrency().Text());
  if (field == kFieldFxRatio) {
    return TVariant::Float(TCustomCurrencyAdapter::GetInstance().GetCurrencyRatio(data->GetCurrency()));
  }
  if (field == kFieldUser || field == kFieldAccountName) {
    const TCustomAccount* account = TCustomAccountAdapter::GetInstance().GetAccount(data->GetAccountID());
    return account == nullptr ? TVariant::EmptyText() : account->GetDataValue(field);
  }
  // Texts that are made for showing have no other value than what they show.
  if (IsDisplayTextField(field)) return TVariant::Text(GetAccountCurrencyDisplayData(data, field, false));
  return GetFieldValue(data, field);
}

std::string TCustomAccountInfoDataControl::GetAccountCurrencyDisplayData(const TCustomAccountData* data,
                                                                         std::int32_t field, bool flag) {
  if (data == nullptr || IsDisplayTextField(field)) return {};
  const TVariant value =
      FAggregate ? GetAggregatedAccountCurrencyData(data, field) : GetAccountCurrencyData(data, field);
  if (!value.IsNumber()) return value.AsText();
  const auto& formatter = TCustomFormatter::GetInstance();
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  const TCode currency = data->GetCurrency();
  double amount = value.AsFloat();
  if (field == kFieldFxRatio) {
    if (currency.IsEmpty() && currencies.IsMultiCurrency()) return {};
    const double ratio = FConvertCurrency.IsEmpty() ? 0 : currencies.GetCurrencyRatio(FConvertCurrency);
    if (ratio != 0) amount /= ratio;
    return formatter.FormatValue(amount, kFormatRatio, TCode(), true);
  }
  if (flag || FShowsConvertedRow || currency.IsEmpty()) amount = ToConversionCurrency(amount, currency);
  return formatter.FormatValue(amount, kFormatAmount, TCode(), true);
}

TVariant TCustomAccountInfoDataControl::GetAggregatedAccountCurrencyData(const TCustomAccountData* data,
                                                                         std::int32_t field) {
  TVariant value = GetAccountCurrencyData(data, field);
  // A ratio belongs to the currency, not to the accounts.
  if (data == nullptr || !value.IsNumber() || field == kFieldFxRatio) return value;
  double sum = value.AsFloat();
  for (const auto& [identifier, subAccount] : FSubAccounts) {
    if (subAccount == nullptr) continue;
    const TCustomAccountData* subData = subAccount->GetCurrencyData(data->GetCurrency());
    if (subData != nullptr) sum += GetAccountCurrencyData(subData, field).AsFloatOr(0);
  }
  return TVariant::Float(sum);
}

std::string TCustomAccountInfoDataControl::GetResourceHeader(std::int32_t field) {
  for (const TColumnInfo* column : FColumns) {
    if (column->FId != field) continue;
    const std::string_view section = field >= kFirstCustomField ? FColumnSection : Const_ResourceStringTag;
    return TCustomLanguageManager::GetInstance().GetLanguageText(section, column->FResourceKey);
  }
  return {};
}

}  // namespace margindesk
