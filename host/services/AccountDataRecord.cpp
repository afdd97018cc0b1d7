#include "host/services/AccountDataRecord.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "model/AccountInfoConstDef.h"

namespace margindesk {

namespace {

// A catalogue field and how the record's figures make it: the sum of up to three, each added or taken off.
struct TFieldFigures {
  struct TTerm {
    TFigure FFigure;
    double FSign;
  };

  std::int32_t FField;
  std::array<TTerm, 3> FTerms;
};

// Fields of several figures, and of figures that the book gives under no field of their own.
constexpr TFieldFigures kMadeFields[] = {
    {kFieldAvailableBal,
     {{{TFigure::kAvailableBase, 1}, {TFigure::kAvailableAddition, 1}, {TFigure::kAvailableDeduction, -1}}}},
    {kFieldOptionValue, {{{TFigure::kNetEquity, 1}, {TFigure::kCashBalance, -1}}}},
    {kFieldNetTradedAmount, {{{TFigure::kTradedAmountFirst, 1}, {TFigure::kTradedAmountSecond, -1}}}},
    {kFieldMarginableValue, {{{TFigure::kMarginableAmount, 1}}}},
    {kFieldPL, {{{TFigure::kOwnTotalPL, 1}}}},
    {kFieldUnrealizedPL, {{{TFigure::kOwnUnrealizedPL, 1}}}},
};

}  // namespace

TVariant TAccountDataRecord::GetDataValue(std::int32_t field) const {
  if (field >= kFirstCustomField) return GetCustomFigure(field - kFirstCustomField);
  if (const auto figure = FigureOfField(field)) return TVariant::Float(GetFigure(*figure));
  const auto* made = std::ranges::find(kMadeFields, field, &TFieldFigures::FField);
  if (made != std::end(kMadeFields)) {
    double sum = 0;
    for (const TFieldFigures::TTerm& term : made->FTerms) sum += GetFigure(term.FFigure) * term.FSign;
    return TVariant::Float(sum);
  }
  if (field == kFieldCurrency) return TVariant::Text(FFacts.FCurrency.Text());
  return FAccount.GetDataValue(field);
}

TVariant TAccountDataRecord::GetCustomFigure(std::int32_t number) const {
  const auto found = FFacts.FCustomFigures.find(number);
  if (found == FFacts.FCustomFigures.end()) return {};
  if (!IsNumericCustomColumn(IntegerToText(number))) return TVariant::Text(found->second);
  double value = 0;
  return TryTextToFloat(found->second, value) ? TVariant::Float(value) : TVariant();
}

}  // namespace margindesk
