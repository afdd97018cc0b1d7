#include "model/contract/AccountDataControl.h"

#include <algorithm>

#include "model/contract/AccountAdapter.h"
#include "model/contract/CurrencyAdapter.h"

namespace margindesk {

TCustomAccountInfoDataControl::TCustomAccountInfoDataControl(TComponent* owner,
                                                             std::string_view columnSection)
    : TCustomTreeDataControl(owner), FColumnSection(columnSection) {
  auto& currencies = TCustomCurrencyAdapter::GetInstance();
  currencies.AddMultiCurrencyInfoHandler(
      MakeHandler<&TCustomAccountInfoDataControl::MultiCurrencyInfoUpdate>(this), this);
  currencies.AddCurrencyListHandler(MakeHandler<&TCustomAccountInfoDataControl::CurrencyListUpdate>(this),
                                    this);
  currencies.AddCurrencyRatioHandler(MakeHandler<&TCustomAccountInfoDataControl::CurrencyRatioUpdate>(this),
                                     this);
}

TCustomAccountInfoDataControl::~TCustomAccountInfoDataControl() {
  auto& currencies = TCustomCurrencyAdapter::GetInstance();
  currencies.RemoveCurrencyRatioHandler(this);
  currencies.RemoveCurrencyListHandler(this);
  currencies.RemoveMultiCurrencyInfoHandler(this);
}

void TCustomAccountInfoDataControl::Changed() {
  UpdateChinaConnectFlag();
  InitAggregateAccountList();
  ClearAccountCurrencyNode();
  InitCurrencyNode();
  NotifyChange();
}

void TCustomAccountInfoDataControl::SetColumnList(const TColumnList& columns) {
  ClearAll();
  for (const auto& column : columns) FColumns.push_back(column.get());
}

void TCustomAccountInfoDataControl::ConfigUpdate(void* /*sender*/, void* /*data*/) { NotifyChange(); }

void TCustomAccountInfoDataControl::ClearAll() {
  FColumns.clear();
  FConvertNodes.clear();
  FValueNodes.clear();
  FAttributeNodes.clear();
  FRootChildren.clear();
  FNodes.clear();
}

void TCustomAccountInfoDataControl::ClearAccountCurrencyNode() {
  FConvertNodes.clear();
  FValueNodes.clear();
  for (TDataNode* node : FRootChildren) node->ClearChildren();
  std::erase_if(FNodes, [](const std::unique_ptr<TDataNode>& node) { return node->GetParent() != nullptr; });
}

void TCustomAccountInfoDataControl::SetAccount(TCode account) {
  if (account == FAccount) return;
  FAccount = account;
  Changed();
}

void TCustomAccountInfoDataControl::AccountUpdate(void* /*sender*/, void* data) {
  const auto* accounts = static_cast<const TAccountMap*>(data);
  if (accounts == nullptr || accounts->contains(FAccount) || IsSubAccountUpdate(*accounts)) Changed();
}

void TCustomAccountInfoDataControl::MultiCurrencyInfoUpdate(void* /*sender*/, void* /*data*/) { Changed(); }

void TCustomAccountInfoDataControl::CurrencyListUpdate(void* /*sender*/, void* /*data*/) { Changed(); }

void TCustomAccountInfoDataControl::CurrencyRatioUpdate(void* /*sender*/, void* /*data*/) { NotifyChange(); }

void TCustomAccountInfoDataControl::SetCurrency(TCode currency) {
  if (currency == FConvertCurrency) return;
  FConvertCurrency = currency;
  NotifyChange();
}

void TCustomAccountInfoDataControl::SetFilterCurr(TCode currency) {
  if (currency == FFilterCurrency) return;
  FFilterCurrency = currency;
  Changed();
}

void TCustomAccountInfoDataControl::InitCurrencyNode() {}

void TCustomAccountInfoDataControl::SetAggregate() {
  FAggregate = !FAggregate;
  Changed();
}

void TCustomAccountInfoDataControl::InitAggregateAccountList() {
  FSubAccounts.clear();
  if (FAggregate && !FAccount.IsEmpty()) {
    TCustomAccountAdapter::GetInstance().GetSubAccountList(FAccount, FSubAccounts);
  }
}

bool TCustomAccountInfoDataControl::IsSubAccountUpdate(const TAccountMap& accounts) {
  return FAggregate && std::ranges::any_of(FSubAccounts, [&accounts](const auto& subAccount) {
           return accounts.contains(subAccount.first);
         });
}

}  // namespace margindesk
