#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "controls/Control.h"

namespace margindesk {

enum class TSortOrder { None, Ascending, Descending };

// One column of a grid, known by its tag.
struct TGridColumn {
  std::int32_t FTag = 0;
  std::string FCaption;
  std::int32_t FWidth = 0;  // pixels
  bool FVisible = true;
  TSortOrder FSortOrder = TSortOrder::None;
  std::int32_t FSortIndex = -1;  // the place among the sorted columns; -1 when not sorted
};

// The columns of a grid in display order.
class TGridTableView : public TControl {
 public:
  using TControl::TControl;

  const std::vector<TGridColumn>& GetColumns() const noexcept { return FColumns; }
  void SetColumns(std::vector<TGridColumn> columns) { FColumns = std::move(columns); }

 private:
  std::vector<TGridColumn> FColumns;
};

}  // namespace margindesk
