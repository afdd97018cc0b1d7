#include "terminal/cli/ExplanationTerms.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "model/AccountInfoConstDef.h"
#include "model/ResourceText.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"

namespace margindesk {

namespace {

using TData = TCustomAccountData;

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

TTerm ReadOptionValue(const TData& data) {
  return MakeOperation(TTermKind::kDifference, GetFieldName(kFieldOptionValue),
                       {ReadField(data, kFieldEquity), ReadField(data, kFieldCashBalance)});
}

TTerm ReadNetTradedAmount(const TData& data) {
  return MakeOperation(TTermKind::kDifference, GetFieldName(kFieldNetTradedAmount),
                       {ReadAmount(data, GetWord("TradedFirst"), &TData::TradedAmountFirst),
                        ReadAmount(data, GetWord("TradedSecond"), &TData::TradedAmountSecond)});
}

TTerm ReadAvailableBalance(const TData& data) {
  TTerm before = MakeOperation(TTermKind::kSum, GetWord("AvailableBefore"),
                               {ReadAmount(data, GetWord("AvailableBase"), &TData::AvailableBase),
                                ReadAmount(data, GetWord("Additions"), &TData::AvailableAddition)});
  return MakeOperation(
      TTermKind::kDifference, GetFieldName(kFieldAvailableBal),
      {std::move(before), ReadAmount(data, GetWord("Deductions"), &TData::AvailableDeduction)});
}
// The fields that are reckoned from each account's record alone.
struct TRecordRule {
  std::int32_t FField;
  TTerm (*FRead)(const TData& data);
};
constexpr TRecordRule kRecordRules[] = {{kFieldOptionValue, &ReadOptionValue},
                                        {kFieldNetTradedAmount, &ReadNetTradedAmount},
                                        {kFieldAvailableBal, &ReadAvailableBalance}};

}  // namespace

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

std::string GetWord(std::string_view key, std::initializer_list<std::string_view> values) {
  const std::string resourceKey = std::string("Explain_").append(key);
  return FillText(TCustomLanguageManager::GetInstance().GetLanguageText("Host", resourceKey), values);
}

std::string GetFieldName(std::int32_t field) {
  if (field >= kFirstCustomField) {
    return TCustomLanguageManager::GetInstance().GetLanguageText("Columns_AccountInfo",
                                                                 IntegerToText(field - kFirstCustomField));
  }
  const auto catalogue = GetCatalogue();
  const auto row = std::ranges::find(catalogue, field, &TCatalogueRow::FId);
  return row == catalogue.end() ? std::string() : GetResourceText(row->FResourceKey);
}

TTerm MakeRatio(TCode currency) {
  return MakeInput(GetFieldName(kFieldFxRatio),
                   TCustomCurrencyAdapter::GetInstance().GetCurrencyRatio(currency), {}, currency);
}

TTerm MakeIntoBase(TTerm amount, TCode currency) {
  return MakeOperation(TTermKind::kProduct, GetWord("IntoBase", {currency.Text()}),
                       {std::move(amount), MakeRatio(currency)});
}

TTerm ReadField(const TData& data, std::int32_t field) {
  const auto* rule = std::ranges::find(kRecordRules, field, &TRecordRule::FField);
  if (rule != std::end(kRecordRules)) return rule->FRead(data);
  return MakeInput(GetFieldName(field), data.GetDataValue(field).AsFloatOr(0), data.GetAccountID(),
                   data.GetCurrency());
}

TTerm ReadAmount(const TData& data, std::string name, double (TData::*read)() const) {
  return MakeInput(std::move(name), (data.*read)(), data.GetAccountID(), data.GetCurrency());
}

}  // namespace margindesk
