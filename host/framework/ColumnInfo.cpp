#include "model/contract/ColumnInfo.h"

namespace margindesk {

std::unique_ptr<TColumnInfo> TColumnInfo::AddColumn(std::int32_t id, std::string_view resourceKey,
                                                    std::int32_t width, std::string_view key, bool numeric) {
  auto column = std::make_unique<TColumnInfo>();
  column->FId = id;
  column->FResourceKey = resourceKey;
  column->FKey = key;
  column->FWidth = width;
  column->FNumeric = numeric;
  return column;
}

}  // namespace margindesk
