#include "terminal/cli/Explanation.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "host/framework/PositionFigures.h"
#include "model/AccountInfoConstDef.h"
#include "model/ResourceText.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/Icommon.h"
#include "model/contract/PositionAdapter.h"

namespace margindesk {

namespace {

using TData = TCustomAccountData;
using TPositionAmount = double (*)(TCustomAccountInfoDataControl& control,
                                   const TCustomPositionData& position);

// --- terms

std::optional<double> Combine(TTermKind kind, std::optional<double> left, std::optional<double> right) {
  if (!left || !right) return std::nullopt;
  switch (kind) {
    case TTermKind::kSum:
      return *left + *right;
    case TTermKind::kDifference:
      return *left - *right;
    case TTermKind::kProduct:
      return *left * *right;
    case TTermKind::kQuotient:
      return std::abs(*right) > kZeroTolerance ? std::optional(*left / *right) : std::nullopt;
    case TTermKind::kLower:
      return std::min(*left, *right);
    case TTermKind::kInput:
      break;
  }
  return std::nullopt;
}

TTerm MakeOperation(TTermKind kind, std::string name, std::vector<TTerm> terms) {
  TTerm term{kind, std::move(name), 0, std::move(terms), {}, {}, {}};
  for (std::size_t i = 0; i < term.FTerms.size(); ++i) {
    term.FValue = i == 0 ? term.FTerms[i].FValue : Combine(kind, term.FValue, term.FTerms[i].FValue);
  }
  return term;
}

TTerm MakeInput(std::string name, double value, TCode account, std::optional<TCode> currency) {
  return {TTermKind::kInput, std::move(name), value, {}, account, currency, {}};
}

TTerm MakeRatio(TCode currency) {
  return MakeInput("Ratio", TCustomCurrencyAdapter::GetInstance().GetCurrencyRatio(currency), {}, currency);
}

// --- what is read

std::string GetFieldName(std::int32_t field) {
  const auto catalogue = GetCatalogue();
  const auto row = std::ranges::find(catalogue, field, &TCatalogueRow::FId);
  return row == catalogue.end() ? "Custom column" : GetResourceText(row->FResourceKey);
}

TTerm ReadField(const TData& data, std::int32_t field) {
  return MakeInput(GetFieldName(field), data.GetDataValue(field).AsFloatOr(0), data.GetAccountID(),
                   data.GetCurrency());
}

TTerm ReadAmount(const TData& data, std::string_view name, double (TData::*read)() const) {
  return MakeInput(std::string(name), (data.*read)(), data.GetAccountID(), data.GetCurrency());
}

TTerm ReadOptionValue(const TData& data) {
  return MakeOperation(TTermKind::kDifference, GetFieldName(kFieldOptionValue),
                       {ReadField(data, kFieldEquity), ReadField(data, kFieldCashBalance)});
}

TTerm ReadNetTradedAmount(const TData& data) {
  return MakeOperation(TTermKind::kDifference, GetFieldName(kFieldNetTradedAmount),
                       {ReadAmount(data, "First traded amount", &TData::TradedAmountFirst),
                        ReadAmount(data, "Second traded amount", &TData::TradedAmountSecond)});
}

TTerm ReadAvailableBalance(const TData& data) {
  TTerm before = MakeOperation(TTermKind::kSum, "Available before deductions",
                               {ReadAmount(data, "Available base amount", &TData::AvailableBase),
                                ReadAmount(data, "Additions", &TData::AvailableAddition)});
  return MakeOperation(TTermKind::kDifference, GetFieldName(kFieldAvailableBal),
                       {std::move(before), ReadAmount(data, "Deductions", &TData::AvailableDeduction)});
}

// The fields that are reckoned from each account's record alone.
struct TRecordRule {
  std::int32_t FField;
  TTerm (*FRead)(const TData& data);
};
constexpr TRecordRule kRecordRules[] = {{kFieldOptionValue, &ReadOptionValue},
                                        {kFieldNetTradedAmount, &ReadNetTradedAmount},
                                        {kFieldAvailableBal, &ReadAvailableBalance}};

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
      : FControl(control), FAccount(account), FThreeLevels(threeLevels) {
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
    const bool whole = FThreeLevels && FControl.GetFilterCurrency().IsEmpty();
    if (!whole) return Converted(Figure(*row, field), row->GetCurrency());
    if (std::ranges::find(kAccountFields, field) != std::end(kAccountFields)) return Figure(*row, field);
    return Converted(OverRows(*row, field), {});
  }

