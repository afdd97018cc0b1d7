// The order grid: its columns, what edits their cells and what the cells show.
#include <cmath>

#include "marginsim/MarginSimulatorView.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "model/contract/Formatter.h"
#include "model/contract/GlobalChannelManager.h"

namespace margindesk {

namespace {

struct TOrderColumn {
  std::int32_t FId;
  std::string_view FHeaderKey;
  std::int32_t FWidth;  // pixels
  bool FNumeric;
};
constexpr TOrderColumn kOrderColumns[] = {
    {kOrderColumnValidity, "", 30, false},
    {kOrderColumnSymbol, "Res_Symbol", 100, false},
    {kOrderColumnSide, "Res_Side", 60, false},
    {kOrderColumnPrice, "Res_OrderPrice", 100, true},
    {kOrderColumnQuantity, "Res_OrderQty", 100, true},
    {kOrderColumnOpenClose, "Res_OpenClose", 100, false},
    {kOrderColumnPrincipal, "Res_Principal", 100, false},
    {kOrderColumnStatus, "Res_Status", 60, false},
};

TAlignment GetAlignment(THeaderAlignment alignment) {
  return alignment == THeaderAlignment::Left     ? TAlignment::Left
         : alignment == THeaderAlignment::Center ? TAlignment::Center
                                                 : TAlignment::Right;
}

}  // namespace

void TMarginSimulatorFrame::InitializeGrid() {
  TSymbolListRecord record;
  record.FSelect = MakeHandler<&TMarginSimulatorFrame::HandleSelectSymbol>(this);
  record.FOwner = this;
  TCustomGlobalChannelManager::GetInstance().SendChannelMessage(kMessageSymbolList, &record);
  FSymbolListView = record.FControl;
  if (FSymbolListView != nullptr) FSymbolListView->SetVisible(false);  // until it drops down
  epSymbol->FPopupControl = FSymbolListView;

  std::vector<TGridColumn> columns;
  for (const TOrderColumn& described : kOrderColumns) {
    FColList.push_back(TColumnInfo::AddColumn(described.FId, described.FHeaderKey, described.FWidth, "",
                                              described.FNumeric));
    TColumnInfo& info = *FColList.back();
    info.FAllowEditing = described.FId != kOrderColumnValidity;
    TGridColumn& column = columns.emplace_back();
    column.FTag = info.FId;
    column.FCaption = GetResourceHeader(info.FResourceKey);
    column.FAllowEditing = column.FAllowFocusing = info.FAllowEditing;
    column.FAllowSorting = false;
    column.FHeaderAlignment = GetAlignment(info.FHeaderAlignment);
    column.FVisible = info.FVisible;
    column.FWidth = info.FWidth;
    if (info.FMinWidth > 0) column.FMinWidth = info.FMinWidth;
    column.FNumeric = info.FNumeric;
    column.FShowEditButtons = true;
    switch (info.FId) {
      case kOrderColumnSymbol:
        column.FProperties = epSymbol;
        column.FOnValidate = MakeEvent<&TMarginSimulatorFrame::SymbolCellValidate>(this);
        break;
      case kOrderColumnPrice:
      case kOrderColumnQuantity:
        column.FProperties = info.FId == kOrderColumnPrice ? epPrice : epQuantity;
        column.FOnGetDisplayText = MakeEvent<&TMarginSimulatorFrame::OrderGridColumnGetDisplayText>(this);
        break;
      case kOrderColumnOpenClose:
        column.FProperties = epOpenClose;
        break;
      case kOrderColumnPrincipal:
        column.FProperties = epPrincipal;
        break;
      default:
        column.FOnGetProperties = MakeEvent<&TMarginSimulatorFrame::OrderGridGetProperties>(this);
    }
  }
  OrderGridView->SetColumns(std::move(columns));
}

const TGridColumn* TMarginSimulatorFrame::GetGridColumn(std::int32_t id) const {
  return OrderGridView->FindColumn(id);
}

double TMarginSimulatorFrame::GetDisplayPriceValue(double price, std::string_view symbol) {
  return ToDisplayPrice(price, GetPriceMultiplier(TCode(symbol)));
}

double TMarginSimulatorFrame::GetRealPriceValue(double price, std::string_view symbol) {
  return ToRealPrice(price, GetPriceMultiplier(TCode(symbol)));
}

TCode TMarginSimulatorFrame::GetRowSymbol(std::int32_t record) const {
  return TCode(TrimText(OrderGridView->GetValue(record, kOrderColumnSymbol).AsText()));
}

void TMarginSimulatorFrame::OrderGridGetProperties(const TGridColumn& column, std::int32_t record,
                                                   TEditProperties*& properties) {
  switch (column.FTag) {
    case kOrderColumnStatus:
      properties = epiStatus;
      break;
    case kOrderColumnSide:
      properties = epiSide;
      break;
    case kOrderColumnValidity: {
      const bool invalid = OrderGridView->GetValue(record, kOrderColumnValidity).AsFloatOr(0) != 0;
      properties = invalid ? epiInvalidInput : epiValidInput;
      break;
    }
    default:
      break;
  }
}

// Wanted: a cell shows the real price and its editor the displayed one.
void TMarginSimulatorFrame::OrderGridColumnGetDisplayText(const TGridColumn& column, std::int32_t record,
                                                          std::string& text) {
  const TVariant value = OrderGridView->GetValue(record, column.FTag);
  if (!value.IsNumber()) return;
  const auto& formatter = TCustomFormatter::GetInstance();
  if (column.FTag == kOrderColumnQuantity) {
    text = formatter.FormatValue(value.AsFloat(), kFormatQuantity, TCode(), true);
  } else if (column.FTag == kOrderColumnPrice) {
    const TCode symbol = GetRowSymbol(record);
    text =
        formatter.FormatValue(GetRealPriceValue(value.AsFloat(), symbol.Text()), kFormatPrice, symbol, true);
  }
}

}  // namespace margindesk
