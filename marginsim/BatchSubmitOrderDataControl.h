#pragma once

#include <cstdint>
#include <string>

#include "model/contract/BaseOrderData.h"
#include "model/contract/Basedcdatacontrol.h"

namespace margindesk {

// The orders that a batch confirmation lists: copies of those about to be sent, a row each, so that what is
// confirmed does not change under the question. Columns are those of OrderColumns.h. Rows and columns carry
// no objects, and a cell that is not there is an empty text.
class TCustomBatchSubmitOrderDataControl : public TCustomDataControl {
 public:
  using TCustomDataControl::TCustomDataControl;

  void InitData(const TClientOrderList& orders);  // copies; the list stays the caller's
  void ClearData() { FOrderList.clear(); }

  std::int32_t GetCount() override;
  // One list for all instances, made at the first asking and released with the package's library.
  const TColumnList* GetColList() override;
  TVariant GetValue(std::int32_t recordIndex, std::int32_t attribute) override;
  std::string GetDisplayValue(std::int32_t recordIndex, std::int32_t attribute) override;
  bool GetRowValue(std::int32_t recordIndex, const void*& value) override;
  bool GetColValue(std::int32_t itemIndex, const void*& value) override;

 private:
  const TCustomClientOrder* FindOrder(std::int32_t recordIndex) const;  // null out of range

  TClientOrderList FOrderList;
};

}  // namespace margindesk
