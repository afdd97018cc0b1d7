#include "terminal/cli/Explanation.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "host/framework/PositionFigures.h"
#include "model/AccountInfoConstDef.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/Icommon.h"
#include "model/contract/PositionAdapter.h"
#include "terminal/cli/ExplanationTerms.h"

namespace margindesk {

namespace {

using TData = TCustomAccountData;
using TPositionAmount = double (*)(TCustomAccountInfoDataControl& control,
                                   const TCustomPositionData& position);

// --- what is summed over positions

double ReadPositionPL(TCustomAccountInfoDataControl& control, const TCustomPositionData& position) {
  return position.IsPriceBasedPL() ? control.GetPL(position)
                                   : position.GetPLFirstPart() + position.GetPLSecondPart();
}

double ReadMarketValue(TCustomAccountInfoDataControl& /*control*/, const TCustomPositionData& position) {
  double value = 0;
  ReckonMarketValue(position, value);
  return value;
}

struct TPositionRule {
  std::int32_t FField;
  TPositionAmount FAmount;
};
constexpr TPositionRule kPositionRules[] = {
    {kFieldMarketValue, &ReadMarketValue},
    {kFieldPL, &ReadPositionPL},
    {kFieldUnrealizedPL,
     [](TCustomAccountInfoDataControl&, const TCustomPositionData& p) {
       return p.GetPLFirstPart() + p.GetPLSecondPart() - p.GetRealizedPL();
     }},
    {kFieldRealizedPL,
     [](TCustomAccountInfoDataControl&, const TCustomPositionData& p) { return p.GetRealizedPL(); }},
    {kFieldTotalBuyAmount,
     [](TCustomAccountInfoDataControl&, const TCustomPositionData& p) { return p.GetCompletedBuyAmount(); }},
    {kFieldTotalSellAmount,
     [](TCustomAccountInfoDataControl&, const TCustomPositionData& p) { return p.GetCompletedSellAmount(); }},
};

const TPositionRule* FindPositionRule(std::int32_t field) {
  const auto* rule = std::ranges::find(kPositionRules, field, &TPositionRule::FField);
  return rule == std::end(kPositionRules) ? nullptr : rule;
}

// Fields that the linked account supplies where an account is seen through China Connect; custom columns are
// of them, too. The others that are read are always the account's own.
constexpr std::int32_t kLinkedFields[] = {kFieldBodLotLimit,
                                          kFieldForthComeLimit,
                                          kFieldLotLimit,
                                          kFieldBODWebTL,
                                          kFieldWebTL,
                                          kFieldMarginLimit,
                                          kFieldDTL,
                                          kFieldBODDTL,
                                          kFieldMaxMargin,
                                          kFieldPendBuyAmount,
                                          kFieldCreditInt,
                                          kFieldGrossTradingLimit,
                                          kFieldDebitInt,
                                          kFieldWithdrawableCashBalance,
                                          kFieldInterest,
                                          kFieldHoldFund,
                                          kFieldAvailableBal,
                                          kFieldOptionValue,
                                          kFieldNetTradedAmount};

bool IsLinkedField(std::int32_t field) {
  return field >= kFirstCustomField || std::ranges::find(kLinkedFields, field) != std::end(kLinkedFields);
}

// The account to which China Connect links another one; null for none.
const TCustomAccount* FindLinkedAccount(TCode account) {
  return TCustomAccountAdapter::GetInstance().GetAccount(GetChinaConnectAccount(account));
}

const TData* FindLinkedData(const TData& data) {
  const TCustomAccount* linked = FindLinkedAccount(data.GetAccountID());
  return linked == nullptr ? nullptr : linked->GetCurrencyData(data.GetCurrency());
}

// Fields that belong to the account: its total row is all there is, and is shown as it was read.
constexpr std::int32_t kAccountFields[] = {kFieldCutLoss, kFieldHoldFund, kFieldCreditLimitDDS,
                                           kFieldCreditLimit, kFieldMaxMargin};

// Where the fields come from that are texts or have no one figure.
struct TSourceRow {
  std::int32_t FField;
  std::string_view FSource;
};
constexpr TSourceRow kSources[] = {
    {kFieldAccount, "the account's record"},
    {kFieldCurrency, "the account's figures by currency"},
    {kFieldUser, "the account's record"},
    {kFieldAccountName, "the account's record"},
    {kFieldBODUpdateTime, "the account's record"},
    {kFieldMarginClass, "the account's record"},
    {kFieldDayTradeStatus, "the account's record"},
    {kFieldOnlineStatus, "the account's record"},
    {kFieldMarginingBasis, "the account's attribute ClientFeature"},
    {kFieldRPQ, "the account's custom values RPQLevel and RPQDate"},
    {kFieldCIES, "the account's custom value CIES"},
    {kFieldPositionIsolation, "the account's position settings"},
    {kFieldMarginMethod, "the account's position settings"},
    {kFieldAggregated, "the view, which sums sub-accounts or does not"},
    {kFieldFxRatio, "the currencies, which have no ratio in common"},
};

const TSourceRow* FindSource(std::int32_t field) {
  const auto* row = std::ranges::find(kSources, field, &TSourceRow::FField);
  return row == std::end(kSources) ? nullptr : row;
}

class TExplainer {
 public:
  TExplainer(TCustomAccountInfoDataControl& control, const TCustomAccount& account, bool threeLevels)
      : FControl(control),
        FAccount(account),
        FThreeLevels(threeLevels),
        FConnect(IsChinaConnectOn()),
        FLinked(FConnect && control.GetChinaConnectFlag()) {
    const auto& config = TCustomConfigManager::GetInstance();
    const std::string section = config.GetUserSection();
    FNetEquity = config.ReadBool(section, "NetEquityMargin");
    FLevelMode = config.ReadInteger(section, "MarginLevelMode");
    const std::string own = config.ReadString(section, "ApplyDDSPL");
    FOwnPL = own.starts_with('Y') || own.starts_with('y');
  }

