// The rows of the account tree, their captions, and which figure each cell asks for.
#include "accountinfo/data/AccountFieldSets.h"
#include "accountinfo/data/AccountInfoDataControl.h"
#include "model/ResourceText.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/LanguageManager.h"
#include "model/contract/UserAppProfile.h"

namespace margindesk {

namespace {

std::string InBrackets(std::string_view text, std::string_view bracketed) {
  return std::string(text).append(1, '(').append(bracketed).append(1, ')');
}

}  // namespace

void TAccountInfoDataControl::SetColumnList(const TColumnList& columns) {
  ClearAll();
  FPeriodAttrExchList.clear();
  bool online = false;
  bool monitor = false;
  for (const auto& column : columns) {
    FColumns.push_back(column.get());
    if (!column->FVisible) continue;
    if (column->FId != kFieldStatus) {
      AddAttributeNode(column->FId);
      online = online || column->FId == kFieldOnlineStatus;
      monitor = monitor || column->FId == kFieldMarginClass || column->FId == kFieldDayTradeStatus;
      continue;
    }
    std::vector<TCode> exchanges;
    if (!TCustomUserAppProfile::GetInstance().GetPeriodExchangeList(exchanges)) continue;
    for (std::size_t i = 0; i < exchanges.size(); ++i) {
      const std::int32_t field = kFirstPeriodField + static_cast<std::int32_t>(i);
      FPeriodAttrExchList[field] = exchanges[i];
      AddAttributeNode(field);
    }
  }
  if (!FAccount.IsEmpty()) {
    InitCurrencyNode();
    if (FNeedSubscribeOnlineStatus != online) {
      FNeedSubscribeOnlineStatus ? UnSubscribeOnlineStatus() : SubscribeOnlineStatus();
    }
    if (FNeedLoadMonitorInfo != monitor)
      FNeedLoadMonitorInfo ? UnSubscribeMonitorInfo() : SubscribeMonitorInfo();
  }
  FNeedSubscribeOnlineStatus = online;
  FNeedLoadMonitorInfo = monitor;
}

void TAccountInfoDataControl::AddAttributeNode(std::int32_t field) {
  auto* node = AddNode(std::make_unique<TAccountDataNode>(field));
  FRootChildren.push_back(node);
  FAttributeNodes[field] = node;
}

bool TAccountInfoDataControl::HasValueRows(std::int32_t field) const {
  return !Contains(kAccountLevelFields, field) && !IsPeriodField(field) && !IsTextCustomField(field);
}

bool TAccountInfoDataControl::IsTextCustomField(std::int32_t field) const {
  return field >= kFirstCustomField && !IsNumericCustomColumn(IntegerToText(field - kFirstCustomField));
}

void TAccountInfoDataControl::InitCurrencyNode() {
  const TCustomAccount* account = GetSelectedAccount();
  if (account == nullptr || !TCustomCurrencyAdapter::GetInstance().IsMultiCurrency()) return;
  if (!FFilterCurrency.IsEmpty()) {
    if (account->GetCurrencyData(FFilterCurrency) != nullptr) AddValueNodes(FFilterCurrency);
    return;
  }
  FCurrencyCount = account->GetAccountCurrencyCount();
  if (FIsShow3LvInfo && account->GetCurrencyData(TCode()) != nullptr) AddValueNodes(TCode());
  for (std::int32_t i = 0; i < FCurrencyCount; ++i) {
    const TCode currency = account->GetAccountCurrency(i);
    if (!FIsShow3LvInfo) {
      AddValueNodes(currency);
      continue;
    }
    const TCustomAccountData* data = account->GetCurrencyData(currency);
    const bool separate = data != nullptr && data->IsSeparateCurrencyRow();
    separate ? AddValueNodes(currency) : AddConvertNodes(currency);
  }
}

void TAccountInfoDataControl::AddValueNodes(TCode currency) {
  for (const TColumnInfo* column : FColumns) {
    const auto attribute = FAttributeNodes.find(column->FId);
    if (attribute == FAttributeNodes.end()) continue;
    std::string key = MakeNodeKey(column->FId, currency);
    if (FValueNodes.contains(key) || !HasValueRows(column->FId)) continue;
    FValueNodes[std::move(key)] =
        AddNode(std::make_unique<TAccountDataValueNode>(attribute->second, currency));
  }
}

void TAccountInfoDataControl::AddConvertNodes(TCode currency) {
  for (const TColumnInfo* column : FColumns) {
    if (!FAttributeNodes.contains(column->FId)) continue;
    const auto total = FValueNodes.find(MakeNodeKey(column->FId, TCode()));
    std::string key = MakeNodeKey(column->FId, currency);
    if (total == FValueNodes.end() || FConvertNodes.contains(key) || !HasValueRows(column->FId)) continue;
    FConvertNodes[std::move(key)] =
        AddNode(std::make_unique<TConvertAccountDataValueNode>(total->second, currency));
  }
}

std::string TAccountInfoDataControl::GetCurrencyCaption(TCode currency) const {
  if (!currency.IsEmpty())
    return TCustomLanguageManager::GetInstance().GetLanguageText("Currency", currency.Text());
  const TCode shown =
      FConvertCurrency.IsEmpty() ? TCustomCurrencyAdapter::GetInstance().GetBaseCurrency() : FConvertCurrency;
  return InBrackets(GetResourceText("Res_Group"), GetCurrencyName(shown));
}

TVariant TAccountInfoDataControl::GetValue(TDataNode* node, std::int32_t column) {
  const auto* attribute = dynamic_cast<const TAccountDataNode*>(node);
  if (FIsShow3LvInfo && column == kCellValue && attribute != nullptr) {
    return GetAccountTotalDataValue(GetSelectedAccount(), attribute->GetAttribute());
  }
  const bool multiCurrency = TCustomCurrencyAdapter::GetInstance().IsMultiCurrency();
  if (!FIsShow3LvInfo) {
    // Several currencies together have no one ratio.
    const bool ratioOfAll =
        attribute != nullptr && attribute->GetAttribute() == kFieldFxRatio && multiCurrency;
    if (column == kCellValue && ratioOfAll) return TVariant::Integer(0);
  } else if (const auto* row = dynamic_cast<const TAccountDataValueNode*>(node)) {
    const bool ratioOfAll =
        row->GetAttribute() == kFieldFxRatio && row->GetCurrency().IsEmpty() && multiCurrency;
    if (column == kCellValue && ratioOfAll) return TVariant::Integer(0);
    if (column == kCellCaption) return TVariant::Text(GetCurrencyCaption(row->GetCurrency()));
  }
  return TCustomAccountInfoDataControl::GetValue(node, column);
}

std::string TAccountInfoDataControl::GetDisplayValue(TDataNode* node, std::int32_t column) {
  const auto* attribute = dynamic_cast<const TAccountDataNode*>(node);
  if (FIsShow3LvInfo && column == kCellValue && attribute != nullptr) {
    return GetAccountTotalDataDisplayValue(GetSelectedAccount(), attribute->GetAttribute());
  }
  const auto* row = dynamic_cast<const TAccountDataValueNode*>(node);
  const std::int32_t field = attribute != nullptr ? attribute->GetAttribute()
                             : row != nullptr     ? row->GetAttribute()
                                                  : -1;
  if (FIsShow3LvInfo && row != nullptr && column == kCellCaption)
    return GetCurrencyCaption(row->GetCurrency());
  if (column == kCellValue) {
    // A limit of the master says nothing about the group.
    if (FAggregate && (field == kFieldCreditLimit || field == kFieldMaxMargin)) return GetNotAvailableText();
    const bool rowOfAll =
        FIsShow3LvInfo ? row != nullptr && row->GetCurrency().IsEmpty() : attribute != nullptr;
    if (field == kFieldFxRatio && rowOfAll && TCustomCurrencyAdapter::GetInstance().IsMultiCurrency())
      return {};
  }
  return TCustomAccountInfoDataControl::GetDisplayValue(node, column);
}

std::string TAccountInfoDataControl::GetResourceHeader(std::int32_t field) {
  const auto period = FPeriodAttrExchList.find(field);
  if (period == FPeriodAttrExchList.end()) return TCustomAccountInfoDataControl::GetResourceHeader(field);
  return InBrackets(GetResourceText("Res_Period"), period->second.Text());
}

}  // namespace margindesk
