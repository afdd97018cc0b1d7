#pragma once

#include <stdexcept>

namespace margindesk {

inline constexpr int kExitFine = 0;
inline constexpr int kExitFault = 1;    // something inside failed, or a check found faults
inline constexpr int kExitUsage = 2;    // what was asked for or handed in cannot be used
inline constexpr int kExitRefused = 3;  // an order was refused, by the view or by the host

// Something asked for that is not there or makes no sense: one line on standard error and kExitUsage.
class TCliError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace margindesk