  std::optional<TTerm> Explain(std::int32_t field) {
    const TData* row = FindFirstRow();
    if (row == nullptr) return std::nullopt;
    if (field == kFieldMarginLevel) return MarginLevel(*row);
    if (field == kFieldFxRatio) return Ratio(*row);
    const bool whole = FThreeLevels && !FLinked && GetRowFilter().IsEmpty();
    if (!whole) return Converted(Figure(*row, field), row->GetCurrency());
    if (std::ranges::find(kAccountFields, field) != std::end(kAccountFields)) return Figure(*row, field);
    return Converted(OverRows(*row, field), {});
  }

 private:
  // While China Connect is on the filter chooses a side, and the total is that of all currencies.
  TCode GetRowFilter() const { return FThreeLevels && FConnect ? TCode() : FControl.GetFilterCurrency(); }

  // The data of the first line: the filter currency's, else the total row's. None on the linked side where
  // the linked account has none.
  const TData* FindFirstRow() const {
    const TCode filter = GetRowFilter();
    const TData* row = FAccount.GetCurrencyData(filter);
    if (row != nullptr && FLinked && FindLinkedData(*row) == nullptr) return nullptr;
    const auto& currencies = TCustomCurrencyAdapter::GetInstance();
    if (row != nullptr || FThreeLevels || !filter.IsEmpty() || currencies.IsMultiCurrency()) return row;
    return FAccount.GetCurrencyData(currencies.GetBaseCurrency());
  }

  TTerm Converted(TTerm amount, TCode currency) const {
    const TCode to = FControl.GetConvertCurrency();
    if (currency == to) return amount;
    const std::string name = GetWord("Converted", {amount.FName});
    if (!currency.IsEmpty()) {
      amount = MakeOperation(TTermKind::kProduct, name, {std::move(amount), MakeRatio(currency)});
    }
    const double ratio = TCustomCurrencyAdapter::GetInstance().GetCurrencyRatio(to);
    if (ratio == 0 || ratio == 1) return amount;
    return MakeOperation(TTermKind::kQuotient, name, {std::move(amount), MakeRatio(to)});
  }

  // The total row and the rows of their own, which are added to it.
  TTerm OverRows(const TData& total, std::int32_t field) {
    std::vector<TTerm> rows;
    rows.push_back(Figure(total, field));
    for (std::int32_t i = 0; i < FAccount.GetAccountCurrencyCount(); ++i) {
      const TCode currency = FAccount.GetAccountCurrency(i);
      const TData* data = currency.IsEmpty() ? nullptr : FAccount.GetCurrencyData(currency);
      if (data == nullptr || !data->IsSeparateCurrencyRow()) continue;
      rows.push_back(MakeOperation(TTermKind::kProduct, GetWord("SeparateRow", {currency.Text()}),
                                   {Figure(*data, field), MakeRatio(currency)}));
    }
    if (rows.size() == 1) return std::move(rows.front());
    return MakeOperation(TTermKind::kSum, GetFieldName(field), std::move(rows));
  }

