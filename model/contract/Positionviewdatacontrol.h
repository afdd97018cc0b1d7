#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/contract/BaseOrderData.h"
#include "model/contract/Positiondatacontrol.h"

namespace margindesk {

// The data control of a position grid in a view: the rows in display order with their positions, and the
// actions.
class TPositionViewDataControl : public TCustomPositionDataControl {
 public:
  using TCustomPositionDataControl::TCustomPositionDataControl;

  virtual void CopySymbol(std::int32_t row) = 0;  // hands the row's symbol to the linked views

 protected:
  std::vector<std::string> FRowKeys;               // position keys in display order
  TPositionMap FPositions;                         // the positions by key
  std::unique_ptr<TCustomClientOrder> FOrderItem;  // carries an account or a symbol to another view
  std::int64_t FLinkValue = 0;                     // views that share it follow each other
};

}  // namespace margindesk
