#include "accountinfo/view/AcctPositionViewDataControl.h"

#include "model/contract/Baseview.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Constdef.h"
#include "model/contract/GlobalChannelManager.h"

namespace margindesk {

TAcctPositionViewDataControl::TAcctPositionViewDataControl(TComponent* owner)
    : TPositionViewDataControl(owner) {
  const auto& config = TCustomConfigManager::GetInstance();
  FOpenAnotherPositionView = config.ReadBool(config.GetUserSection(), "OrderBookOpenNewPV");
}

bool TAcctPositionViewDataControl::LoadOrderItem(std::int32_t RecordIndex) {
  if (RecordIndex < 0 || static_cast<std::size_t>(RecordIndex) >= FRowKeys.size()) return false;
  const auto* position = FPositions.Find(FRowKeys[static_cast<std::size_t>(RecordIndex)]);
  if (position == nullptr) return false;
  FOrderItem->Reset();
  FOrderItem->SetAccount(position->GetAccountID());
  return true;
}

void TAcctPositionViewDataControl::DetailPosition(std::int32_t RecordIndex) {
  if (!LoadOrderItem(RecordIndex)) return;
  if (FOpenAnotherPositionView) {
    OpenCustomView(this, kViewPositionDetail, 0, FOrderItem.get(), false, true);
  } else {
    TCustomGlobalChannelManager::GetInstance().PostChannelData(
        kChannelLinkedAccount, FOrderItem->GetAccount().Text(), nullptr, FLinkValue);
  }
}

void TAcctPositionViewDataControl::OptionsPayOff(std::int32_t RecordIndex) {
  if (LoadOrderItem(RecordIndex)) {
    OpenCustomView(this, kViewOptionsPayOff, 0, FOrderItem.get(), false, true);
  }
}

}  // namespace margindesk