  // --- one row

  TTerm Figure(const TData& data, std::int32_t field) {
    if (field == kFieldPL || (field == kFieldUnrealizedPL && FOwnPL)) return NetPL(data, field);
    if (FindPositionRule(field) != nullptr) return OverPositions(data, field);
    if (field == kFieldTotalPortfolio) {
      return MakeOperation(TTermKind::kSum, GetFieldName(field),
                           {OverPositions(data, kFieldMarketValue), Cash(data, kFieldCashBalance)});
    }
    if (field == kFieldNetValue) {
      return MakeOperation(TTermKind::kSum, GetFieldName(field),
                           {NetPL(data, kFieldPL), Cash(data, kFieldBODCashBalance)});
    }
    if (field == kFieldMarginableValue) return Marginable(data);
    return OverAccounts(data, field);
  }

  TTerm NetPL(const TData& data, std::int32_t field) {
    if (!FOwnPL) return OverPositions(data, field);
    return ReadAmount(data, GetWord("BackOffice", {GetFieldName(field)}),
                      field == kFieldPL ? &TData::GetOwnTotalPL : &TData::GetOwnUnrealizedPL);
  }

  // The row's data and, while they are summed, those of the sub-accounts, or of the accounts that they are
  // linked to, in the same currency.
  std::vector<const TData*> GetGroup(const TData& data, bool linked = false) const {
    std::vector<const TData*> group{&data};
    for (const auto& [identifier, subAccount] : FControl.GetSubAccounts()) {
      if (subAccount == nullptr) continue;
      const TCustomAccount* account = linked ? FindLinkedAccount(subAccount->GetAccountID()) : subAccount;
      const TData* own = account == nullptr ? nullptr : account->GetCurrencyData(data.GetCurrency());
      if (own != nullptr) group.push_back(own);
    }
    return group;
  }

  // Cash that is added to what the positions give: on the linked side the linked account's, but each
  // account's own as soon as accounts are summed.
  TTerm Cash(const TData& data, std::int32_t field) const {
    const TData* linked = FLinked && !FControl.IsAggregate() ? FindLinkedData(data) : nullptr;
    return linked == nullptr ? OverAccounts(data, field) : ReadField(*linked, field);
  }

  TTerm OverAccounts(const TData& data, std::int32_t field) const {
    std::vector<TTerm> terms;
    for (const TData* own : GetGroup(data)) {
      const TData* source = FLinked ? FindLinkedData(*own) : own;
      if (source == nullptr) {  // then nothing is read, of whomever the field would be
        terms.push_back(MakeInput(GetFieldName(field), 0, own->GetAccountID(), own->GetCurrency()));
        continue;
      }
      if (!IsLinkedField(field)) source = own;
      terms.push_back(ReadField(*source, field));
    }
    if (terms.size() == 1) return std::move(terms.front());
    return MakeOperation(TTermKind::kSum, GetFieldName(field), std::move(terms));
  }

  TTerm OverPositions(const TData& data, std::int32_t field) {
    TTerm sum = MakeOperation(TTermKind::kSum, GetWord("Positions", {GetFieldName(field)}), {});
    AddPositions(FControl.GetAccount(), data.GetCurrency(), field, sum.FTerms);
    for (const auto& [identifier, subAccount] : FControl.GetSubAccounts()) {
      if (subAccount != nullptr) {
        AddPositions(subAccount->GetAccountID(), data.GetCurrency(), field, sum.FTerms);
      }
    }
    return MakeOperation(TTermKind::kSum, std::move(sum.FName), std::move(sum.FTerms));
  }

  // While China Connect is on the side counts, whatever the currency.
  bool Counts(const TCustomPositionData& position, TCode wanted, TCode& currency) const {
    if (FConnect) {
      const TCustomSubItem* item = position.GetReferenceItem();
      if (item != nullptr) currency = item->GetFieldCode(kItemCurrency);
      return item != nullptr && IsChinaConnectExchange(item->GetFieldCode(kItemExchange)) == FLinked;
    }
    currency = GetPositionCurrency(position);
    if (wanted.IsEmpty()) {
      return !currency.IsEmpty() && !TCustomCurrencyAdapter::GetInstance().IsCurrencyExcluded(currency);
    }
    return currency.SameText(wanted);
  }

