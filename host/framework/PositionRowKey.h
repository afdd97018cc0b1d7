#pragma once

#include <string>
#include <string_view>

#include "model/contract/Code.h"

namespace margindesk {

// The key of a row: the position's key, and for a sub-account's position the account behind a line end, which
// no key of a position holds and which sorts before everything that one does.
inline std::string MakeRowKey(std::string_view positionKey, TCode subAccount) {
  std::string key(positionKey);
  if (!subAccount.IsEmpty()) key.append(1, '\n').append(subAccount.Text());
  return key;
}

// The position's key within its own account.
inline std::string_view PositionKeyOf(std::string_view rowKey) { return rowKey.substr(0, rowKey.find('\n')); }

}  // namespace margindesk
