#pragma once

#include <cstddef>
#include <string>

namespace margindesk {

// Registrations of one kind under one key, which is empty for the kinds that have none.
struct TSubscriptionCount {
  std::string FKind;
  std::string FKey;  // an account, a symbol, a channel's number, a group of account boxes
  std::size_t FCount = 0;

  friend bool operator==(const TSubscriptionCount&, const TSubscriptionCount&) = default;
};

}  // namespace margindesk
