// The positions of a view: what its menu asks of the position grid's data control.
#include "accountinfo/view/AccountInfoView.h"
#include "accountinfo/view/AcctPositionViewDataControl.h"
#include "model/ResourceText.h"

namespace margindesk {

// The actions are for the focused row alone, however many are selected.

void TAccountInfoFrame::CloseToBestMenuClick() {
  if (FMyPositionDataControl != nullptr) {
    FMyPositionDataControl->CloseToBest(PositionGridView->GetFocusedRecordIndex());
  }
}

void TAccountInfoFrame::CloseToLastMenuClick() {
  if (FMyPositionDataControl != nullptr) {
    FMyPositionDataControl->CloseToLast(PositionGridView->GetFocusedRecordIndex());
  }
}

void TAccountInfoFrame::CloseToMarketMenuClick() {
  if (FMyPositionDataControl != nullptr) {
    FMyPositionDataControl->CloseToMarket(PositionGridView->GetFocusedRecordIndex());
  }
}

void TAccountInfoFrame::CloseAllPositionsMenuClick() {
  if (FMyPositionDataControl != nullptr) FMyPositionDataControl->CloseAllPositions();
}

void TAccountInfoFrame::DetailPositionMenuClick() {
  if (FMyPositionDataControl != nullptr) {
    FMyPositionDataControl->DetailPosition(PositionGridView->GetFocusedRecordIndex());
  }
}

void TAccountInfoFrame::OptionsPayOffMenuClick() {
  if (FMyPositionDataControl != nullptr) {
    FMyPositionDataControl->OptionsPayOff(PositionGridView->GetFocusedRecordIndex());
  }
}

void TAccountInfoFrame::PositionGridViewCellDblClick() {
  if (FMyPositionDataControl != nullptr) {
    FMyPositionDataControl->CopySymbol(PositionGridView->GetFocusedRecordIndex());
  }
}

void TAccountInfoFrame::SetRightClickMenuCaption() {
  struct TItem {
    TMenuItem* FItem;
    std::string_view FResourceKey;
    bool FCloses;
  };
  const TItem items[] = {
      {CloseToBestMenu, "Res_Close_Best", true},         {CloseToLastMenu, "Res_Close_Last", true},
      {CloseToMarketMenu, "Res_Close_Market", true},     {CloseAllPositionsMenu, "Res_Close_All_Pos", true},
      {DetailPositionMenu, "Res_DetailPosition", false}, {OptionsPayOffMenu, "Res_OptionsPayOff", false},
  };
  for (const TItem& item : items) {
    std::string caption = GetResourceText(item.FResourceKey);
    // Who is not asked first should know it before he picks.
    if (item.FCloses && !FClosePositionConf) {
      caption.append("(").append(GetResourceText("Res_No_Confirm")).append(")");
    }
    item.FItem->SetCaption(std::move(caption));
  }
}

}  // namespace margindesk
