// Editing prices and quantities: the steps of their spin buttons, and the snapping of what was spun, but not
// of what was typed, to whole lots and ticks.
#include <cmath>
#include <optional>

#include "controls/TextEdit.h"
#include "marginsim/MarginSimulatorView.h"
#include "marginsim/SymbolFacts.h"
#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

constexpr std::int32_t kTableOfBands = 1;

// Set while it lives.
class TGuard {
 public:
  explicit TGuard(bool& flag) : FFlag(flag) { FFlag = true; }
  ~TGuard() { FFlag = false; }
  TGuard(const TGuard&) = delete;
  TGuard& operator=(const TGuard&) = delete;

 private:
  bool& FFlag;
};

std::optional<double> Find(const std::map<std::int32_t, double>& values, std::int32_t record) {
  const auto found = values.find(record);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

void TMarginSimulatorFrame::OrderGridViewEditing(const TGridColumn& column, bool& /*allowed*/) {
  const std::int32_t record = OrderGridView->GetFocusedRecordIndex();
  OrderGridView->SetValue(record, kOrderColumnValidity, TVariant::Integer(0));
  // Keys that changed nothing in the editor before say nothing of this one.
  FEditingQty = FAutoRound2LotSize = FEditingPrice = FAutoRound2Spread = false;
  const TCode symbol = GetRowSymbol(record);
  switch (column.FTag) {
    case kOrderColumnQuantity:
      PrepareQuantityEditor(symbol);
      break;
    case kOrderColumnPrice:
      PreparePriceEditor(record, symbol);
      break;
    case kOrderColumnOpenClose:
    case kOrderColumnPrincipal: {
      const bool openClose = column.FTag == kOrderColumnOpenClose;
      FOrderOptionsList.clear();
      if (!symbol.IsEmpty()) openClose ? InitOpenClose(symbol) : InitPrincipal(symbol);
      (openClose ? epOpenClose : epPrincipal)->FItems = GetChoiceTexts();
      break;
    }
    default:
      break;
  }
}

void TMarginSimulatorFrame::PrepareQuantityEditor(TCode symbol) {
  epQuantity->FMinimum = 0;
  epQuantity->FIncrement = symbol.IsEmpty() ? 1 : GetLotSize(symbol);
  if (!IsOTCBond(symbol)) return;
  const TCustomSubItem* item = FindReferenceItem(symbol);
  epQuantity->FMinimum = item->GetFieldFloat(kItemBondMinimum);
  epQuantity->FIncrement = item->GetFieldFloat(kItemBondIncrement);
}

void TMarginSimulatorFrame::PreparePriceEditor(std::int32_t record, TCode symbol) {
  const double shown = OrderGridView->GetValue(record, kOrderColumnPrice).AsFloatOr(0);
  const double price = GetRealPriceValue(shown, symbol.Text());
  epPrice->FIncrement = 1;
  FSpreadUpLimitList.erase(record);
  FSpreadDownLimitList.erase(record);
  FCurrentPriceList[record] = price;
  const TCustomSpreadTable* table = FindSpreadTable(symbol);
  TSpreadBand band;
  if (table == nullptr || table->GetKind() != kTableOfBands || !table->LookUpUpward(price, band)) return;
  SetBand(record, symbol, band);
}

void TMarginSimulatorFrame::SetBand(std::int32_t record, TCode symbol, const TSpreadBand& band) {
  epPrice->FIncrement = GetDisplayPriceValue(band.FTick, symbol.Text());
  FSpreadUpLimitList[record] = band.FUpperLimit;
  FSpreadDownLimitList[record] = band.FLowerLimit;
}

std::optional<TBandLimits> TMarginSimulatorFrame::GetBandLimits(std::int32_t record) const {
  const auto up = Find(FSpreadUpLimitList, record);
  const auto down = Find(FSpreadDownLimitList, record);
  if (!up || !down) return std::nullopt;
  return TBandLimits{*up, *down};
}

void TMarginSimulatorFrame::OrderGridViewEditKeyDown(const TGridColumn& column, TCellEditor& /*editor*/,
                                                     char32_t key) {
  const bool arrow = key == kKeyUp || key == kKeyDown;
  if (column.FTag == kOrderColumnQuantity) {
    FEditingQty = true;
    FAutoRound2LotSize = arrow;
  } else if (column.FTag == kOrderColumnPrice) {
    FEditingPrice = true;
    FAutoRound2Spread = arrow;
  }
}

void TMarginSimulatorFrame::QuantityChange(TCellEditor& editor) {
  if (FAutoEditingQty || !editor.IsSpin()) return;
  const bool snap = std::exchange(FAutoRound2LotSize, false) || !FEditingQty;
  FEditingQty = false;
  const std::int32_t record = OrderGridView->GetFocusedRecordIndex();
  const TCode symbol = GetRowSymbol(record);
  if (!snap || !editor.GetValue().IsNumber() || symbol.IsEmpty()) return;
  const auto snapped = SnapToLot(editor.GetValue().AsFloat(), GetLotSize(symbol));
  if (!snapped) return;
  {
    const TGuard guard(FAutoEditingQty);
    editor.SetValue(TVariant::Float(*snapped));
    editor.SetCaretToEnd();
  }
  OrderGridView->SetValue(record, kOrderColumnQuantity, TVariant::Float(*snapped));
}

void TMarginSimulatorFrame::PriceChange(TCellEditor& editor) {
  if (!editor.IsSpin() || FAutoEditingPrice) return;
  const bool snap = FAutoRound2Spread || !FEditingPrice;
  FAutoRound2Spread = FEditingPrice = false;
  const std::int32_t record = OrderGridView->GetFocusedRecordIndex();
  if (record < 0) return;
  const TCode symbol = GetRowSymbol(record);
  const double price = GetRealPriceValue(editor.GetValue().AsFloatOr(0), symbol.Text());
  const TPriceStep step =
      StepPrice(price, Find(FCurrentPriceList, record), GetBandLimits(record), snap, FindSpreadTable(symbol));
  if (step.FBand) SetBand(record, symbol, *step.FBand);
  if (step.FSnapped) {
    const TVariant shown = TVariant::Float(GetDisplayPriceValue(step.FPrice, symbol.Text()));
    {
      const TGuard guard(FAutoEditingPrice);
      editor.SetValue(shown);
      editor.SetCaretToEnd();
    }
    OrderGridView->SetValue(record, kOrderColumnPrice, shown);
  }
  FCurrentPriceList[record] = step.FPrice;
}

}  // namespace margindesk