 private:
  // The data of the first line: the filter currency's, else the total row's.
  const TData* FindFirstRow() const {
    const TCode filter = FControl.GetFilterCurrency();
    const TData* row = FAccount.GetCurrencyData(filter);
    const auto& currencies = TCustomCurrencyAdapter::GetInstance();
    if (row != nullptr || FThreeLevels || !filter.IsEmpty() || currencies.IsMultiCurrency()) return row;
    return FAccount.GetCurrencyData(currencies.GetBaseCurrency());
  }

  TTerm Converted(TTerm amount, TCode currency) const {
    const TCode to = FControl.GetConvertCurrency();
    if (currency == to) return amount;
    const std::string name = amount.FName + ", converted";
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
      rows.push_back(MakeOperation(TTermKind::kProduct, "Row of its own: " + currency.Text(),
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
                           {OverPositions(data, kFieldMarketValue), OverAccounts(data, kFieldCashBalance)});
    }
    if (field == kFieldNetValue) {
      return MakeOperation(TTermKind::kSum, GetFieldName(field),
                           {NetPL(data, kFieldPL), OverAccounts(data, kFieldBODCashBalance)});
    }
    if (field == kFieldMarginableValue) return Marginable(data);
    return OverAccounts(data, field);
  }

  TTerm NetPL(const TData& data, std::int32_t field) {
    if (!FOwnPL) return OverPositions(data, field);
    return ReadAmount(data, "Back office's " + GetFieldName(field),
                      field == kFieldPL ? &TData::GetOwnTotalPL : &TData::GetOwnUnrealizedPL);
  }

  // The row's data and, while they are summed, those of the sub-accounts in the same currency.
  std::vector<const TData*> GetGroup(const TData& data) const {
    std::vector<const TData*> group{&data};
    for (const auto& [identifier, subAccount] : FControl.GetSubAccounts()) {
      const TData* own = subAccount == nullptr ? nullptr : subAccount->GetCurrencyData(data.GetCurrency());
      if (own != nullptr) group.push_back(own);
    }
    return group;
  }

  TTerm OverAccounts(const TData& data, std::int32_t field) const {
    const auto* rule = std::ranges::find(kRecordRules, field, &TRecordRule::FField);
    std::vector<TTerm> terms;
    for (const TData* own : GetGroup(data)) {
      terms.push_back(rule == std::end(kRecordRules) ? ReadField(*own, field) : rule->FRead(*own));
    }
    if (terms.size() == 1) return std::move(terms.front());
    return MakeOperation(TTermKind::kSum, GetFieldName(field), std::move(terms));
  }

  TTerm OverPositions(const TData& data, std::int32_t field) {
    TTerm sum = MakeOperation(TTermKind::kSum, GetFieldName(field) + " of the positions", {});
    AddPositions(FControl.GetAccount(), data.GetCurrency(), field, sum.FTerms);
    for (const auto& [identifier, subAccount] : FControl.GetSubAccounts()) {
      if (subAccount != nullptr) {
        AddPositions(subAccount->GetAccountID(), data.GetCurrency(), field, sum.FTerms);
      }
    }
    return MakeOperation(TTermKind::kSum, std::move(sum.FName), std::move(sum.FTerms));
  }

  // One term a currency: the wanted one alone, or for no currency each that counts, brought to the base.
  void AddPositions(TCode account, TCode wanted, std::int32_t field, std::vector<TTerm>& terms) {
    TPositionMap positions;
    TCustomPositionAdapter::GetInstance().GetPositionList(account, positions);
    std::vector<TTerm> sums;
    for (const TCustomPositionData* position : positions.GetPositions()) {
      const TCode currency = GetPositionCurrency(*position);
      const bool counts = wanted.IsEmpty()
                              ? !TCustomCurrencyAdapter::GetInstance().IsCurrencyExcluded(currency)
                              : currency.SameText(wanted);
      if (currency.IsEmpty() || !counts) continue;
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
      if (!wanted.IsEmpty()) {
        terms.push_back(std::move(sum));
        continue;
      }
      const TCode currency = *sum.FCurrency;
      const std::string name = "From " + currency.Text() + " into base currency";
      terms.push_back(MakeOperation(TTermKind::kProduct, name, {std::move(sum), MakeRatio(currency)}));
    }
  }

