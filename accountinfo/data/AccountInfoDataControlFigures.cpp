// The value and the text of every field for one currency of one account.
#include <array>
#include <cmath>

#include "accountinfo/data/AccountFieldSets.h"
#include "accountinfo/data/AccountInfoDataControl.h"
#include "accountinfo/data/RpqText.h"
#include "model/ResourceText.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/Constdef.h"
#include "model/contract/Formatter.h"
#include "model/contract/Icommon.h"
#include "model/contract/PositionAdapter.h"

namespace margindesk {

namespace {

// The fields that are one read of the account data.
struct TAmountRead {
  std::int32_t FField;
  double (TCustomAccountData::*FRead)() const;
};

constexpr auto kAmountReads = std::to_array<TAmountRead>({
    {kFieldBodLotLimit, &TCustomAccountData::GetBODLotLimit},
    {kFieldForthComeLimit, &TCustomAccountData::GetForthcomingLimit},
    {kFieldLotLimit, &TCustomAccountData::GetLotLimit},
    {kFieldBODWebTL, &TCustomAccountData::GetBODWebTradingLimit},
    {kFieldWebTL, &TCustomAccountData::GetWebTradingLimit},
    {kFieldMarginLimit, &TCustomAccountData::GetMarginLimit},
    {kFieldDTL, &TCustomAccountData::GetDayTradeLimit},
    {kFieldBODDTL, &TCustomAccountData::GetBODDayTradeLimit},
    {kFieldMaxMargin, &TCustomAccountData::GetMaximumMargin},
    {kFieldPendBuyAmount, &TCustomAccountData::GetPendingBuyAmount},
    {kFieldCreditInt, &TCustomAccountData::GetCreditInterest},
    {kFieldGrossTradingLimit, &TCustomAccountData::GetGrossTradingLimit},
    {kFieldDebitInt, &TCustomAccountData::GetDebitInterest},
    {kFieldWithdrawableCashBalance, &TCustomAccountData::GetWithdrawableCashBalance},
    {kFieldInterest, &TCustomAccountData::GetInterest},
    {kFieldHoldFund, &TCustomAccountData::GetHoldFund},
});

}  // namespace

// The fields with a rule of their own, each as one function of the control and the data that was passed in.
// They are always computed from that data, never from its China Connect substitute.
struct TFigureRules {
  using TControl = TAccountInfoDataControl;
  using TData = TCustomAccountData;
  using TRule = TVariant (*)(TControl& control, const TData& data);

  struct TEntry {
    std::int32_t FField;
    TRule FRule;
  };

  static const TCustomAccount* AccountOf(const TData& data) {
    return TCustomAccountAdapter::GetInstance().GetAccount(data.GetAccountID());
  }

  static TVariant BODUpdateTime(TControl& /*control*/, const TData& data) {
    const TCustomAccount* account = AccountOf(data);
    return account == nullptr ? TVariant::EmptyText() : TVariant::Text(account->GetBODUpdateTime());
  }

  static TVariant MarginClass(TControl& /*control*/, const TData& data) {
    const TCustomAccount* account = AccountOf(data);
    if (account == nullptr || account->GetMarginClass() == "N/A") return TVariant::EmptyText();
    return TVariant::Text(account->GetMarginClass());
  }

  static TVariant DayTradeStatus(TControl& control, const TData& data) {
    const TCustomAccount* account = AccountOf(data);
    if (account == nullptr) return TVariant::EmptyText();
    return TVariant::Text(control.GetDayTradeStatus(account->GetDayTradeStatus()));
  }

  static TVariant OnlineStatus(TControl& /*control*/, const TData& data) {
    const TCustomAccount* account = AccountOf(data);
    if (account == nullptr || !account->IsOnline()) return TVariant::EmptyText();
    return TVariant::Text(GetResourceText("Res_Online"));
  }

  static TVariant PL(TControl& control, const TData& data) { return TVariant::Float(control.GetNetPL(data)); }

  static TVariant UnrealizedPL(TControl& control, const TData& data) {
    return TVariant::Float(control.FApplyDDSPL ? data.GetOwnUnrealizedPL()
                                               : control.GetTotalUnrelizePL(data.GetCurrency()));
  }

  // A position total of the data's currency.
  template <double (TControl::*Total)(TCode)>
  static TVariant PositionTotal(TControl& control, const TData& data) {
    return TVariant::Float((control.*Total)(data.GetCurrency()));
  }

