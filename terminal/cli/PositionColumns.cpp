#include "terminal/cli/PositionColumns.h"

#include "model/AccountInfoConstDef.h"
#include "model/ResourceText.h"
#include "model/contract/Constdef.h"
#include "model/contract/PositionAdapter.h"

namespace margindesk {

namespace {

using TSource = TPositionSource;

template <std::int32_t field>
TVariant ReadField(const TSource& source) {
  return source.FPosition.GetDataValue(field);
}

template <double (TCustomPositionData::*Read)() const>
TVariant ReadAmount(const TSource& source) {
  return TVariant::Float((source.FPosition.*Read)());
}

TVariant ReadKey(const TSource& source) { return TVariant::Text(std::string(source.FKey)); }

TVariant ReadSymbol(const TSource& source) { return TVariant::Text(source.FPosition.GetSymbol().Text()); }

TVariant ReadName(const TSource& source) {
  const TProductRecord* product = source.FData.FindProduct(source.FPosition.GetSymbol());
  if (product == nullptr || product->GetFacts().FProduct.FName.empty()) return TVariant::Null();
  return TVariant::Text(product->GetFacts().FProduct.FName);
}

// The product's, else what the reference item of a product that is not listed says.
TVariant ReadCurrency(const TSource& source) {
  const TProductRecord* product = source.FData.FindProduct(source.FPosition.GetSymbol());
  if (product != nullptr) return TVariant::Text(product->GetCurrency().Text());
  const TCustomSubItem* item = source.FPosition.GetReferenceItem();
  if (item == nullptr || !item->HasField(kItemCurrency)) return TVariant::Null();
  return TVariant::Text(item->GetFieldText(kItemCurrency));
}

TVariant ReadMarketValue(const TSource& source) {
  const TCustomPositionData& position = source.FPosition;
  double value = 0;
  const bool priced = TCustomPositionAdapter::GetInstance().GetPositionMarketValue(
      position.GetSymbol(), position.GetHoldingQuantity() - position.GetExcludedQuantity(), value);
  return priced ? TVariant::Float(value) : TVariant::Null();
}

TVariant ReadPL(const TSource& source) {
  const TCustomPositionData& position = source.FPosition;
  return TVariant::Float(position.IsPriceBasedPL() ? source.FControl.GetPL(position)
                                                   : position.GetPLFirstPart() + position.GetPLSecondPart());
}

TVariant ReadUnrealizedPL(const TSource& source) {
  const TCustomPositionData& position = source.FPosition;
  // From the stored parts also where the profit and loss is computed from prices, as in the account's total.
  return TVariant::Float(position.GetPLFirstPart() + position.GetPLSecondPart() - position.GetRealizedPL());
}

constexpr auto kColumns = std::to_array<TPositionColumn>({
    {"key", "", 0, false, &ReadKey},
    {"symbol", "Res_Symbol", 0, true, &ReadSymbol},
    {"name", "PositionList_Name", 0, true, &ReadName},
    {"side", "Res_LSSide", 0, true, &ReadField<kFieldSide>},
    {"currency", "Res_Currency", 0, true, &ReadCurrency},
    {"quantity", "Res_PositionQty", kFormatQuantity, true, &ReadField<kFieldQty>},
    {"bod_quantity", "Res_BODQty", kFormatQuantity, false, &ReadField<kFieldBODQty>},
    {"today_buy_quantity", "Res_TodayBuyQty", kFormatQuantity, false, &ReadField<kFieldTodayBuyQty>},
    {"today_sell_quantity", "Res_TodaySellQty", kFormatQuantity, false, &ReadField<kFieldTodaySellQty>},
    {"voucher_quantity", "Res_Voucher", kFormatQuantity, false, &ReadField<kFieldVoucherQty>},
    {"covered_quantity", "Res_Covered", kFormatQuantity, false, &ReadField<kFieldCoveredQty>},
    {"holding_quantity", "", kFormatQuantity, false, &ReadAmount<&TCustomPositionData::GetHoldingQuantity>},
    {"excluded_quantity", "", kFormatQuantity, false, &ReadAmount<&TCustomPositionData::GetExcludedQuantity>},
    {"average_price", "Res_Precision_AvgPrice", kAveragePrice, false, &ReadField<kPositionAveragePrice>},
    {"buy_amount", "Res_TotalBuy", kFormatAmount, false,
     &ReadAmount<&TCustomPositionData::GetCompletedBuyAmount>},
    {"sell_amount", "Res_TotalSell", kFormatAmount, false,
     &ReadAmount<&TCustomPositionData::GetCompletedSellAmount>},
    {"market_value", "Res_MarketValue", kFormatAmount, true, &ReadMarketValue},
    {"pl", "Res_PL", kFormatAmount, true, &ReadPL},
    {"realized_pl", "Res_RealizedPL", kFormatAmount, true, &ReadAmount<&TCustomPositionData::GetRealizedPL>},
    {"unrealized_pl", "Res_UnrealizedPL", kFormatAmount, true, &ReadUnrealizedPL},
});

}  // namespace

std::span<const TPositionColumn> GetPositionColumns() noexcept { return kColumns; }

const std::string& GetCaption(const TPositionColumn& column) {
  const bool resource = column.FResourceKey.starts_with("Res_");
  return TCustomLanguageManager::GetInstance().GetLanguageText(resource ? Const_ResourceStringTag : "Host",
                                                               column.FResourceKey);
}

std::string GetDisplayText(const TPositionColumn& column, const TVariant& value,
                           const TFormatter& formatter) {
  if (column.FFormat == 0 || !value.IsNumber()) return value.AsText();
  if (column.FFormat == kAveragePrice) return formatter.FormatAveragePrice(value.AsFloat(), true);
  return formatter.FormatValue(value.AsFloat(), column.FFormat, TCode(), true);
}

}  // namespace margindesk
