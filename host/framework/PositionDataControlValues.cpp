// The position grid's cells.
#include <algorithm>
#include <iterator>

#include "host/framework/AveragePrice.h"
#include "host/framework/PositionFigures.h"
#include "model/AccountInfoConstDef.h"
#include "model/ResourceText.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/Formatter.h"
#include "model/contract/PositionAdapter.h"
#include "model/contract/Positionviewdatacontrol.h"

namespace margindesk {

namespace {

using TControl = TPositionViewDataControl;
using TPosition = TCustomPositionData;

constexpr std::int32_t kText = 0;
constexpr std::int32_t kAverage = -1;

// A column: how its text is made (a kind of the formatter, or one of the above) and its value.
struct TColumn {
  std::int32_t FField;
  std::int32_t FFormat;
  TVariant (*FRead)(TControl& control, const TPosition& position);
};

template <std::int32_t field>
TVariant ReadField(TControl& /*control*/, const TPosition& position) {
  return position.GetDataValue(field);
}

template <double (TPosition::*Read)() const>
TVariant ReadAmount(TControl& /*control*/, const TPosition& position) {
  return TVariant::Float((position.*Read)());
}

template <TCode (*Read)(const TPosition&)>
TVariant ReadCode(TControl& /*control*/, const TPosition& position) {
  return TVariant::Text(Read(position).Text());
}

TCode SymbolOf(const TPosition& position) { return position.GetSymbol(); }
TCode AccountOf(const TPosition& position) { return position.GetAccountID(); }

// The word, as value too: what a person sorts and exports is what he reads.
TVariant ReadSide(TControl& /*control*/, const TPosition& position) {
  const std::string side = position.GetDataString(kFieldSide);
  const bool isShort = side.empty() ? position.GetHoldingQuantity() < 0 : side == "S";
  return TVariant::Text(GetResourceText(isShort ? "Res_LSSide_Short" : "Res_LSSide_Long"));
}

template <std::int32_t field>
TVariant ReadOfAccount(TControl& /*control*/, const TPosition& position) {
  const TCustomAccount* account = TCustomAccountAdapter::GetInstance().GetAccount(position.GetAccountID());
  return account == nullptr ? TVariant::EmptyText() : account->GetDataValue(field);
}

TVariant ReadMarketValue(TControl& /*control*/, const TPosition& position) {
  double value = 0;
  return ReckonMarketValue(position, value) ? TVariant::Float(value) : TVariant();
}

TVariant ReadPL(TControl& control, const TPosition& position) {
  return TVariant::Float(position.IsPriceBasedPL() ? control.GetPL(position)
                                                   : position.GetPLFirstPart() + position.GetPLSecondPart());
}

// From the stored parts also where the profit and loss is computed from prices, as in the account's total.
TVariant ReadUnrealizedPL(TControl& /*control*/, const TPosition& position) {
  return TVariant::Float(position.GetPLFirstPart() + position.GetPLSecondPart() - position.GetRealizedPL());
}

TVariant ReadFxRatio(TControl& control, const TPosition& position) {
  const TCode currency = GetPositionCurrency(position);
  return currency.IsEmpty() ? TVariant()
                            : TVariant::Float(ConvertAmount(1, currency, control.GetConvertCurrency()));
}

// Of a product whose currency nobody knows there is nothing to convert.
template <TVariant (*Read)(TControl&, const TPosition&)>
TVariant ReadConverted(TControl& control, const TPosition& position) {
  const TVariant amount = Read(control, position);
  const TCode currency = GetPositionCurrency(position);
  if (!amount.IsNumber() || currency.IsEmpty()) return {};
  return TVariant::Float(ConvertAmount(amount.AsFloat(), currency, control.GetConvertCurrency()));
}

TVariant ReadAverage(TControl& control, const TPosition& position) {
  double price = 0;
  return control.GetAvgPrice(position, price) ? TVariant::Float(price) : TVariant();
}

constexpr TColumn kColumns[] = {
    {kFieldSymbol, kText, &ReadCode<&SymbolOf>},
    {kFieldAccount, kText, &ReadCode<&AccountOf>},
    {kFieldSide, kText, &ReadSide},
    {kFieldCurrency, kText, &ReadCode<&GetPositionCurrency>},
    {kFieldUser, kText, &ReadOfAccount<kFieldUser>},
    {kFieldAccountName, kText, &ReadOfAccount<kFieldAccountName>},
    {kFieldBODQty, kFormatQuantity, &ReadField<kFieldBODQty>},
    {kFieldVoucherQty, kFormatQuantity, &ReadField<kFieldVoucherQty>},
    {kFieldTodayBuyQty, kFormatQuantity, &ReadField<kFieldTodayBuyQty>},
    {kFieldTodaySellQty, kFormatQuantity, &ReadField<kFieldTodaySellQty>},
    {kFieldQty, kFormatQuantity, &ReadField<kFieldQty>},
    {kFieldCoveredQty, kFormatQuantity, &ReadField<kFieldCoveredQty>},
    {kFieldNetValue, kFormatAmount, &ReadMarketValue},
    {kFieldMarketValue, kFormatAmount, &ReadMarketValue},
    {kFieldPL, kFormatAmount, &ReadPL},
    {kFieldUnrealizedPL, kFormatAmount, &ReadUnrealizedPL},
    {kFieldRealizedPL, kFormatAmount, &ReadAmount<&TPosition::GetRealizedPL>},
    {kFieldTotalBuyAmount, kFormatAmount, &ReadAmount<&TPosition::GetCompletedBuyAmount>},
    {kFieldTotalSellAmount, kFormatAmount, &ReadAmount<&TPosition::GetCompletedSellAmount>},
    {kFieldFxRatio, kFormatRatio, &ReadFxRatio},
    {kPositionConvertedMarketValue, kFormatAmount, &ReadConverted<&ReadMarketValue>},
    {kPositionConvertedPL, kFormatAmount, &ReadConverted<&ReadPL>},
    {kPositionAveragePrice, kAverage, &ReadAverage},
    {kPositionBuyAveragePrice, kAverage, &ReadField<kPositionBuyAveragePrice>},
    {kPositionSellAveragePrice, kAverage, &ReadField<kPositionSellAveragePrice>},
};

const TColumn* FindColumn(std::int32_t field) {
  const auto* found = std::ranges::find(kColumns, field, &TColumn::FField);
  return found == std::end(kColumns) ? nullptr : found;
}

}  // namespace

TVariant TPositionViewDataControl::GetValue(std::int32_t row, std::int32_t column) {
  const TCustomPositionData* position = GetRowPosition(row);
  const TColumn* found = FindColumn(column);
  if (position == nullptr || found == nullptr) return {};
  const TVariant value = found->FRead(*this, *position);
  const bool dayAverage = column == kPositionBuyAveragePrice || column == kPositionSellAveragePrice;
  if (!dayAverage || !value.IsNumber()) return value;
  return TVariant::Float(FAveragePrices->Round(value.AsFloat(), column == kPositionBuyAveragePrice));
}

std::string TPositionViewDataControl::GetDisplayValue(std::int32_t row, std::int32_t column) {
  const TVariant value = GetValue(row, column);
  if (!value.IsNumber()) return value.AsText();
  const TColumn* found = FindColumn(column);
  if (found->FFormat == kAverage) return FAveragePrices->Format(value.AsFloat());
  return TCustomFormatter::GetInstance().FormatValue(value.AsFloat(), found->FFormat,
                                                     GetRowPosition(row)->GetSymbol(), true);
}

}  // namespace margindesk