  // --- margin level

  TTerm LevelNumerator(const TData& data) {
    if (FNetEquity) return ReadAmount(data, GetFieldName(kFieldEquity), &TData::GetNetEquity);
    if (FLevelMode == 1) return ReadAmount(data, GetFieldName(kFieldCashBalance), &TData::GetCashBalance);
    return MakeOperation(TTermKind::kSum,
                         GetFieldName(kFieldPL) + " and " + GetFieldName(kFieldBODCashBalance),
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
      group = GetGroup(row);
    }
    std::vector<TTerm> numerators;
    std::vector<TTerm> margins;
    for (const TData* data : group) {
      numerators.push_back(LevelNumerator(*data));
      margins.push_back(ReadAmount(*data, GetFieldName(kFieldInitialMargin), &TData::GetInitialMargin));
    }
    TTerm quotient = MakeOperation(TTermKind::kQuotient, "Share of the margin",
                                   {SumOf("What covers the margin", std::move(numerators)),
                                    SumOf(GetFieldName(kFieldInitialMargin), std::move(margins))});
    return MakeOperation(TTermKind::kProduct, GetFieldName(kFieldMarginLevel),
                         {std::move(quotient), MakeInput("Percent", 100, {}, std::nullopt)});
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
      return MakeInput("Credit limit", account.GetCustomBalance(code, key), account.GetAccountID(), code);
    };
    if (!currency.IsEmpty()) return terms.push_back(read(currency));
    if (!currencies.IsMultiCurrency()) return terms.push_back(read(currencies.GetBaseCurrency()));
    std::vector<TCode> codes;
    account.GetCurrencyList(codes);
    for (const TCode code : codes) {
      if (currencies.IsCurrencyExcluded(code)) continue;
      terms.push_back(MakeOperation(TTermKind::kProduct, "From " + code.Text() + " into base currency",
                                    {read(code), MakeRatio(code)}));
    }
  }

  TTerm Marginable(const TData& row) const {
    const auto& accounts = TCustomAccountAdapter::GetInstance();
    std::vector<TTerm> limits;
    std::vector<TTerm> amounts;
    const auto addAmount = [&amounts](const TData& data) {
      amounts.push_back(ReadAmount(data, "Marginable amount", &TData::MarginableAmount));
    };
    for (const TData* data : GetGroup(row)) {
      addAmount(*data);
      const TCustomAccount* account = accounts.GetAccount(data->GetAccountID());
      if (account != nullptr) AddCreditLimits(*account, row.GetCurrency(), limits);
    }
    if (FControl.IsAggregate() && FAccount.IsMasterAccount() &&
        FAccount.GetMasterType() == kMasterTypeConsolidated) {
      amounts.clear();
      const TData* data = accounts.GetConsolidatedAccountData(FAccount.GetAccountID(), row.GetCurrency());
      if (data != nullptr) addAmount(*data);
    }
    return MakeOperation(TTermKind::kLower, GetFieldName(kFieldMarginableValue),
                         {MakeOperation(TTermKind::kSum, "Credit limits", std::move(limits)),
                          MakeOperation(TTermKind::kSum, "Marginable amounts", std::move(amounts))});
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
  if (IsTextField(field) || IsChinaConnectOn()) return std::nullopt;
  if (!threeLevels && control.IsAggregate() && IsHiddenForGroups(field)) return std::nullopt;
  return TExplainer(control, account, threeLevels).Explain(field);
}

std::string GetSourceOfField(std::int32_t field) {
  const TSourceRow* row = FindSource(field);
  return std::string(row == nullptr ? "the account's figures by currency" : row->FSource);
}

}  // namespace margindesk