  static constexpr auto MakeEntries() {
    return std::to_array<TEntry>({
        {kFieldMarginingBasis,
         [](TControl& c, const TData&) { return TVariant::Text(c.GetMarginingBasisText()); }},
        {kFieldTotalSellAmount, &PositionTotal<&TControl::GetTotalCompSell>},
        {kFieldTotalBuyAmount, &PositionTotal<&TControl::GetTotalCompBuy>},
        {kFieldMarketValue, &PositionTotal<&TControl::GetTotalMarketValue>},
        {kFieldPL, &PL},
        {kFieldUnrealizedPL, &UnrealizedPL},
        {kFieldRealizedPL, &PositionTotal<&TControl::GetTotalRelizePL>},
        {kFieldBODUpdateTime, &BODUpdateTime},
        {kFieldMarginClass, &MarginClass},
        {kFieldDayTradeStatus, &DayTradeStatus},
        {kFieldMarginableValue,
         [](TControl& c, const TData& data) { return TVariant::Float(c.GetMarginableValue(data)); }},
        {kFieldOnlineStatus, &OnlineStatus},
        {kFieldPositionIsolation,
         [](TControl& c, const TData&) {
           return TVariant::Text(TCustomPositionAdapter::GetInstance().GetPositionIsolationText(c.FAccount));
         }},
        {kFieldMarginMethod,
         [](TControl& c, const TData&) {
           return TVariant::Text(TCustomPositionAdapter::GetInstance().GetMarginMethodText(c.FAccount));
         }},
        {kFieldAggregated, [](TControl& c, const TData&) { return TVariant::Text(c.GetAggregatedText()); }},
    });
  }

