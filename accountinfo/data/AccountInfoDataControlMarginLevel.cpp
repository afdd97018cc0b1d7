// Margin level, marginable value, day-trade status and trading period.
#include <algorithm>
#include <cmath>

#include "accountinfo/data/AccountInfoDataControl.h"
#include "model/ResourceText.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/Icommon.h"
#include "model/contract/MarketAdapter.h"

namespace margindesk {

namespace {

bool CountsAsZero(double amount) { return !(std::abs(amount) > kZeroTolerance); }

}  // namespace

// `totalPL` keeps the positions' profit and loss over the accounts of one call, whose data are all in one
// currency.
double TAccountInfoDataControl::GetMarginLevelNumerator(const TCustomAccountData& data,
                                                        std::optional<double>& totalPL) {
  if (FIsNetEquityMargin) return data.GetNetEquity();
  if (FMarginLevelMode == 1) return data.GetCashBalance();
  if (FApplyDDSPL) return data.GetOwnTotalPL() + data.GetBODCashBalance();
  if (!totalPL) totalPL = GetTotalPL(data.GetCurrency());
  return *totalPL + data.GetBODCashBalance();
}

bool TAccountInfoDataControl::GetMarginLevel(const TCustomAccountData* data, double& level) {
  std::optional<double> totalPL;
  const auto levelOf = [&](const TCustomAccountData* d) {
    if (d == nullptr || CountsAsZero(d->GetInitialMargin())) return false;
    level = GetMarginLevelNumerator(*d, totalPL) / d->GetInitialMargin() * 100;
    return true;
  };
  if (!FAggregate) return levelOf(data);
  const TCustomAccount* account = GetSelectedAccount();
  if (account == nullptr) return false;
  const TCode currency = data == nullptr ? TCode() : data->GetCurrency();
  if (account->GetMasterType() == kMasterTypeConsolidated) {
    return levelOf(TCustomAccountAdapter::GetInstance().GetConsolidatedAccountData(FAccount, currency));
  }
  // A ratio of sums. Where the numerator is the positions' profit and loss, that of the whole group counts
  // once for the master and once more for every sub-account: wanted, it is how the back office states the
  // level.
  double numerator = 0;
  double denominator = 0;
  const auto add = [&](const TCustomAccountData* d) {
    if (d == nullptr) return;
    numerator += GetMarginLevelNumerator(*d, totalPL);
    denominator += d->GetInitialMargin();
  };
  add(data);
  for (const auto& [identifier, subAccount] : FSubAccounts) {
    if (subAccount != nullptr) add(GetSubAccountData(*subAccount, currency));
  }
  if (CountsAsZero(denominator)) return false;
  level = numerator / denominator * 100;
  return true;
}

const TCustomAccountData* TAccountInfoDataControl::GetSubAccountData(const TCustomAccount& subAccount,
                                                                     TCode currency) const {
  if (!FChinaConnect || !IsChinaConnectOn()) return subAccount.GetCurrencyData(currency);
  const TCustomAccount* linked =
      TCustomAccountAdapter::GetInstance().GetAccount(GetChinaConnectAccount(subAccount.GetAccountID()));
  return linked == nullptr ? nullptr : linked->GetCurrencyData(currency);
}

void TAccountInfoDataControl::AddMarginable(const TCustomAccountData& data, const std::string& creditLimitKey,
                                            TMarginable& sums) {
  const auto& accounts = TCustomAccountAdapter::GetInstance();
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  const TCode currency = data.GetCurrency();
  if (FChinaConnect && IsChinaConnectOn()) {
    const TCustomAccount* linked = accounts.GetAccount(GetChinaConnectAccount(data.GetAccountID()));
    const TCustomAccountData* linkedData = linked == nullptr ? nullptr : linked->GetCurrencyData(currency);
    if (linkedData == nullptr) return;
    sums.FAmount += linkedData->MarginableAmount();
    sums.FCreditLimit += linked->GetCustomBalance(currencies.GetBaseCurrency(), creditLimitKey);
    return;
  }
  sums.FAmount += data.MarginableAmount();
  const TCustomAccount* account = accounts.GetAccount(data.GetAccountID());
  if (account == nullptr) return;
  if (!currency.IsEmpty()) {
    sums.FCreditLimit += account->GetCustomBalance(currency, creditLimitKey);
  } else if (!currencies.IsMultiCurrency()) {
    sums.FCreditLimit += account->GetCustomBalance(currencies.GetBaseCurrency(), creditLimitKey);
  } else {
    FParserList->clear();
    account->GetCurrencyList(*FParserList);
    for (const TCode code : *FParserList) {
      if (currencies.IsCurrencyExcluded(code)) continue;
      sums.FCreditLimit +=
          account->GetCustomBalance(code, creditLimitKey) * currencies.GetCurrencyRatio(code);
    }
  }
}

double TAccountInfoDataControl::GetMarginableValue(const TCustomAccountData& data) {
  if (!FParserList) FParserList = std::make_unique<std::vector<TCode>>();
  const auto& accounts = TCustomAccountAdapter::GetInstance();
  const std::string& key = accounts.GetCustomFieldKey("oms_CustomAccountBalance", "CreditLimit");
  TMarginable sums;
  AddMarginable(data, key, sums);
  if (FAggregate) {
    for (const auto& [identifier, subAccount] : FSubAccounts) {
      const TCustomAccountData* subData =
          subAccount == nullptr ? nullptr : subAccount->GetCurrencyData(data.GetCurrency());
      if (subData != nullptr) AddMarginable(*subData, key, sums);
    }
    const TCustomAccount* account = GetSelectedAccount();
    if (account != nullptr && account->IsMasterAccount() &&
        account->GetMasterType() == kMasterTypeConsolidated) {
      const TCustomAccountData* consolidated =
          accounts.GetConsolidatedAccountData(FAccount, data.GetCurrency());
      sums.FAmount = consolidated == nullptr ? 0 : consolidated->MarginableAmount();
    }
  }
  FParserList->clear();
  return std::min(sums.FCreditLimit, sums.FAmount);
}

std::string TAccountInfoDataControl::GetDayTradeStatus(std::int32_t status) const {
  // 0 is active and -1 inactive: wanted, it is how the back office counts.
  if (status == -1) return GetResourceText("Res_DayTrade_Inactive");
  if (status == 0) return GetResourceText("Res_DayTrade_Active");
  return {};
}

std::string TAccountInfoDataControl::GetPeriod(TCode exchange) const {
  const auto& market = TCustomMarketAdapter::GetInstance();
  for (const TCustomPositionData* position : FPositionList.GetPositions()) {
    const TCustomSubItem* item = position->GetReferenceItem();
    TCode positionExchange;
    // Any status but 0 will do here, unlike for a position's currency: wanted.
    if (item != nullptr && item->GetStatus() != 0) positionExchange = item->GetFieldCode(kItemExchange);
    if (positionExchange.IsEmpty()) {
      const TCustomProduct* product = market.GetProduct(position->GetSymbol());
      if (product != nullptr) positionExchange = product->GetExchange();
    }
    if (positionExchange == exchange && !CountsAsZero(position->GetHoldingQuantity())) {
      return GetResourceText("Res_OvernightTrade");
    }
  }
  return GetResourceText("Res_DayTrade");
}

}  // namespace margindesk