  // One term a currency: the wanted one alone, or for no currency, and on either side of China Connect, each
  // that counts, brought to the base.
  void AddPositions(TCode account, TCode wanted, std::int32_t field, std::vector<TTerm>& terms) {
    TPositionMap positions;
    TCustomPositionAdapter::GetInstance().GetPositionList(account, positions);
    std::vector<TTerm> sums;
    for (const TCustomPositionData* position : positions.GetPositions()) {
      TCode currency;
      if (!Counts(*position, wanted, currency)) continue;
      auto sum = std::ranges::find(sums, std::optional(currency), &TTerm::FCurrency);
      if (sum == sums.end()) {
        sums.push_back(MakeInput(GetFieldName(field), 0, account, currency));
        sums.back().FPositions = 0;
        sum = sums.end() - 1;
      }
      *sum->FValue += FindPositionRule(field)->FAmount(FControl, *position);
      ++*sum->FPositions;
    }
    for (TTerm& sum : sums) {
      if (!wanted.IsEmpty() && !FConnect) {
        terms.push_back(std::move(sum));
        continue;
      }
      const TCode currency = *sum.FCurrency;
      terms.push_back(MakeIntoBase(std::move(sum), currency));
    }
  }

  // --- margin level

  TTerm LevelNumerator(const TData& data) {
    if (FNetEquity) return ReadAmount(data, GetFieldName(kFieldEquity), &TData::GetNetEquity);
    if (FLevelMode == 1) return ReadAmount(data, GetFieldName(kFieldCashBalance), &TData::GetCashBalance);
    return MakeOperation(TTermKind::kSum, GetFieldName(kFieldNetValue),
                         {NetPL(data, kFieldPL),
                          ReadAmount(data, GetFieldName(kFieldBODCashBalance), &TData::GetBODCashBalance)});
  }

  std::optional<TTerm> MarginLevel(const TData& row) {
    std::vector<const TData*> group{&row};
    if (FControl.IsAggregate() && FAccount.GetMasterType() == kMasterTypeConsolidated) {
      group = {TCustomAccountAdapter::GetInstance().GetConsolidatedAccountData(FAccount.GetAccountID(),
                                                                               row.GetCurrency())};
      if (group.front() == nullptr) return std::nullopt;
    } else if (FControl.IsAggregate()) {
      group = GetGroup(row, FLinked);
    }
    std::vector<TTerm> numerators;
    std::vector<TTerm> margins;
    for (const TData* data : group) {
      numerators.push_back(LevelNumerator(*data));
      margins.push_back(ReadAmount(*data, GetFieldName(kFieldInitialMargin), &TData::GetInitialMargin));
    }
    TTerm quotient = MakeOperation(TTermKind::kQuotient, GetWord("MarginShare"),
                                   {SumOf(GetWord("MarginCover"), std::move(numerators)),
                                    SumOf(GetFieldName(kFieldInitialMargin), std::move(margins))});
    return MakeOperation(TTermKind::kProduct, GetFieldName(kFieldMarginLevel),
                         {std::move(quotient), MakeInput(GetWord("Percent"), 100, {}, std::nullopt)});
  }

  static TTerm SumOf(std::string name, std::vector<TTerm> terms) {
    if (terms.size() == 1) return std::move(terms.front());
    return MakeOperation(TTermKind::kSum, std::move(name), std::move(terms));
  }

  // --- marginable value

  // The credit limit of an account in a currency; for none in each of its currencies, brought to the base.
  static void AddCreditLimits(const TCustomAccount& account, TCode currency, std::vector<TTerm>& terms) {
    const auto& currencies = TCustomCurrencyAdapter::GetInstance();
    const std::string& key =
        TCustomAccountAdapter::GetInstance().GetCustomFieldKey("oms_CustomAccountBalance", "CreditLimit");
    const auto read = [&](TCode code) {
      return MakeInput(GetWord("CreditLimit"), account.GetCustomBalance(code, key), account.GetAccountID(),
                       code);
    };
    if (!currency.IsEmpty()) return terms.push_back(read(currency));
    if (!currencies.IsMultiCurrency()) return terms.push_back(read(currencies.GetBaseCurrency()));
    std::vector<TCode> codes;
    account.GetCurrencyList(codes);
    for (const TCode code : codes) {
      if (currencies.IsCurrencyExcluded(code)) continue;
      terms.push_back(MakeIntoBase(read(code), code));
    }
  }