  static TRule Find(std::int32_t field) {
    static constexpr auto kEntries = MakeEntries();
    const auto entry = std::ranges::find(kEntries, field, &TEntry::FField);
    return entry == kEntries.end() ? nullptr : entry->FRule;
  }
};

TVariant TAccountInfoDataControl::GetInitialValue(std::int32_t field) const {
  if (Contains(kTextFields, field) || IsPeriodField(field) || IsTextCustomField(field))
    return TVariant::EmptyText();
  return TVariant::Integer(0);
}

const TCustomAccountData* TAccountInfoDataControl::GetChinaConnectData(const TCustomAccountData& data) const {
  if (!FChinaConnect || !IsChinaConnectOn()) return &data;
  const TCustomAccount* linked =
      TCustomAccountAdapter::GetInstance().GetAccount(GetChinaConnectAccount(data.GetAccountID()));
  return linked == nullptr ? nullptr : linked->GetCurrencyData(data.GetCurrency());
}

TVariant TAccountInfoDataControl::GetAccountCurrencyData(const TCustomAccountData* data, std::int32_t field) {
  if (data == nullptr) return GetInitialValue(field);
  if (const auto rule = TFigureRules::Find(field)) return rule(*this, *data);
  const TCustomAccountData* source = GetChinaConnectData(*data);
  TVariant value;
  if (source != nullptr) {
    value = field < kFirstCustomField ? ReadField(*source, *data, field) : GetFieldValue(source, field);
  }
  return value.IsUnassigned() ? GetInitialValue(field) : value;
}

// `source` is the data or its China Connect substitute. Unassigned where there is no such figure.
TVariant TAccountInfoDataControl::ReadField(const TCustomAccountData& source, const TCustomAccountData& data,
                                            std::int32_t field) {
  if (const auto period = FPeriodAttrExchList.find(field); period != FPeriodAttrExchList.end()) {
    return TVariant::Text(GetPeriod(period->second));
  }
  const auto read = std::ranges::find(kAmountReads, field, &TAmountRead::FField);
  if (read != kAmountReads.end()) return TVariant::Float((source.*read->FRead)());
  switch (field) {
    case kFieldAvailableBal:
      return TVariant::Float(source.AvailableBase() + source.AvailableAddition() -
                             source.AvailableDeduction());
    case kFieldTotalPortfolio:
      return TVariant::Float(GetTotalMarketValue(source.GetCurrency()) + source.GetCashBalance());
    case kFieldNetValue:
      return TVariant::Float(GetNetPL(data) + source.GetBODCashBalance());
    case kFieldOptionValue:
      return TVariant::Float(source.GetNetEquity() - source.GetCashBalance());
    case kFieldNetTradedAmount:
      return TVariant::Float(source.TradedAmountFirst() - source.TradedAmountSecond());
    case kFieldMarginLevel: {
      double level = 0;
      return GetMarginLevel(&source, level) ? TVariant::Float(level) : TVariant();
    }
    default:
      // The account's own data, substitute or not: wanted.
      return TCustomAccountInfoDataControl::GetAccountCurrencyData(&data, field);
  }
}

double TAccountInfoDataControl::GetNetPL(const TCustomAccountData& data) {
  return FApplyDDSPL ? data.GetOwnTotalPL() : GetTotalPL(data.GetCurrency());
}

std::string TAccountInfoDataControl::GetMarginingBasisText() const {
  const TCustomAccount* account = GetSelectedAccount();
  if (account == nullptr) return {};
  const std::string& feature = account->GetAttributeValue("ClientFeature");
  // The keys begin with a small letter: wanted, the language files name them so.
  if (feature == "1") return GetResourceText("res_MarginingBasis_Net");
  if (feature == "2") return GetResourceText("res_MarginingBasis_Gross");
  return {};
}

std::string TAccountInfoDataControl::GetAggregatedText() const {
  const TCustomAccount* account = GetSelectedAccount();
  if (account == nullptr || !account->IsMasterAccount()) return {};
  return GetResourceText(FAggregate ? "Res_Yes" : "Res_No");
}

std::string TAccountInfoDataControl::GetCIESText() const {
  const TCustomAccount* account = GetSelectedAccount();
  if (account == nullptr) return {};
  const std::string& key =
      TCustomAccountAdapter::GetInstance().GetCustomFieldKey("oms_CustomAccountInfo", "CIES");
  const std::string answer = UpperCaseText(TrimText(account->GetCustomValue(key)));
  if (answer == "Y") return GetResourceText("Res_Yes");
  if (answer == "N") return GetResourceText("Res_No");
  return {};
}

std::string TAccountInfoDataControl::GetAccountCurrencyDisplayData(const TCustomAccountData* data,
                                                                   std::int32_t field, bool flag) {
  switch (field) {
    case kFieldMarginLevel: {
      double level = 0;
      if (!GetMarginLevel(data, level)) return GetMissingMarginLevelText();
      return TCustomFormatter::GetInstance().FormatValue(level, kFormatMarginLevel, TCode(), true) + "%";
    }
    case kFieldRPQ: {
      const TCustomAccount* account = GetSelectedAccount();
      return account == nullptr ? std::string() : GetRpqText(*account);
    }
    case kFieldCIES:
      return GetCIESText();
    case kFieldMarginingBasis:
      return GetMarginingBasisText();
    case kFieldBODUpdateTime:
    case kFieldPositionIsolation:
    case kFieldMarginMethod:
    case kFieldAggregated:
    case kFieldOnlineStatus:
    case kFieldMarginClass:
    case kFieldDayTradeStatus:
      return GetAccountCurrencyData(data, field).AsText();
    case kFieldBODDTL:
      if (data != nullptr && std::abs(data->GetBODDayTradeLimit()) < kZeroTolerance)
        return GetNotAvailableText();
      break;
    case kFieldDTL:
      if (data != nullptr && std::abs(data->GetDayTradeLimit()) < kZeroTolerance)
        return GetNotAvailableText();
      break;
    default:
      break;
  }
  return TCustomAccountInfoDataControl::GetAccountCurrencyDisplayData(data, field, flag);
}

TVariant TAccountInfoDataControl::GetAggregatedAccountCurrencyData(const TCustomAccountData* data,
                                                                   std::int32_t field) {
  if (data != nullptr && field == kFieldTotalPortfolio) {
    const double cash =
        TCustomAccountInfoDataControl::GetAggregatedAccountCurrencyData(data, kFieldCashBalance).AsFloatOr(0);
    return TVariant::Float(GetTotalMarketValue(data->GetCurrency()) + cash);
  }
  if (data != nullptr && field == kFieldNetValue) {
    const double cash =
        TCustomAccountInfoDataControl::GetAggregatedAccountCurrencyData(data, kFieldBODCashBalance)
            .AsFloatOr(0);
    return TVariant::Float(GetNetPL(*data) + cash);
  }
  if (Contains(kOwnAggregateFields, field) || IsPeriodField(field))
    return GetAccountCurrencyData(data, field);
  return TCustomAccountInfoDataControl::GetAggregatedAccountCurrencyData(data, field);
}

}  // namespace margindesk
