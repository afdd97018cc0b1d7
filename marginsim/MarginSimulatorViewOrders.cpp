// The rows of the order grid as simulated orders.
#include "marginsim/MarginSimulatorDataControl.h"
#include "marginsim/MarginSimulatorView.h"
#include "model/ResourceText.h"
#include "model/contract/Constdef.h"
#include "model/contract/Formatter.h"
#include "model/contract/LanguageManager.h"
#include "model/contract/MessageBoxCtrl.h"

namespace margindesk {

namespace {

constexpr std::int32_t kSideNotChosen = -1;
constexpr std::int32_t kDefaultDecimals = -1;

const std::string& GetErrorText(std::string_view code) {
  return TCustomLanguageManager::GetInstance().GetLanguageText(Const_ErrorCodeTag, code);
}

void ShowMessage(std::string_view text) { TCustomMessageBoxCtrl::GetInstance().ShowMessage(text); }

// Whether a cell holds the entry of a list at a place; a list may be shorter.
bool IsEntry(const std::vector<std::string>& entries, std::size_t place, const std::string& text) {
  return place < entries.size() && entries[place] == text;
}

bool CheckBondAmount(const TMarginSimulateOrder& order) {
  const TCustomSubItem* item = FindReferenceItem(order.FSymbol);
  const double minimum = item == nullptr ? 0 : item->GetFieldFloat(kItemBondMinimum);
  const double increment = item == nullptr ? 0 : item->GetFieldFloat(kItemBondIncrement);
  if (IsBondAmount(order.FQty, minimum, increment)) return true;
  const auto& formatter = TCustomFormatter::GetInstance();
  ShowMessage(
      FillText(GetErrorText("DCBOND003"), {formatter.FormatNumber(minimum, kDefaultDecimals, false),
                                           formatter.FormatNumber(increment, kDefaultDecimals, false)}));
  return false;
}

// A fund is bought for an amount, which stands in the price, and sold by units: wanted.
bool AdaptFundOrder(TMarginSimulateOrder& order) {
  if (order.FSide == kSideSell) {
    order.FPrice = 1;
    return true;
  }
  order.FQty = 1;
  if (!(order.FPrice < kZeroTolerance)) return true;
  ShowMessage(GetErrorText("DCFUND003"));
  return false;
}

// What the simulator itself asks of an order. False: the user has been told.
bool ApplyProductRules(TMarginSimulateOrder& order, TProductType type) {
  switch (type) {
    case TProductType::ptOTCBond:
      return CheckBondAmount(order);
    case TProductType::ptOTCFund:
      return AdaptFundOrder(order);
    case TProductType::ptNormal:
      break;
  }
  return true;
}

}  // namespace

TMarginSimulateOrder TMarginSimulatorFrame::ReadOrderRow(std::int32_t record) const {
  TMarginSimulateOrder order;
  order.FSide = kSideNotChosen;
  order.FStatus = kStatusPending;
  for (const TGridColumn& column : OrderGridView->GetColumns()) {
    const TVariant cell = OrderGridView->GetValue(record, column.FTag);
    switch (column.FTag) {
      case kOrderColumnSymbol:
        order.FSymbol = TCode(TrimText(cell.AsText()));
        break;
      case kOrderColumnSide: {
        const std::string text = cell.AsText();
        if (IsEntry(epiSide->FItems, 0, text)) {
          order.FSide = kSideBuy;
        } else if (IsEntry(epiSide->FItems, 1, text)) {
          order.FSide = kSideSell;
        }
        break;
      }
      case kOrderColumnPrice:
        order.FPrice = cell.AsFloatOr(0);
        break;
      case kOrderColumnQuantity:
        order.FQty = cell.AsFloatOr(0);
        break;
      case kOrderColumnOpenClose:
        order.FOpenClose = GetOpenCloseFlag(cell.AsText());
        break;
      case kOrderColumnPrincipal:
        order.FPrincipal = GetPrincipalFlag(cell.AsText());
        break;
      case kOrderColumnStatus:
        // Whatever is not completed is pending.
        if (IsEntry(epiStatus->FItems, 1, cell.AsText())) order.FStatus = kStatusCompleted;
        break;
      default:
        break;
    }
  }
  return order;
}

bool TMarginSimulatorFrame::CollectOrder(TMarginSimulateOrder& order, bool check) {
  TMarginSimulatorDataControl& control = *GetSimulatorControl();
  const std::weak_ptr<const bool> life = FLife;
  if (!ApplyProductRules(order, control.CheckProductType(order.FSymbol)) || life.expired()) return false;
  order.FPrice = GetRealPriceValue(order.FPrice, order.FSymbol.Text());
  if (check) {
    order.FStatus = kStatusNotGiven;
    const bool valid = control.CheckOrderValidation(order.FSymbol, order.FSide, order.FPrice, order.FQty,
                                                    order.FOpenClose, order.FPrincipal, order.FStatus);
    if (!valid || life.expired()) return false;
  }
  control.AddSimulateOrder(order.FSymbol, order.FSide, order.FPrice, order.FQty, order.FOpenClose,
                           order.FPrincipal, order.FStatus);
  return true;
}

bool TMarginSimulatorFrame::AddSimulateOrder(bool check) {
  TMarginSimulatorDataControl* control = GetSimulatorControl();
  if (control == nullptr) return false;
  if (control->GetAccount().IsEmpty()) {
    ShowMessage(GetErrorText("DC10013001"));
    return false;
  }
  control->ResetSimulate();
  const auto mark = [this](std::int32_t record, bool valid) {
    if (GetGridColumn(kOrderColumnValidity) != nullptr)
      OrderGridView->SetValue(record, kOrderColumnValidity, TVariant::Integer(valid ? 0 : 1));
  };
  const std::weak_ptr<const bool> life = FLife;
  const std::int32_t count = OrderGridView->GetRecordCount();
  for (std::int32_t record = 0; record < count; ++record) {
    TMarginSimulateOrder order = ReadOrderRow(record);
    const bool chosen = order.FSide == kSideBuy || order.FSide == kSideSell;
    if (order.FSymbol.IsEmpty() || !chosen || !(order.FQty > 0)) {
      if (record == count - 1) break;  // the blank row that is always there
      mark(record, false);
      ShowMessage(GetResourceText("Res_FillMarginSimulateInfo"));
      return false;
    }
    const bool collected = CollectOrder(order, check);
    if (life.expired()) return false;  // the view may have closed under a message
    mark(record, collected);
    if (!collected) return false;
  }
  return true;
}

}  // namespace margindesk
