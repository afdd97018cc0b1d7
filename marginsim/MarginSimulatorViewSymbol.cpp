// A symbol in the order grid: how it is written, what its row gets from its reference data, and the waiting
// for data that has not come yet.
#include "marginsim/MarginSimulatorDataControl.h"
#include "marginsim/MarginSimulatorView.h"
#include "marginsim/SymbolFacts.h"
#include "model/ResourceText.h"
#include "model/contract/EditorManager.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/SubscribeAdapter.h"

namespace margindesk {

namespace {

bool IsEmptyCell(const TVariant& value) { return value.AsText().empty(); }

}  // namespace

bool TMarginSimulatorFrame::IsValidSymbol(TCode /*symbol*/) { return true; }

void TMarginSimulatorFrame::SymbolCellValidate(TVariant& displayValue, std::string& errorText) {
  SymbolOnValidate(displayValue, errorText);
  // A row that was blanked and then got a symbol again before it went stays.
  const bool named = !TrimText(displayValue.AsText()).empty();
  if (named && FPendingDeleteRecordIndex == OrderGridView->GetFocusedRecordIndex()) {
    FPendingDeleteRecordIndex = -1;
  }
}

void TMarginSimulatorFrame::SymbolOnValidate(TVariant& displayValue, std::string& /*errorText*/) {
  const std::int32_t record = OrderGridView->GetFocusedRecordIndex();
  const std::string typed = displayValue.AsText();
  if (TrimText(typed).empty()) {
    if (record >= 0 && record < OrderGridView->GetRecordCount() - 1) FPendingDeleteRecordIndex = record;
    return;
  }
  const TCode symbol(TEditorManager::GetInstance().GetConvertSymbol(PadSymbol(typed)));
  displayValue = TVariant::Text(symbol.Text());
  if (!IsValidSymbol(symbol)) {
    displayValue = TVariant::Text(" ");
    return;
  }
  CheckSymbolState(symbol);
  if (record < 0) return;
  const TControlUpdate update(*OrderGridView);
  const std::int32_t count = OrderGridView->GetRecordCount();
  if (record == count - 1) OrderGridView->SetRecordCount(count + 1);
  FillRow(symbol);
}

void TMarginSimulatorFrame::FillRow(TCode symbol) {
  const std::int32_t record = OrderGridView->GetFocusedRecordIndex();
  for (const TGridColumn& column : OrderGridView->GetColumns()) {
    const TVariant value = OrderGridView->GetValue(record, column.FTag);
    if (IsEmptyCell(value)) {
      const TVariant prefilled = GetPrefilledValue(column.FTag, symbol);
      if (!prefilled.IsUnassigned()) OrderGridView->SetValue(record, column.FTag, prefilled);
      continue;
    }
    const bool offered =
        column.FTag == kOrderColumnOpenClose   ? CheckSymbolOpenCloseValidation(symbol, value.AsText())
        : column.FTag == kOrderColumnPrincipal ? CheckSymbolPrincipalValidation(symbol, value.AsText())
                                               : true;
    if (!offered) OrderGridView->SetValue(record, column.FTag, TVariant::Null());
  }
}

// Unassigned for a column that stays empty.
TVariant TMarginSimulatorFrame::GetPrefilledValue(std::int32_t column, TCode symbol) const {
  switch (column) {
    case kOrderColumnPrice: {
      const TCustomSubItem* item = FindReferenceItem(symbol);
      if (item == nullptr || !item->HasField(kItemReferencePrice)) return {};
      return TVariant::Float(GetDisplayPriceValue(item->GetFieldFloat(kItemReferencePrice), symbol.Text()));
    }
    case kOrderColumnQuantity:
      return TVariant::Float(GetLotSize(symbol));
    case kOrderColumnStatus:
      return TVariant::Text(GetResourceText("Res_Status_Pend"));
    case kOrderColumnSide:
      return TVariant::Text(GetResourceText("Res_Side_Buy"));
    default:
      return {};
  }
}

void TMarginSimulatorFrame::CheckSymbolState(TCode symbol) {
  auto& subscriptions = TCustomSubscribeAdapter::GetInstance();
  TCustomSubItem* const item = subscriptions.GetSubItem(symbol, kReferenceService);
  if (item != nullptr && item->GetStatus() != kItemReady && FSubscribedList.emplace(symbol, item).second) {
    subscriptions.AddSymbolHandler(item, MakeHandler<&TMarginSimulatorFrame::SymbolUpdate>(this), this);
  }
  FindSpreadTable(symbol);  // so that it is there when a price is spun
}

void TMarginSimulatorFrame::HandleSelectSymbol(void* /*sender*/, void* data) {
  const auto* chosen = static_cast<const TCustomMarketData*>(data);
  const std::int32_t record = OrderGridView->GetFocusedRecordIndex();
  if (chosen != nullptr && !chosen->GetSymbol().IsEmpty() && record >= 0 &&
      GetGridColumn(kOrderColumnSymbol) != nullptr) {
    OrderGridView->CancelEditor();  // what was typed into the cell before is not meant any more
    TVariant value = TVariant::Text(chosen->GetSymbol().Text());
    std::string errorText;
    SymbolCellValidate(value, errorText);
    if (!TrimText(value.AsText()).empty()) {
      OrderGridView->SetValue(record, kOrderColumnSymbol, std::move(value));
    }
  }
  if (FSymbolListView != nullptr) FSymbolListView->SetVisible(false);
}

void TMarginSimulatorFrame::SymbolUpdate(void* /*sender*/, void* data) {
  if (data == nullptr) return;
  const TSubItemMap items = *static_cast<const TSubItemMap*>(data);  // what follows may ask for others
  for (const auto& [symbol, item] : items) {
    if (item == nullptr || !FSubscribedList.contains(symbol)) continue;
    if (item->GetStatus() == kItemReady) {
      FSubscribedList.erase(symbol);
      TCustomSubscribeAdapter::GetInstance().RemoveSymbolHandlers(item, this);
    }
    ReCheckSymbol(item->GetSymbolCode());
  }
}

void TMarginSimulatorFrame::ReCheckSymbol(TCode symbol) {
  const TControlUpdate update(*OrderGridView);
  for (std::int32_t record = 0; record < OrderGridView->GetRecordCount(); ++record) {
    if (GetRowSymbol(record) != symbol) continue;
    if (!IsValidSymbol(symbol)) {
      if (record < OrderGridView->GetRecordCount() - 1) {
        OrderGridView->DeleteRecord(record--);
      } else {
        OrderGridView->SetValue(record, kOrderColumnSymbol, TVariant::Null());
      }
      continue;
    }
    // Wanted: it is the row under focus that is filled in, whichever row the symbol stands in, and the
    // symbol's cell stays as it is.
    TVariant value = OrderGridView->GetValue(record, kOrderColumnSymbol);
    std::string errorText;
    SymbolOnValidate(value, errorText);
  }
}

void TMarginSimulatorFrame::ClearSubscribeList() {
  for (const auto& [symbol, item] : FSubscribedList) {
    TCustomSubscribeAdapter::GetInstance().RemoveSymbolHandlers(item, this);
  }
  FSubscribedList.clear();
}

}  // namespace margindesk
