#pragma once

#include <cstdint>
#include <string>

#include "model/contract/Variant.h"

namespace margindesk {

// The base of host records. The host owns every record; the package reads it through virtual reads and never
// frees it. An account, a product or a subscription item that an adapter handed out stays where it is for as
// long as the host lives: changes are made in place, and one that the back office no longer knows reads as
// blank. An account's figures in a currency last until a notification may have replaced them; positions as
// long as a TPositionMap names them.
class TBaseData {
 public:
  virtual ~TBaseData() = default;

  // One field of the record as text or as a cell value. A field that the record does not hold: empty text,
  // unassigned.
  virtual std::string GetDataString(std::int32_t /*field*/) const { return {}; }
  virtual TVariant GetDataValue(std::int32_t /*field*/) const { return {}; }
};

}  // namespace margindesk
