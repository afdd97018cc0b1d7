#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/contract/AccountDataControl.h"
#include "model/contract/Code.h"
#include "model/contract/ColumnInfo.h"
#include "model/contract/Variant.h"

namespace margindesk {

// Which figure a row of the account tree is about.
struct TAccountNodePlace {
  std::int32_t FField = 0;
  bool FIsTotal = false;
  TCode FCurrency;  // empty for a field's own row and for the total
};
TAccountNodePlace GetAccountNodePlace(const TDataNode& node);

// One row of the account tree as the data control answers it.
struct TAccountTreeRow {
  std::int32_t FField = 0;
  std::string FKey;  // of the row's column
  bool FIsTotal = false;
  TCode FCurrency;  // empty for a field's own row and for the total
  std::string FCaption;
  std::string FText;
  TVariant FValue;
  std::vector<TAccountTreeRow> FChildren;
};

// Reads the whole tree, each cell once and in display order. The columns are those given to the control.
std::vector<TAccountTreeRow> ReadAccountTree(TCustomAccountInfoDataControl& control,
                                             const TColumnList& columns);

}  // namespace margindesk
