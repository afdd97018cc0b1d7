#pragma once

#include <cstdint>

#include "model/contract/Positionviewdatacontrol.h"

namespace margindesk {

// The positions below the account tree: the host's position grid with two actions more. A row out of range,
// and one whose position is gone, does nothing.
class TAcctPositionViewDataControl : public TPositionViewDataControl {
 public:
  explicit TAcctPositionViewDataControl(TComponent* owner);

  // Shows the row's account: in another view, or in the linked views where the user wants no other one
  // ("OrderBookOpenNewPV").
  void DetailPosition(std::int32_t RecordIndex);
  // Opens the options pay-off view for the row's account.
  void OptionsPayOff(std::int32_t RecordIndex);

 private:
  // Loads the order item with the account of the row's position. False: there is no such position.
  bool LoadOrderItem(std::int32_t RecordIndex);

  bool FOpenAnotherPositionView;
};

}  // namespace margindesk
