#include "marginsim/BatchSubmitOrderDataControl.h"

#include <string_view>

#include "marginsim/OrderColumns.h"
#include "model/contract/Formatter.h"
#include "model/contract/OrderAdapter.h"

namespace margindesk {

namespace {

struct TColumn {
  std::int32_t FId;
  std::string_view FResourceKey;
  std::int32_t FWidth;
  bool FNumeric;
};

constexpr TColumn kColumns[] = {
    {kOrderColumnSymbol, "Res_Symbol", 50, false},    {kOrderColumnSide, "Res_Side", 80, false},
    {kOrderColumnAccount, "Res_Account", 80, false},  {kOrderColumnPrice, "Res_OrderPrice", 70, true},
    {kOrderColumnQuantity, "Res_OrderQty", 70, true}, {kOrderColumnStatus, "Res_Status", 40, false},
    {kOrderColumnRemark, "Res_Remark", 100, false},
};

TColumnList MakeColumns() {
  TColumnList columns;
  for (const TColumn& column : kColumns) {
    columns.push_back(
        TColumnInfo::AddColumn(column.FId, column.FResourceKey, column.FWidth, {}, column.FNumeric));
  }
  return columns;
}

}  // namespace

void TCustomBatchSubmitOrderDataControl::InitData(const TClientOrderList& orders) {
  ClearData();
  auto& adapter = TCustomOrderAdapter::GetInstance();
  for (const auto& order : orders) {
    FOrderList.push_back(adapter.NewClientOrder());
    FOrderList.back()->Assign(*order);
  }
}

std::int32_t TCustomBatchSubmitOrderDataControl::GetCount() {
  return static_cast<std::int32_t>(FOrderList.size());
}

const TColumnList* TCustomBatchSubmitOrderDataControl::GetColList() {
  static const TColumnList kList = MakeColumns();
  return &kList;
}

const TCustomClientOrder* TCustomBatchSubmitOrderDataControl::FindOrder(std::int32_t recordIndex) const {
  const auto index = static_cast<std::size_t>(recordIndex);
  return recordIndex < 0 || index >= FOrderList.size() ? nullptr : FOrderList[index].get();
}

TVariant TCustomBatchSubmitOrderDataControl::GetValue(std::int32_t recordIndex, std::int32_t attribute) {
  const TCustomClientOrder* order = FindOrder(recordIndex);
  if (order == nullptr) return TVariant::EmptyText();
  const auto& adapter = TCustomOrderAdapter::GetInstance();
  switch (attribute) {
    case kOrderColumnSymbol:
      return TVariant::Text(order->GetSymbol());
    case kOrderColumnSide:
      return TVariant::Text(adapter.GetSideText(*order));
    case kOrderColumnAccount:
      return TVariant::Text(order->GetAccount());
    case kOrderColumnPrice:
      return TVariant::Float(order->GetPrice());
    case kOrderColumnQuantity:
      return TVariant::Float(order->GetQuantity());
    case kOrderColumnStatus:
      return TVariant::Text(adapter.GetStatusText(*order));
    case kOrderColumnRemark:
      return TVariant::Text(adapter.GetRemarkText(*order));
    default:
      return TVariant::EmptyText();
  }
}

std::string TCustomBatchSubmitOrderDataControl::GetDisplayValue(std::int32_t recordIndex,
                                                                std::int32_t attribute) {
  const TCustomClientOrder* order = FindOrder(recordIndex);
  if (order == nullptr) return {};
  const auto& formatter = TCustomFormatter::GetInstance();
  if (attribute == kOrderColumnPrice)
    return formatter.FormatValue(order->GetPrice(), kFormatPrice, order->GetSymbol(), true);
  if (attribute == kOrderColumnQuantity)
    return formatter.FormatValue(order->GetQuantity(), kFormatQuantity, order->GetSymbol(), true);
  return GetValue(recordIndex, attribute).AsText();
}

bool TCustomBatchSubmitOrderDataControl::GetRowValue(std::int32_t /*recordIndex*/, const void*& value) {
  value = nullptr;
  return false;
}

bool TCustomBatchSubmitOrderDataControl::GetColValue(std::int32_t /*itemIndex*/, const void*& value) {
  value = nullptr;
  return false;
}

}  // namespace margindesk