  TTerm Marginable(const TData& row) const {
    const auto& accounts = TCustomAccountAdapter::GetInstance();
    // A linked account has its one limit in base currency.
    const TCode limitCurrency =
        FLinked ? TCustomCurrencyAdapter::GetInstance().GetBaseCurrency() : row.GetCurrency();
    std::vector<TTerm> limits;
    std::vector<TTerm> amounts;
    const auto addAmount = [&amounts](const TData& data) {
      amounts.push_back(ReadAmount(data, GetWord("MarginableAmount"), &TData::MarginableAmount));
    };
    for (const TData* data : GetGroup(row)) {
      if (FLinked) data = FindLinkedData(*data);
      if (data == nullptr) continue;
      addAmount(*data);
      const TCustomAccount* account = accounts.GetAccount(data->GetAccountID());
      if (account != nullptr) AddCreditLimits(*account, limitCurrency, limits);
    }
    if (FControl.IsAggregate() && FAccount.IsMasterAccount() &&
        FAccount.GetMasterType() == kMasterTypeConsolidated) {
      amounts.clear();
      const TData* data = accounts.GetConsolidatedAccountData(FAccount.GetAccountID(), row.GetCurrency());
      if (data != nullptr) addAmount(*data);
    }
    return MakeOperation(TTermKind::kLower, GetFieldName(kFieldMarginableValue),
                         {MakeOperation(TTermKind::kSum, GetWord("CreditLimits"), std::move(limits)),
                          MakeOperation(TTermKind::kSum, GetWord("MarginableAmounts"), std::move(amounts))});
  }

  // --- currency ratio

  std::optional<TTerm> Ratio(const TData& row) const {
    // Several currencies together have no one ratio, and a line for all of them shows none.
    const bool lineOfAll = !FThreeLevels || row.GetCurrency().IsEmpty();
    if (lineOfAll && TCustomCurrencyAdapter::GetInstance().IsMultiCurrency()) {
      return std::nullopt;
    }
    TTerm ratio = MakeRatio(row.GetCurrency());
    const TCode to = FControl.GetConvertCurrency();
    if (TCustomCurrencyAdapter::GetInstance().GetCurrencyRatio(to) == 0) return ratio;
    return MakeOperation(TTermKind::kQuotient, GetFieldName(kFieldFxRatio),
                         {std::move(ratio), MakeRatio(to)});
  }

  TCustomAccountInfoDataControl& FControl;
  const TCustomAccount& FAccount;
  const bool FThreeLevels;
  const bool FConnect;  // China Connect is on
  const bool FLinked;   // and the account is seen from its linked side
  bool FNetEquity = false;
  std::int32_t FLevelMode = 0;
  bool FOwnPL = false;
};

bool IsTextField(std::int32_t field) {
  if (field >= kFirstCustomField) return !IsNumericCustomColumn(IntegerToText(field - kFirstCustomField));
  return field != kFieldFxRatio && FindSource(field) != nullptr;
}

// Limits of a master, whose one line for all currencies is blank while its group is summed.
bool IsHiddenForGroups(std::int32_t field) { return field == kFieldCreditLimit || field == kFieldMaxMargin; }

}  // namespace

std::optional<TTerm> ExplainFigure(TCustomAccountInfoDataControl& control, const TCustomAccount& account,
                                   std::int32_t field, bool threeLevels) {
  if (IsTextField(field)) return std::nullopt;
  if (!threeLevels && control.IsAggregate() && IsHiddenForGroups(field)) return std::nullopt;
  return TExplainer(control, account, threeLevels).Explain(field);
}

std::string GetSourceOfField(const TCustomAccountInfoDataControl& control, std::int32_t field) {
  if (const TSourceRow* row = FindSource(field)) return std::string(row->FSource);
  if (!IsTextField(field) && IsChinaConnectOn() && control.GetChinaConnectFlag()) {
    return "the account that China Connect links to this one, where nothing of the kind is kept";
  }
  return "the account's figures by currency";
}

}  // namespace margindesk
