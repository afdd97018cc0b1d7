#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "host/services/Formatter.h"
#include "host/services/HostData.h"
#include "model/contract/BasePositionData.h"
#include "model/contract/Positiondatacontrol.h"
#include "model/contract/Variant.h"

namespace margindesk {

// Where the facts of a position are read.
struct TPositionSource {
  const TCustomPositionData& FPosition;
  std::string_view FKey;
  const THostData& FData;
  TCustomPositionDataControl& FControl;  // values what is priced
};

// One column of a list of positions.
struct TPositionColumn {
  std::string_view FName;         // in JSON and CSV
  std::string_view FResourceKey;  // of the caption for people; empty: not for people
  std::int32_t FFormat;           // kFormat... of a figure, kAveragePrice for one, 0 for a text
  bool FAlways;                   // for people: shown even where no position has anything but 0
  TVariant (*FRead)(const TPositionSource& source);
};

// In the place of a kind of figures: the formatter knows average prices by an operation of their own.
inline constexpr std::int32_t kAveragePrice = -1;

std::span<const TPositionColumn> GetPositionColumns() noexcept;

// The caption of a column for people in the current language.
const std::string& GetCaption(const TPositionColumn& column);

// The text of a column's value for people.
std::string GetDisplayText(const TPositionColumn& column, const TVariant& value, const TFormatter& formatter);

}  // namespace margindesk
